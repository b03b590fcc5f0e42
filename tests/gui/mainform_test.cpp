// The main form over an open module: what it shows per module type, the save question of New
// and Open, the three saves, exit, preview and help.
#include "GuiFixture.h"

#include "forms/dialogs/WebViewerForm.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/web/ModuleWebView.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTime>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace lumora::testing {
namespace {

class MainFormTest : public GuiTest {
  protected:
    MainForm* openLesson() {
        MainForm* form = openModule("Course1", "Lesson");
        EXPECT_NE(form, nullptr);
        return form;
    }

    void typeTitle(MainForm* form, const QString& text) {
        auto* title = control<QLineEdit>(form, "txtModuleTitle");
        title->selectAll();
        QTest::keyClicks(title, text);
    }

    std::string moduleInfo(const std::string& module = "Course1") {
        return readText(moduleFile(module, "scripts/inc_ModuleInfo.js"));
    }
};

// What the form shows per module type: a Lesson its pages and all three tabs, an Evaluation
// only its questions.
TEST_F(MainFormTest, EachModuleTypeShowsItsOwnTabsAndLists) {
    MainForm* form = openLesson();
    EXPECT_EQ(form->windowTitle(), "Lumora: Sample Lesson");
    EXPECT_EQ(control<QLineEdit>(form, "txtModuleTitle")->text(), "Sample Lesson");
    auto* tabs = control<QTabWidget>(form, "tabMain");
    EXPECT_TRUE(tabs->isTabVisible(0));
    EXPECT_TRUE(tabs->isTabVisible(2));
    EXPECT_EQ(tabs->tabText(1), "Q&&A");
    EXPECT_FALSE(control<QPushButton>(form, "btnUpQuestion")->isVisibleTo(form));
    auto* pages = control<QListWidget>(form, "lstPages");
    ASSERT_EQ(pages->count(), 3);
    EXPECT_EQ(pages->item(1)->text(), "1. Key ideas");
    EXPECT_EQ(pages->currentRow(), 0);
    EXPECT_EQ(control<QLineEdit>(form, "txtPageTitle")->text(), "Welcome");
    // Filling the form is no edit.
    EXPECT_FALSE(session.ModuleChanged);
    EXPECT_FALSE(session.ModuleLoaded);

    // An Evaluation opened over it shows only its questions.
    addModule("Quiz", "Evaluation");
    session.ResetModule();
    session.module.moduleType = "Evaluation";
    session.module.folderName = "Quiz";
    ASSERT_TRUE(session.LoadModule());
    form->showLoadedModule();
    EXPECT_FALSE(tabs->isTabVisible(0));
    EXPECT_FALSE(tabs->isTabVisible(2));
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(tabs->tabText(1), "Questions");
    EXPECT_TRUE(control<QPushButton>(form, "btnUpQuestion")->isVisibleTo(form));
    auto* questions = control<QListWidget>(form, "lstQAndA");
    ASSERT_GT(questions->count(), 0);
    EXPECT_TRUE(questions->item(0)->text().startsWith("1. "));
    EXPECT_FALSE(session.ModuleChanged);
}

// The save question before Open answered No writes nothing; the folder chooser comes up over
// the form, and a damaged module chosen then keeps the open one; Escape only closes the chooser.
// The save question before New answered Yes saves.
TEST_F(MainFormTest, CheckSaveAnsweredNoKeepsTheFilesAndYesSavesThem) {
    MainForm* form = openLesson();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    auto* editor = control<HtmlEditor>(form, "dhtmlLessonEdit");
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->isLoaded(); }, kWaitMs));
    addModule("Broken", "Lesson");
    std::filesystem::remove(moduleFile("Broken", "scripts/inc_Glossary.js"));
    const std::string before = moduleInfo();
    typeTitle(form, "Fire Safety");
    EXPECT_EQ(session.module.modTitle, "Fire Safety");
    EXPECT_TRUE(session.ModuleChanged);

    prompt.answer(Answer::No);
    menu("mnuOpen")->trigger();
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text, "Do you want to save your changes?");
    EXPECT_EQ(prompt.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(moduleInfo(), before);
    QWidget* chooser = visibleForm("frmChooseFolder");
    ASSERT_NE(chooser, nullptr);
    // The folder chooser comes up over the main form, with the keyboard.
    auto* folders = control<QListWidget>(chooser, "lstDirectories");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == folders; }, kWaitMs));
    const QPoint offset = chooser->frameGeometry().center() - form->frameGeometry().center();
    EXPECT_LE(offset.manhattanLength(), 4) << offset.x() << "," << offset.y();
    folders->setCurrentRow(0); // Broken (L)
    control<QPushButton>(chooser, "OKButton")->click();
    EXPECT_TRUE(containsText(prompt.last()->text, "inc_Glossary.js"));
    EXPECT_EQ(session.module.folderName, "Course1");
    EXPECT_EQ(session.module.modTitle, "Fire Safety");
    EXPECT_TRUE(session.ModuleChanged);
    EXPECT_EQ(form->windowTitle(), "Lumora: Sample Lesson");
    // Closing the chooser with a module open only closes the chooser.
    QTest::keyClick(chooser, Qt::Key_Escape);
    EXPECT_EQ(visibleForm("frmChooseFolder"), nullptr);
    EXPECT_FALSE(program->isShutDown());
    EXPECT_TRUE(form->isVisible());

    prompt.answer(Answer::Yes);
    prompt.type(std::nullopt); // then cancel the new module's name
    menu("mnuNewSurvey")->trigger();
    EXPECT_EQ(prompt.messages.size(), 3u);
    EXPECT_TRUE(containsText(moduleInfo(), "var modTitle = \"Fire Safety\";"));
    EXPECT_FALSE(session.ModuleChanged);
    // Cancelling the name leaves the saved module open.
    EXPECT_EQ(session.module.folderName, "Course1");
}

