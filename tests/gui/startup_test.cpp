// Start-up as the program runs it: the checks that end it, the splash handing over to the
// start chooser, the start chooser's three outcomes and the folder chooser.
#include "GuiFixture.h"

#include "forms/dialogs/FolderChooser.h"
#include "forms/dialogs/SplashForm.h"
#include "forms/dialogs/StartChooser.h"

#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>

#include <functional>

namespace lumora::testing {
namespace {

using StartupFlow = GuiTest;

// A missing Templates folder ends the program before the splash shows (which checks end it, and
// their messages, are the start-up's own tests).
TEST_F(StartupFlow, WithoutTemplatesTheProgramEnds) {
    stage({"app"});
    EXPECT_FALSE(startProgram());
    EXPECT_TRUE(program->isShutDown());
    EXPECT_EQ(program->splash(), nullptr);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "No Templates");
    QSignalSpy finished(program.get(), &Program::finished);
    EXPECT_TRUE(finished.wait(kWaitMs));
}

TEST_F(StartupFlow, AKeyOnTheSplashOpensOneStartChooser) {
    stage({"Templates", "app", "Help"});
    makeWorkspace();
    ASSERT_TRUE(startProgram());
    SplashForm* splash = program->splash();
    ASSERT_NE(splash, nullptr);
    EXPECT_TRUE(splash->isVisible());
    EXPECT_TRUE(splash->timer().isActive());

    QTest::keyClick(splash, Qt::Key_Space);
    ASSERT_NE(visibleForm("frmOpenChoose"), nullptr);
    // The splash is gone with its timer, so nothing opens a second chooser.
    EXPECT_TRUE(QTest::qWaitFor([&] { return program->splash() == nullptr; }, kWaitMs));
    int choosers = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        choosers += w->objectName() == "frmOpenChoose" && w->isVisible();
    EXPECT_EQ(choosers, 1);
}

TEST_F(StartupFlow, TheSplashTimerOpensTheStartChooser) {
    stage({"Templates", "app"});
    makeWorkspace();
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(QTest::qWaitFor([] { return visibleForm("frmOpenChoose") != nullptr; }, kWaitMs));
}

TEST_F(StartupFlow, RefusingToCreateTheWorkspaceEndsTheProgram) {
    stage({"Templates", "app"});
    ASSERT_TRUE(startProgram());
    prompt.answer(Answer::No);
    program->splash()->finish();
    EXPECT_TRUE(program->isShutDown());
    EXPECT_EQ(visibleForm("frmOpenChoose"), nullptr);
    EXPECT_EQ(prompt.messages.size(), 2u);
}

using StartChooserTest = GuiTest;

// The start chooser's paths. Enter presses the picture button that has the focus, Edit at first:
// without any content Edit says so and the chooser stays; a cancelled name for a new module keeps
// the chooser too; a name (asked again after a refused one: the workspace layer's tests) opens
// the new module in the main form.
TEST_F(StartChooserTest, EnterPressesTheFocusedPictureRefusalsKeepTheChooserANameOpensTheModule) {
    startToChooser();
    QWidget* chooser = visibleForm("frmOpenChoose");
    auto* imgEdit = control<QToolButton>(chooser, "imgEdit");
    ASSERT_EQ(chooser->focusWidget(), imgEdit);
    QTest::keyClick(imgEdit, Qt::Key_Return);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.last()->text, "You have not created any custom content.\r\n"
                                   "Please Create a Lesson, Evaluation, or Survey.");
    EXPECT_TRUE(chooser->isVisible());
    EXPECT_EQ(visibleForm("frmChooseFolder"), nullptr);

    auto* imgNewSurvey = control<QToolButton>(chooser, "imgNewSurvey");
    imgNewSurvey->setFocus();
    prompt.type(std::nullopt);
    QTest::keyClick(imgNewSurvey, Qt::Key_Enter);
    ASSERT_EQ(prompt.asked.size(), 1u);
    EXPECT_EQ(prompt.asked[0].title, "New Survey Folder");
    EXPECT_NE(visibleForm("frmOpenChoose"), nullptr);
    EXPECT_EQ(visibleForm("frmMain"), nullptr);
    EXPECT_TRUE(session.module.moduleType.empty());

    prompt.type("  My Course  ");
    control<QToolButton>(chooser, "imgNewLesson")->click();
    ASSERT_EQ(prompt.asked.size(), 2u);
    EXPECT_EQ(prompt.asked[1].title, "New Lesson Folder");
    EXPECT_TRUE(std::filesystem::exists(workspace / "My_Course" / "lessonframeset.html"));
    QWidget* main = visibleForm("frmMain");
    ASSERT_NE(main, nullptr);
    EXPECT_FALSE(session.module.modTitle.empty());
    EXPECT_EQ(main->windowTitle().toStdString(), "Lumora: " + session.module.modTitle);
    EXPECT_FALSE(session.ModuleChanged);
    EXPECT_EQ(visibleForm("frmOpenChoose"), nullptr);
}

