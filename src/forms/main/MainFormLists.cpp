// Filling the main form from the session's module: resetPage, the four list refreshers, the
// page and question editors, and the handlers that write each edit straight back.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "content/ContentForms.h"
#include "content/Normalize.h"
#include "content/Validation.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/main/ListTexts.h"
#include "forms/main/OptionForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace lumora {

namespace {

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

// Sets a list's rows without announcing each one as a click.
void fillList(QListWidget* list, const std::vector<std::string>& texts) {
    QSignalBlocker block(list);
    list->clear();
    for (const std::string& text : texts)
        list->addItem(qs(text));
}

void selectRow(QListWidget* list, int row) {
    QSignalBlocker block(list);
    list->setCurrentRow(row);
}

} // namespace

void MainForm::showLoadedModule() {
    setWindowTitle(qs(mainCaption(session_.module)));
    resetPage();
    // The last save shown was of the module before; the type may show wider controls.
    lblSaveState_->clear();
    refreshChangedMark();
    keepMinimumSize();
}

void MainForm::resetPage() {
    const bool justLoaded = session_.ModuleLoaded;
    // The editors still hold the previous module right after a load; storing them then would
    // write one module's text into another.
    if (justLoaded) {
        setActiveEditor(QString());
        lessonEditorPage_ = questionEditorItem_ = -1;
        // The option editor worked on the module that is gone.
        if (frmLOption_)
            frmLOption_->close();
    } else {
        saveEditorContent(activeEditor_);
    }

    filling_ = true;
    txtModuleTitle_->setText(qs(session_.module.modTitle));
    txtCopyright_->setText(qs(session_.module.copyright));
    filling_ = false;

    if (justLoaded)
        applyModuleType();
    tabMain_Click();

    if (justLoaded) {
        session_.ModuleLoaded = false;
        session_.ModuleChanged = false;
    }
    enableEditCommands();
}

void MainForm::tabMain_Click() {
    switch (tabMain_->currentIndex()) {
    case 0:
        setPageList();
        break;
    case 1:
        setQAndAList();
        break;
    case 2:
        setTermList();
        break;
    default:
        break;
    }
}

void MainForm::applyModuleType() {
    const std::string& type = session_.module.moduleType;
    const bool lesson = type == kLesson;
    const bool evaluation = type == kEvaluation;
    {
        // Showing and hiding tabs moves the selection; the refresh after this does the rest.
        QSignalBlocker block(tabMain_);
        tabMain_->setTabVisible(0, lesson);
        tabMain_->setTabVisible(2, lesson);
        tabMain_->setTabText(1, lesson ? "Q&&A" : "Questions");
        tabMain_->setCurrentIndex(lesson ? 0 : 1);
    }
    btnUpQuestion_->setVisible(!lesson);
    btnDownQuestion_->setVisible(!lesson);
    lblNumberToAsk_->setVisible(evaluation);
    txtNumberToAsk_->setVisible(evaluation);
    chkShuffleQuestions_->setVisible(evaluation);
    // A survey question has neither a rationale nor shuffled options: its options are the scale.
    chkShuffleOptions_->setVisible(type != kSurvey);
    lblRationale_->setVisible(type != kSurvey);
    txtRationale_->setVisible(type != kSurvey);
}

// --- pages ---------------------------------------------------------------------------------

void MainForm::setPageList() {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < session_.module.pages.size(); ++i)
        texts.push_back(getNumberedPageText(session_.module, i));
    fillList(lstPages_, texts);
    if (session_.CurrentPage < lstPages_->count()) {
        selectRow(lstPages_, session_.CurrentPage);
        lstPages_Click();
    } else {
        tabLessonPage_Click();
    }
}

void MainForm::lstPages_Click() {
    int row = lstPages_->currentRow();
    if (row < 0)
        return;
    session_.CurrentPage = static_cast<std::int16_t>(row);
    tabLessonPage_Click();
}

void MainForm::tabLessonPage_Click() {
    const auto& pages = session_.module.pages;
    const int page = session_.CurrentPage;
    const bool exists = page >= 0 && page < static_cast<int>(pages.size());
    const std::string content =
        exists ? toEditorHTML(pages[page].content, session_.contentPaths()) : std::string();
    filling_ = true;
    txtPageTitle_->setText(exists ? qs(pages[page].title) : QString());
    if (tabLessonPage_->currentIndex() == 0) {
        lessonEditorPage_ = exists ? page : -1;
        lessonEditorReady_ = false;
        dhtmlLessonEdit_->setContent(qs(content), qs(session_.StylesheetPath),
                                     qs(session_.module.ModuleFolder));
    } else {
        txtLessonEdit_->setPlainText(qs(content));
    }
    filling_ = false;
}

