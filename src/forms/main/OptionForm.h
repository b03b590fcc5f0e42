// frmLOption: the option editor. It edits the options of the current question item one at a
// time, straight in the session's module, and steps back and forth through them; at the last
// option Next becomes Create, so a whole set of options can be typed in one pass. It is
// modeless: the main form stays usable, and follows each edit in its option list. In an
// Evaluation it also holds the feedback a learner reads after choosing the option wrongly.
#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace lumora {

class Session;
struct QuestionOption;

class OptionForm : public QDialog {
    Q_OBJECT
  public:
    explicit OptionForm(Session& session, QWidget* parent = nullptr);

    // Loads the current option (CurrentOption of CurrentItem) into the form.
    void resetPage();
    // Back, Next and Correct for the current position.
    void setButtonStates();

    void btnBack_Click();
    void btnNext_Click();
    void btnClose_Click();

  signals:
    // The display text or the correct flag of this option changed.
    void optionChanged(int option);
    // Next at the last option appended a new one.
    void optionAdded();
    // The form now shows this option.
    void optionShown(int option);

  private:
    // The option being edited, or null when CurrentOption names none.
    QuestionOption* currentOption() const;
    int lastOption() const;
    void txtDisplay_Change(const QString& text);
    void chkCorrect_Click(bool checked);
    void txtIncorrectRationale_Change(const QString& text);

    Session& session_;
    QLineEdit* txtDisplay_ = nullptr;
    QCheckBox* chkCorrect_ = nullptr;
    QLineEdit* txtIncorrectRationale_ = nullptr;
    QPushButton* btnBack_ = nullptr;
    QPushButton* btnNext_ = nullptr;
};

} // namespace lumora