class FolderChooserTest : public GuiTest {
  protected:
    // The start chooser's Edit over a workspace holding a module of each type (which folders
    // are listed, and how their type is found, are the workspace layer's tests).
    QWidget* openChooser() {
        startToChooser();
        addModule("Beta", "Lesson");
        addModule("Alpha", "Evaluation");
        addModule("Gamma", "Survey");
        control<QToolButton>(visibleForm("frmOpenChoose"), "imgEdit")->click();
        return visibleForm("frmChooseFolder");
    }
};

// The listing with type letters; OK on a damaged module (named, nothing half-loaded) and then on
// a good one, opened by its type.
TEST_F(FolderChooserTest, ListsModulesAndOkOpensTheChosenOneByItsType) {
    QWidget* chooser = openChooser();
    ASSERT_NE(chooser, nullptr);
    EXPECT_EQ(visibleForm("frmOpenChoose"), nullptr);
    auto* list = control<QListWidget>(chooser, "lstDirectories");
    QStringList entries;
    for (int i = 0; i < list->count(); ++i)
        entries << list->item(i)->text();
    EXPECT_EQ(entries, QStringList({"Alpha (E)", "Beta (L)", "Gamma (S)"}));

    std::filesystem::remove(workspace / "Beta" / "scripts" / "inc_ModuleInfo.js");
    list->setCurrentRow(1); // Beta (L)
    control<QPushButton>(chooser, "OKButton")->click();
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.last()->title, "Error");
    EXPECT_TRUE(containsText(prompt.last()->text, "inc_ModuleInfo.js"));
    EXPECT_TRUE(chooser->isVisible());
    EXPECT_EQ(visibleForm("frmMain"), nullptr);
    // Nothing half-loaded stays behind: Cancel still knows that no module is open.
    EXPECT_TRUE(session.module.moduleType.empty());

    list->setCurrentRow(0); // Alpha (E)
    control<QPushButton>(chooser, "OKButton")->click();
    EXPECT_EQ(session.module.moduleType, "Evaluation");
    EXPECT_EQ(session.module.folderName, "Alpha");
    EXPECT_NE(visibleForm("frmMain"), nullptr);
    EXPECT_EQ(visibleForm("frmChooseFolder"), nullptr);
    EXPECT_EQ(prompt.messages.size(), 1u);
}

// Closing either chooser with no module open (Cancel, Escape, the close box) ends the program:
// nothing else is open.
TEST_F(FolderChooserTest, ClosingEitherChooserWithNoModuleOpenEndsTheProgram) {
    const auto cancel = [](QWidget* c) { control<QPushButton>(c, "CancelButton")->click(); };
    const auto escape = [](QWidget* c) { QTest::keyClick(c, Qt::Key_Escape); };
    const auto closeBox = [](QWidget* c) { c->close(); };
    const std::pair<std::string, std::function<void(QWidget*)>> rows[] = {
        {"frmChooseFolder", cancel}, {"frmChooseFolder", escape}, {"frmChooseFolder", closeBox},
        {"frmOpenChoose", escape},   {"frmOpenChoose", closeBox},
    };
    QWidget* chooser = openChooser();
    for (const auto& [name, closeIt] : rows) {
        SCOPED_TRACE(name);
        if (!chooser) {
            restartToChooser();
            if (name == "frmChooseFolder")
                control<QToolButton>(visibleForm("frmOpenChoose"), "imgEdit")->click();
            chooser = visibleForm(QString::fromStdString(name));
        }
        ASSERT_NE(chooser, nullptr);
        QSignalSpy finished(program.get(), &Program::finished);
        closeIt(chooser);
        EXPECT_TRUE(program->isShutDown());
        EXPECT_TRUE(finished.wait(kWaitMs));
        chooser = nullptr;
    }
}

// A Lesson whose module information lists none of its folder's page files still opens, and
// the author is warned that those files are not part of it. The arrow keys choose its row and
// Enter opens it.
TEST_F(FolderChooserTest, ALessonWithPageFilesOutsideItOpensWithAWarning) {
    QWidget* chooser = openChooser();
    const std::filesystem::path info = workspace / "Beta" / "scripts" / "inc_ModuleInfo.js";
    const std::string text = readText(info);
    std::ofstream(info, std::ios::binary) << text.substr(0, text.find("\r\n") + 2);
    auto* list = control<QListWidget>(chooser, "lstDirectories");
    EXPECT_EQ(chooser->focusWidget(), list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down); // Beta (L)
    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, "Warning");
    EXPECT_EQ(prompt.last()->icon, Icon::Exclamation);
    EXPECT_EQ(session.module.folderName, "Beta");
    EXPECT_NE(visibleForm("frmMain"), nullptr);
    EXPECT_EQ(visibleForm("frmChooseFolder"), nullptr);
    EXPECT_TRUE(std::filesystem::exists(workspace / "Beta" / "page2.html"));
}

} // namespace
} // namespace lumora::testing