TEST_F(MainFormTest, AFailedSaveSaysSoAndKeepsTheEdits) {
    MainForm* form = openLesson();
    // The scripts folder replaced by a file: no script can be written, even by a superuser.
    std::filesystem::remove_all(workspace / "Course1" / "scripts");
    std::ofstream(workspace / "Course1" / "scripts") << "not a folder";
    typeTitle(form, "Unsaved");
    menu("mnuSave")->trigger();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, "Error");
    EXPECT_TRUE(containsText(prompt.last()->text, "scripts"));
    EXPECT_TRUE(session.ModuleChanged);
    EXPECT_EQ(session.module.modTitle, "Unsaved");

    // A save that did nothing new fails the same way and still leaves the module changed.
    session.ModuleChanged = false;
    menu("mnuSaveNonSCORM")->trigger();
    EXPECT_TRUE(session.ModuleChanged);
}

// Exit and the close box ask the same question, whose default answer keeps the work.
TEST_F(MainFormTest, ExitAnsweredNoKeepsEverythingAndYesEndsTheProgram) {
    MainForm* form = openLesson();
    typeTitle(form, "Kept");
    menu("mnuExit")->trigger();
    form->close();
    ASSERT_EQ(prompt.messages.size(), 2u);
    for (const ShownMessage& asked : prompt.messages) {
        EXPECT_EQ(asked.text, "Are you sure you wish to exit?");
        EXPECT_EQ(asked.title, "Exit Confirmation");
        EXPECT_EQ(asked.icon, Icon::Exclamation);
        EXPECT_EQ(asked.buttons, Buttons::YesNo);
        EXPECT_EQ(asked.defaultButton, Answer::No);
    }
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(program->isShutDown());
    EXPECT_TRUE(session.ModuleChanged);

    QSignalSpy finished(program.get(), &Program::finished);
    prompt.answer(Answer::Yes);
    menu("mnuExit")->trigger();
    // Exit never offers to save.
    EXPECT_EQ(prompt.messages.size(), 3u);
    EXPECT_TRUE(program->isShutDown());
    EXPECT_TRUE(finished.wait(kWaitMs));
}

// Preview of unsaved changes asks first: No shows nothing, Yes saves without SCORM and shows
// the saved module running; with nothing changed the same module reloads from disk unasked.
TEST_F(MainFormTest, PreviewOfUnsavedChangesAnsweredNoShowsNothingAndYesShowsTheSavedModule) {
    MainForm* form = openLesson();
    menu("mnuSave")->trigger();
    typeTitle(form, "Previewed");
    control<QPushButton>(form, "btnPreview")->click();
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text,
              "You must Save your changes first.\r\nWould you like to save your changes?");
    EXPECT_EQ(form->previewForm(), nullptr);
    EXPECT_TRUE(session.ModuleChanged);

    prompt.answer(Answer::Yes);
    control<QPushButton>(form, "btnPreview")->click();
    EXPECT_TRUE(containsText(moduleInfo(), "var modTitle = \"Previewed\";"));
    EXPECT_TRUE(containsText(moduleInfo(), "var useSCORM = false;"));
    EXPECT_FALSE(session.ModuleChanged);
    PreviewForm* preview = form->previewForm();
    ASSERT_NE(preview, nullptr);
    QSignalSpy loaded(preview, &WebViewerForm::loadFinished);
    ASSERT_TRUE(loaded.count() > 0 || loaded.wait(kWaitMs));
    EXPECT_TRUE(loaded.last().first().toBool());
    EXPECT_EQ(preview->browser()->locationText().toStdString(),
              (workspace / "Course1" / "lessonframeset.html").string());
    // (That the frames of a module shown there script each other is ModuleWebViewTest's.)

    QSignalSpy started(preview->browser(), &QWebEngineView::loadStarted);
    control<QPushButton>(form, "btnPreview")->click();
    EXPECT_TRUE(started.count() > 0 || started.wait(kWaitMs));
    EXPECT_EQ(prompt.messages.size(), 2u);
}