void MainForm::storePageContent(int page, const std::string& html) {
    if (page < 0 || page >= static_cast<int>(session_.module.pages.size()))
        return;
    std::string normalized = normalizeHTML(html);
    // The editors report every change of their document, also those that leave the page's text
    // as it was (a caret move, a re-serialisation after loading); only real edits count.
    if (toEditorHTML(normalized, session_.contentPaths()) == session_.module.pages[page].content)
        return;
    session_.setPageContent(static_cast<std::size_t>(page), normalized);
}

void MainForm::lessonEditorChanged(const QString& bodyHtml) {
    if (!lessonEditorReady_)
        return;
    setActiveEditor("dhtmlLessonEdit");
    storePageContent(lessonEditorPage_, bodyHtml.toStdString());
}

void MainForm::txtLessonEdit_Change() {
    if (filling_)
        return;
    storePageContent(session_.CurrentPage, sourceText());
}

std::string MainForm::sourceText() const {
    // Content keeps its lines ending in CR LF, as the design view and the page files have them.
    QString text = txtLessonEdit_->toPlainText();
    return text.replace("\r\n", "\n").replace("\n", "\r\n").toStdString();
}

void MainForm::txtPageTitle_Change(const QString& text) {
    auto& pages = session_.module.pages;
    const int page = session_.CurrentPage;
    if (page < 0 || page >= static_cast<int>(pages.size()))
        return;
    pages[page].title = pageTitleFromField(text.toStdString());
    if (QListWidgetItem* item = lstPages_->item(page))
        item->setText(qs(getNumberedPageText(session_.module, page)));
    session_.markChanged();
}

// --- questions -----------------------------------------------------------------------------

void MainForm::setQAndAList() {
    {
        QSignalBlocker block(lstQAndA_);
        lstQAndA_->clear();
        // Each row knows its item: rows and items part after an item without text.
        for (std::size_t item : listedQuestions(session_.module)) {
            auto* row = new QListWidgetItem(qs(getNumberedQuestionText(session_.module, item)));
            row->setData(Qt::UserRole, static_cast<int>(item));
            lstQAndA_->addItem(row);
        }
    }
    const int row = rowOfItem(session_.CurrentItem);
    if (row >= 0) {
        selectRow(lstQAndA_, row);
        lstQAndA_Click();
    } else {
        // The current item has no row yet (a new one, still without text): it is shown all
        // the same, so the author can write it.
        fillQuestionEditor();
    }
}

void MainForm::lstQAndA_Click() {
    const int item = selectedItem();
    if (item < 0)
        return;
    session_.CurrentItem = static_cast<std::int16_t>(item);
    fillQuestionEditor();
}

void MainForm::fillQuestionEditor() {
    const auto& questions = session_.module.questions;
    const int item = session_.CurrentItem;
    if (item < 0 || item >= static_cast<int>(questions.size())) {
        clearQuestionEditor();
        return;
    }
    const QAndAItem& q = questions[item];
    filling_ = true;
    txtNumberToAsk_->setText(QString::number(session_.module.intNumQuestions));
    questionEditorItem_ = item;
    questionEditorReady_ = false;
    dhtmlQuestionEdit_->setContent(qs(toEditorHTML(q.questionText, session_.contentPaths())),
                                   qs(session_.StylesheetPath), qs(session_.module.ModuleFolder));
    txtRationale_->setText(qs(q.rationale));
    if (session_.module.moduleType == kEvaluation)
        chkShuffleQuestions_->setChecked(flagToBool(session_.module.shuffleEvalQuestions));
    lstQuestionType_->clear();
    lstQuestionType_->addItems({"Single-select", "Multiple-select"});
    lstQuestionType_->setCurrentIndex(q.questionType == "radio"      ? 0
                                      : q.questionType == "checkbox" ? 1
                                                                     : -1);
    chkShuffleOptions_->setChecked(flagToBool(q.shuffleDistractors));
    filling_ = false;
    setOptionsList();
    if (frmLOption_)
        frmLOption_->resetPage();
}

void MainForm::clearQuestionEditor() {
    filling_ = true;
    questionEditorItem_ = -1;
    questionEditorReady_ = false;
    dhtmlQuestionEdit_->setContent(QString(), qs(session_.StylesheetPath),
                                   qs(session_.module.ModuleFolder));
    txtRationale_->clear();
    lstQuestionType_->clear();
    chkShuffleOptions_->setChecked(false);
    lstOptions_->clear();
    filling_ = false;
}

