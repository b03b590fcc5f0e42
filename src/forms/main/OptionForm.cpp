// The option editor: its controls and the stepping through the current item's options.
#include "forms/main/OptionForm.h"

#include "app/Session.h"
#include "content/ListOps.h"
#include "content/Validation.h"
#include "forms/main/ListTexts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <climits>
#include <string_view>

namespace lumora {

namespace {

// The placeholder wording of a sample option: such a text is selected whole, so typing
// replaces it. Only the first 13 characters are compared.
constexpr std::string_view kSampleOption = "Sample Option";

QPushButton* button(QWidget* parent, const char* name, const QString& caption, const QString& tip) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setToolTip(tip);
    return b;
}

} // namespace

OptionForm::OptionForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName("frmLOption");
    setWindowTitle("Option");
    setModal(false);

    txtDisplay_ = new QLineEdit(this);
    txtDisplay_->setObjectName("txtDisplay");
    txtDisplay_->setToolTip("Enter the text displayed as an available option");
    txtDisplay_->setMaxLength(INT_MAX);
    txtDisplay_->setMinimumWidth(360);
    auto* lblDisplay = new QLabel("Display", this);
    lblDisplay->setObjectName("lblDisplay");
    lblDisplay->setBuddy(txtDisplay_);
    chkCorrect_ = new QCheckBox("Correct", this);
    chkCorrect_->setObjectName("chkCorrect");
    chkCorrect_->setToolTip("Check if this a correct option");

    // Only an Evaluation's player shows an option's feedback (its review after Submit).
    txtIncorrectRationale_ = new QLineEdit(this);
    txtIncorrectRationale_->setObjectName("txtIncorrectRationale");
    txtIncorrectRationale_->setToolTip(
        "Enter the feedback shown when this option is chosen wrongly");
    txtIncorrectRationale_->setMaxLength(INT_MAX);
    auto* lblIncorrectRationale = new QLabel("Feedback", this);
    lblIncorrectRationale->setObjectName("lblIncorrectRationale");
    lblIncorrectRationale->setBuddy(txtIncorrectRationale_);
    const bool evaluation = session_.module.moduleType == kEvaluation;
    txtIncorrectRationale_->setVisible(evaluation);
    lblIncorrectRationale->setVisible(evaluation);

    btnBack_ = button(this, "btnBack", "Back", "Move back one page");
    btnNext_ = button(this, "btnNext", "Next", "Move forward one page");
    auto* btnClose = button(this, "btnClose", "Close", "Close this window");
    // Enter steps on, so the options of a question are typed one after the other.
    btnNext_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnBack_);
    buttons->addWidget(btnNext_);
    buttons->addWidget(btnClose);
    auto* layout = new QGridLayout(this);
    layout->addWidget(lblDisplay, 0, 0);
    layout->addWidget(txtDisplay_, 0, 1);
    layout->addWidget(chkCorrect_, 1, 1);
    layout->addWidget(lblIncorrectRationale, 2, 0);
    layout->addWidget(txtIncorrectRationale_, 2, 1);
    layout->addLayout(buttons, 3, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setSizeConstraint(QLayout::SetMinimumSize);

    connect(txtDisplay_, &QLineEdit::textEdited, this, &OptionForm::txtDisplay_Change);
    connect(chkCorrect_, &QCheckBox::clicked, this, &OptionForm::chkCorrect_Click);
    connect(txtIncorrectRationale_, &QLineEdit::textEdited, this,
            &OptionForm::txtIncorrectRationale_Change);
    connect(btnBack_, &QPushButton::clicked, this, &OptionForm::btnBack_Click);
    connect(btnNext_, &QPushButton::clicked, this, &OptionForm::btnNext_Click);
    connect(btnClose, &QPushButton::clicked, this, &OptionForm::btnClose_Click);
}

QuestionOption* OptionForm::currentOption() const {
    auto& questions = session_.module.questions;
    const int item = session_.CurrentItem;
    if (item < 0 || item >= static_cast<int>(questions.size()))
        return nullptr;
    auto& options = questions[item].options;
    const int option = session_.CurrentOption;
    if (option < 0 || option >= static_cast<int>(options.size()))
        return nullptr;
    return &options[option];
}

int OptionForm::lastOption() const {
    const auto& questions = session_.module.questions;
    const int item = session_.CurrentItem;
    if (item < 0 || item >= static_cast<int>(questions.size()))
        return -1;
    return static_cast<int>(questions[item].options.size()) - 1;
}

void OptionForm::resetPage() {
    const QuestionOption* option = currentOption();
    const QString text = option ? QString::fromStdString(option->txtDisplay) : QString();
    // With no option to edit (a double-click below the list with nothing selected) there is
    // nothing to type into; Back and Next still find their way.
    txtDisplay_->setEnabled(option != nullptr);
    chkCorrect_->setEnabled(option != nullptr);
    txtIncorrectRationale_->setEnabled(option != nullptr);
    txtIncorrectRationale_->setText(option ? QString::fromStdString(option->incorrectRationale)
                                           : QString());
    txtDisplay_->setText(text);
    if (option && option->txtDisplay.compare(0, kSampleOption.size(), kSampleOption) == 0)
        txtDisplay_->setSelection(0, static_cast<int>(text.size()));
    txtDisplay_->setFocus();
    emit optionShown(session_.CurrentOption);
    setButtonStates();
}

void OptionForm::setButtonStates() {
    const int last = lastOption();
    btnBack_->setEnabled(session_.CurrentOption > 0);
    if (session_.CurrentOption != last) {
        btnNext_->setText("Next");
        btnNext_->setToolTip("Move forward one option");
    } else {
        btnNext_->setText("Create");
        btnNext_->setToolTip("Create a new option");
    }
    const QuestionOption* option = currentOption();
    chkCorrect_->setChecked(option && flagToBool(option->correct));
}

void OptionForm::btnBack_Click() {
    --session_.CurrentOption;
    resetPage();
}

void OptionForm::btnNext_Click() {
    if (txtDisplay_->text().isEmpty()) {
        session_.prompt.error("You must provide text for the user to select");
        txtDisplay_->setFocus();
        return;
    }
    if (session_.CurrentOption != lastOption()) {
        ++session_.CurrentOption;
    } else {
        addBlankOption(session_.lists());
        emit optionAdded();
    }
    resetPage();
}

void OptionForm::btnClose_Click() {
    close();
}

void OptionForm::txtDisplay_Change(const QString& text) {
    QuestionOption* option = currentOption();
    if (!option)
        return;
    option->txtDisplay = text.toStdString();
    emit optionChanged(session_.CurrentOption);
    session_.markChanged();
}

void OptionForm::chkCorrect_Click(bool checked) {
    QuestionOption* option = currentOption();
    if (!option)
        return;
    option->correct = flagOfCheckBox(checked);
    emit optionChanged(session_.CurrentOption);
    session_.markChanged();
}

void OptionForm::txtIncorrectRationale_Change(const QString& text) {
    QuestionOption* option = currentOption();
    if (!option)
        return;
    option->incorrectRationale = text.toStdString();
    session_.markChanged();
}

} // namespace lumora
