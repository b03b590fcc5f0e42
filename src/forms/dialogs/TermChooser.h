// frmTermChoose: turns the marked text of the lesson page into a reference to a glossary
// term (the term's own text when nothing is marked), or hands over to the main form's
// glossary tab to create or edit a term.
#pragma once

#include "forms/dialogs/InsertChooser.h"

namespace lumora {

class TermChooser : public InsertChooser {
  public:
    TermChooser(Session& session, MainForm& form, QWidget* parent);

    // Fills the list; the current term stays selected.
    void resetPage();
    // One row per glossary term; the row at CurrentTerm is selected when CurrentTerm is not
    // past the row count.
    void setTermList();

    void btnCreateTerm_Click();
    void btnEditTerm_Click();
    void btnInsertTerm_Click();
    void CancelButton_Click();

  protected:
    QStringList rows() const override;
};

} // namespace lumora
