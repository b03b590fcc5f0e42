// frmQAndAChoose: puts the placeholder of a lesson's Q&A activity at the caret of the lesson
// page (in place of whatever is marked), deletes an activity with the Delete key, or hands
// over to the main form's Q&A tab to create or edit one.
#pragma once

#include "forms/dialogs/InsertChooser.h"

namespace lumora {

class QAndAChooser : public InsertChooser {
  public:
    QAndAChooser(Session& session, MainForm& form, QWidget* parent);

    // Fills the list; the current item stays selected.
    void resetPage();
    // The placeholder of the activity in row `QAndAIndex` (numbered from 1 in the page).
    std::string getQAndALink(int QAndAIndex) const;

    void btnCreateQAndA_Click();
    void btnEditQAndA_Click();
    void btnInsertQAndA_Click();
    void CancelButton_Click();
    // The Delete key deletes the selected activity, after the question, unless refused.
    void lstQAndA_KeyUp(int key);

  protected:
    QStringList rows() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void fillQAndAList();
};

} // namespace lumora
