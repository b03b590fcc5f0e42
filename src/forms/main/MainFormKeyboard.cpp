// The main form for keyboard and screen reader users: the names of the controls that show no
// caption of their own, the order Tab walks every tab in, and the key sequences of the
// commands people reach for without the menu.
#include "forms/main/MainForm.h"

#include "forms/TabChain.h"
#include "forms/editor/HtmlEditor.h"

#include <QAction>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <utility>

namespace lumora {

namespace {

// Controls whose purpose no caption or label announces.
const std::pair<const char*, const char*> kNames[] = {
    {"lstPages", "Pages"},
    {"lstQAndA", "Questions"},
    {"lstOptions", "Options"},
    {"lstTerms", "Glossary terms"},
    {"txtLessonEdit", "Page source"},
    {"pageToolbar", "Page formatting"},
    {"questionToolbar", "Question formatting"},
};

} // namespace

// Reading order: the header, then the tab shown. Each tab's list comes before its buttons, a
// formatting row before its editor; controls of the hidden tabs are passed over.
TabChain MainForm::tabChain() {
    return TabChain(this, {"txtModuleTitle", "txtCopyright", "btnPreview", "tabMain",
                           // pages
                           "lstPages", "btnAddPage", "btnRemovePage", "btnUpPage", "btnDownPage",
                           "txtPageTitle", "pageToolbar", "btnInsertImage", "btnLink", "Command1",
                           "btnInsertTerm", "btnInsertQAndA", "tabLessonPage", "dhtmlLessonEdit",
                           "txtLessonEdit",
                           // questions
                           "lstQAndA", "btnAddQuestion", "btnRemoveQuestion", "btnUpQuestion",
                           "btnDownQuestion", "questionToolbar", "btnSubmit", "dhtmlQuestionEdit",
                           "lstQuestionType", "chkShuffleOptions", "lstOptions", "btnAddOption",
                           "btnEditOption", "btnRemoveOption", "btnUpOption", "btnDownOption",
                           "txtRationale", "txtNumberToAsk", "chkShuffleQuestions",
                           // glossary
                           "lstTerms", "btnAddTerm", "btnRemoveTerm", "txtTerm", "txtDefinition"});
}

bool MainForm::focusNextPrevChild(bool next) {
    return tabChain_.move(next) || QMainWindow::focusNextPrevChild(next);
}

void MainForm::makeKeyboardReady() {
    for (const auto& [name, accessible] : kNames)
        if (auto* control = findChild<QWidget*>(name))
            control->setAccessibleName(accessible);
    tabMain_->tabBar()->setAccessibleName("Module");
    tabLessonPage_->tabBar()->setAccessibleName("Page view");
    dhtmlLessonEdit_->setEditorName("Page editor");
    dhtmlQuestionEdit_->setEditorName("Question editor");

    // Plain-text fields would keep Tab as a character and hold the focus for good.
    txtLessonEdit_->setTabChangesFocus(true);
    txtDefinition_->setTabChangesFocus(true);

    if (auto* exit = findChild<QAction*>("mnuExit")) {
        // The desktop's Quit keys, or Ctrl+Q where the platform names none.
        const QList<QKeySequence> quit = QKeySequence::keyBindings(QKeySequence::Quit);
        exit->setShortcuts(quit.isEmpty() ? QList{QKeySequence(Qt::CTRL | Qt::Key_Q)} : quit);
    }
    btnPreview_->setShortcut(Qt::Key_F5);
}

} // namespace lumora
