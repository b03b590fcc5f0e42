// The questions tab's own fields and the option list: rationale, number to ask, the option
// buttons and the option editor they open, and the tick that marks each correct option.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "content/ListOps.h"
#include "content/NumberToAsk.h"
#include "content/Validation.h"
#include "forms/main/OptionForm.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

namespace lumora {

namespace {

constexpr int kTickSize = 16;

// The tick beside a correct option, and an empty square of the same size beside the others so
// that the texts line up.
const QIcon& tickIcon(const QStyle* style, bool correct) {
    static const QIcon tick = style->standardIcon(QStyle::SP_DialogApplyButton);
    static const QIcon none = [] {
        QPixmap blank(kTickSize, kTickSize);
        blank.fill(Qt::transparent);
        return QIcon(blank);
    }();
    return correct ? tick : none;
}

int selectedRow(const QListWidget* list) {
    const QListWidgetItem* row = list->currentItem();
    return row && row->isSelected() ? list->row(row) : -1;
}

} // namespace

// --- the option list -------------------------------------------------------------------------

void MainForm::showOptionRow(QListWidgetItem* row, const QuestionOption& option) {
    const bool correct = flagToBool(option.correct);
    row->setText(QString::fromStdString(option.txtDisplay));
    row->setIcon(tickIcon(style(), correct));
    // Screen readers hear what the tick shows.
    row->setData(Qt::AccessibleDescriptionRole, correct ? QString("Correct") : QString());
}

void MainForm::refreshOptionRow(int option) {
    const auto& questions = session_.module.questions;
    const int item = session_.CurrentItem;
    if (item < 0 || item >= static_cast<int>(questions.size()))
        return;
    const auto& options = questions[item].options;
    if (option >= 0 && option < static_cast<int>(options.size()))
        if (QListWidgetItem* row = lstOptions_->item(option))
            showOptionRow(row, options[option]);
}

void MainForm::setOptionsList() {
    QSignalBlocker block(lstOptions_);
    lstOptions_->clear();
    lstOptions_->setIconSize(QSize(kTickSize, kTickSize));
    const auto& questions = session_.module.questions;
    if (session_.CurrentItem >= 0 && session_.CurrentItem < static_cast<int>(questions.size()))
        for (const QuestionOption& option : questions[session_.CurrentItem].options) {
            auto* row = new QListWidgetItem(lstOptions_);
            showOptionRow(row, option);
        }
    if (session_.CurrentOption < lstOptions_->count())
        lstOptions_->setCurrentRow(session_.CurrentOption);
}

// --- the option buttons and the option editor ------------------------------------------------

OptionForm* MainForm::optionForm() const {
    return frmLOption_;
}

void MainForm::openOptionForm() {
    if (!frmLOption_) {
        frmLOption_ = new OptionForm(session_, this);
        frmLOption_->setAttribute(Qt::WA_DeleteOnClose);
        connect(frmLOption_, &OptionForm::optionChanged, this, &MainForm::refreshOptionRow);
        connect(frmLOption_, &OptionForm::optionAdded, this, &MainForm::setOptionsList);
        connect(frmLOption_, &OptionForm::optionShown, this, [this](int option) {
            if (option >= 0 && option < lstOptions_->count()) {
                QSignalBlocker block(lstOptions_);
                lstOptions_->setCurrentRow(option);
            }
        });
    }
    frmLOption_->show();
    frmLOption_->raise();
    frmLOption_->activateWindow();
    frmLOption_->resetPage();
}

void MainForm::btnAddOption_Click() {
    addBlankOption(session_.lists());
    setOptionsList();
    openOptionForm();
}

void MainForm::btnEditOption_Click() {
    const int row = selectedRow(lstOptions_);
    if (row < 0) {
        session_.prompt.error("No item is selected");
        return;
    }
    session_.CurrentOption = static_cast<std::int16_t>(row);
    openOptionForm();
}

void MainForm::lstOptions_DblClick() {
    // Below the last row this opens the editor on no option, as the list's selection says.
    session_.CurrentOption = static_cast<std::int16_t>(selectedRow(lstOptions_));
    openOptionForm();
}

void MainForm::btnRemoveOption_Click() {
    deleteListItem(session_.lists(), "lstOptions", selectedRow(lstOptions_));
    setOptionsList();
    if (frmLOption_)
        frmLOption_->resetPage();
}

// A move refreshes through the item list: reselecting the item refills the editor, its
// options and the option editor when it is open.
void MainForm::btnUpOption_Click() {
    saveEditorContent(activeEditor_);
    moveListItemUp(session_.lists(), "lstOptions", selectedRow(lstOptions_));
    setQAndAList();
}

void MainForm::btnDownOption_Click() {
    saveEditorContent(activeEditor_);
    moveListItemDown(session_.lists(), "lstOptions", selectedRow(lstOptions_));
    setQAndAList();
}

// --- the item's fields -----------------------------------------------------------------------

void MainForm::btnSubmit_Click() {
    saveEditorContent("dhtmlQuestionEdit");
    setQAndAList();
}

void MainForm::txtRationale_Change(const QString& text) {
    auto& questions = session_.module.questions;
    const int item = session_.CurrentItem;
    if (filling_ || item < 0 || item >= static_cast<int>(questions.size()))
        return;
    questions[item].rationale = text.toStdString();
    session_.markChanged();
}

void MainForm::txtNumberToAsk_Change() {
    if (filling_)
        return;
    const NumberToAskVerdict verdict =
        checkNumberToAsk(txtNumberToAsk_->text().toStdString(), session_.module.intNumQuestions,
                         session_.module.questions.size());
    if (!verdict.message.empty())
        session_.prompt.error(verdict.message);
    if (verdict.store) {
        session_.module.intNumQuestions = *verdict.store;
        session_.markChanged();
    }
    if (verdict.fieldText) {
        filling_ = true;
        txtNumberToAsk_->setText(QString::fromStdString(*verdict.fieldText));
        filling_ = false;
    }
}

} // namespace lumora