// The two saves write the SCORM switch, and Save As always saves for SCORM, into the copy (the
// copy and its rewritten paths are the workspace layer's tests); the status bar says which save
// was last and marks unsaved edits; the caption stays.
TEST_F(MainFormTest, TheSavesWriteTheScormSwitchAndTheStatusBarShowsThem) {
    MainForm* form = openLesson();
    auto* saved = control<QLabel>(form, "lblSaveState");
    auto* unsaved = control<QLabel>(form, "lblUnsavedChanges");
    EXPECT_EQ(saved->text(), "");
    EXPECT_EQ(unsaved->text(), "");

    typeTitle(form, "Marked");
    EXPECT_TRUE(QTest::qWaitFor([&] { return unsaved->text() == "Unsaved changes"; }, kWaitMs));
    menu("mnuSave")->trigger();
    EXPECT_TRUE(saved->text().startsWith("Saved for SCORM/AICC at "));
    EXPECT_TRUE(containsText(moduleInfo(), "var useSCORM = true;"));
    EXPECT_EQ(unsaved->text(), "");
    const auto now = [] { return QLocale().toString(QTime::currentTime(), QLocale::ShortFormat); };
    const QString before = now();
    menu("mnuSaveNonSCORM")->trigger();
    EXPECT_TRUE(containsText(moduleInfo(), "var useSCORM = false;"));
    EXPECT_EQ(session.module.useSCORM, "false");
    EXPECT_TRUE(prompt.messages.empty());
    // The minute may turn during the save.
    EXPECT_TRUE(saved->text() == "Saved (non-SCORM/AICC) at " + before ||
                saved->text() == "Saved (non-SCORM/AICC) at " + now())
        << saved->text().toStdString();
    // An edit made elsewhere than the form's own fields shows too.
    session.markChanged();
    EXPECT_TRUE(QTest::qWaitFor([&] { return unsaved->text() == "Unsaved changes"; }, kWaitMs));
    EXPECT_EQ(form->windowTitle(), "Lumora: Sample Lesson");

    prompt.type("Copy1");
    menu("mnuSaveAs")->trigger();
    EXPECT_EQ(session.module.ModuleFolder, (workspace / "Copy1").string());
    EXPECT_TRUE(containsText(moduleInfo("Copy1"), "var useSCORM = true;"));
    EXPECT_TRUE(containsText(moduleInfo("Course1"), "var useSCORM = false;"));
    EXPECT_FALSE(session.ModuleChanged);
    EXPECT_TRUE(saved->text().startsWith("Saved for SCORM/AICC at "));
}

// Help Contents shows the help that comes with the program. Until an online address is set the
// online help says so and links that help; the address is set in the settings dialog and then
// opened.
TEST_F(MainFormTest, HelpContentsAndTheOnlineHelpAddressFromTheSettings) {
    MainForm* form = openLesson();
    const std::string offline = (install / "Help" / "lessonFrameset.html").string();
    menu("mnuHelpContents")->trigger();
    HelpForm* help = form->helpForm();
    ASSERT_NE(help, nullptr);
    QSignalSpy loaded(help, &WebViewerForm::loadFinished);
    ASSERT_TRUE(loaded.wait(kWaitMs));
    EXPECT_TRUE(loaded.last().first().toBool());
    EXPECT_EQ(help->browser()->locationText().toStdString(), offline);

    loaded.clear();
    menu("mnuHelpOnline")->trigger();
    ASSERT_TRUE(loaded.wait(kWaitMs));
    QString text;
    help->browser()->page()->toPlainText([&](const QString& t) { text = t; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !text.isEmpty(); }, kWaitMs));
    EXPECT_TRUE(text.contains("No online help address is set")) << text.toStdString();
    loaded.clear();
    help->browser()->page()->runJavaScript("document.getElementById('offline').click()");
    ASSERT_TRUE(loaded.wait(kWaitMs));
    EXPECT_EQ(help->browser()->locationText().toStdString(), offline);

    menu("mnuSettings")->trigger();
    QWidget* settings = visibleForm("frmSettings");
    ASSERT_NE(settings, nullptr);
    QTest::keyClicks(control<QLineEdit>(settings, "txtOnlineHelp"), "about:blank");
    control<QPushButton>(settings, "OKButton")->click();
    EXPECT_EQ(QSettings().value("help/onlineUrl").toString(), "about:blank");
    menu("mnuHelpOnline")->trigger();
    EXPECT_EQ(help->browser()->locationText(), "about:blank");
}

} // namespace
} // namespace lumora::testing