void MainForm::questionEditorChanged(const QString& bodyHtml) {
    if (!questionEditorReady_)
        return;
    const int item = questionEditorItem_;
    auto& questions = session_.module.questions;
    if (item < 0 || item >= static_cast<int>(questions.size()))
        return;
    setActiveEditor("dhtmlQuestionEdit");
    std::string normalized = normalizeHTML(bodyHtml.toStdString());
    if (fromScriptString(normalized, session_.contentPaths()) == questions[item].questionText)
        return;
    session_.setQuestionText(static_cast<std::size_t>(item), normalized);
    // The list follows the typing.
    showItemEntry(item);
}

void MainForm::lstQuestionType_Click(int index) {
    auto& questions = session_.module.questions;
    if (session_.CurrentItem < 0 || session_.CurrentItem >= static_cast<int>(questions.size()))
        return;
    questions[session_.CurrentItem].questionType = index == 0 ? "radio" : "checkbox";
}

void MainForm::chkShuffleOptions_Click(bool checked) {
    auto& questions = session_.module.questions;
    if (session_.CurrentItem < 0 || session_.CurrentItem >= static_cast<int>(questions.size()))
        return;
    questions[session_.CurrentItem].shuffleDistractors = flagOfCheckBox(checked);
    session_.markChanged();
}

void MainForm::chkShuffleQuestions_Click(bool checked) {
    session_.module.shuffleEvalQuestions = flagOfCheckBox(checked);
    session_.markChanged();
}

// --- glossary ------------------------------------------------------------------------------

void MainForm::setTermList() {
    std::vector<std::string> texts;
    for (const GlossaryTerm& term : session_.module.glossary)
        texts.push_back(term.term);
    fillList(lstTerms_, texts);
    const int current = session_.CurrentTerm;
    // Reselected up to and including the count: the relaxed test is the program's own, and a
    // row one past the end simply selects nothing.
    if (current <= lstTerms_->count()) {
        selectRow(lstTerms_, current);
        if (current < lstTerms_->count())
            lstTerms_Click();
        return;
    }
    const auto& glossary = session_.module.glossary;
    filling_ = true;
    if (current >= 0 && current < static_cast<int>(glossary.size())) {
        txtTerm_->setText(qs(glossary[current].term));
        txtDefinition_->setPlainText(qs(definitionForField(glossary[current].definition)));
    }
    filling_ = false;
}

void MainForm::lstTerms_Click() {
    int row = lstTerms_->currentRow();
    const auto& glossary = session_.module.glossary;
    if (row < 0 || row >= static_cast<int>(glossary.size()))
        return;
    session_.CurrentTerm = static_cast<std::int16_t>(row);
    filling_ = true;
    // A field that already shows the text is left alone: the definition's own change refills
    // the list, and the caret stays where the author types.
    const QString term = qs(glossary[row].term);
    if (txtTerm_->text() != term)
        txtTerm_->setText(term);
    const QString definition = qs(definitionForField(glossary[row].definition));
    if (txtDefinition_->toPlainText() != definition)
        txtDefinition_->setPlainText(definition);
    filling_ = false;
}

void MainForm::txtTerm_Change(const QString& text) {
    auto& glossary = session_.module.glossary;
    const int term = session_.CurrentTerm;
    if (term < 0 || term >= static_cast<int>(glossary.size()))
        return;
    glossary[term].term = text.toStdString();
    if (QListWidgetItem* item = lstTerms_->item(term))
        item->setText(text);
    session_.markChanged();
}

void MainForm::txtDefinition_Change() {
    if (filling_)
        return;
    auto& glossary = session_.module.glossary;
    const int term = session_.CurrentTerm;
    if (term < 0 || term >= static_cast<int>(glossary.size()))
        return;
    glossary[term].definition = definitionText().toStdString();
    setTermList();
    session_.markChanged();
}

QString MainForm::definitionText() const {
    // The definition keeps its line breaks as CR LF, as the module files hold them.
    QString text = txtDefinition_->toPlainText();
    return text.replace("\r\n", "\n").replace("\n", "\r\n");
}

// --- the editors ---------------------------------------------------------------------------

void MainForm::saveEditorContent(const QString& editorName) {
    if (editorName == "dhtmlLessonEdit") {
        if (lessonEditorReady_)
            storePageContent(lessonEditorPage_, dhtmlLessonEdit_->bodyHtml().toStdString());
    } else if (editorName == "txtLessonEdit") {
        storePageContent(session_.CurrentPage, sourceText());
    } else if (editorName == "dhtmlQuestionEdit") {
        if (questionEditorReady_)
            questionEditorChanged(dhtmlQuestionEdit_->bodyHtml());
    }
}

void MainForm::txtModuleTitle_Change(const QString& text) {
    session_.module.modTitle = text.toStdString();
    session_.markChanged();
}

void MainForm::txtCopyright_Change(const QString& text) {
    session_.module.copyright = text.toStdString();
    session_.markChanged();
}

} // namespace lumora
