// The workspace check, the folder-name prompt, new modules from their templates, Save As,
// and the folder chooser's listing, type detection and OK.
#include "AppFixture.h"

#include "app/FolderNames.h"
#include "app/Workspace.h"

namespace lumora::test {
namespace {

const std::string kForbidden = "You cannot use the following characters:\r\n"
                               "                   / \\ : * ? \" < > |";

class WorkspaceTest : public AppTest {
  protected:
    void SetUp() override { stageTemplates(); }
};

TEST_F(WorkspaceTest, MissingWorkspaceIsCreatedOnlyOnYes) {
    EXPECT_TRUE(EnsureWorkspace(session()));
    EXPECT_TRUE(prompt.messages.empty());

    fs::remove_all(workspace);
    EXPECT_FALSE(EnsureWorkspace(session()));
    EXPECT_FALSE(fs::exists(workspace));
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(shown(prompt.messages[0]),
              (Shown{"The \"MyContent\" folder does not exist.\r\nCreate a \"MyContent\" folder?",
                     "Create MyContent", Icon::Critical}));
    EXPECT_EQ(prompt.messages[0].buttons, Buttons::YesNo);
    EXPECT_EQ(shown(prompt.messages[1]),
              (Shown{"Cannot continue without \"MyContent\" folder.", "Error", Icon::Critical}));

    prompt.answer(Answer::Yes);
    EXPECT_TRUE(EnsureWorkspace(session()));
    EXPECT_TRUE(fs::is_directory(workspace));
    EXPECT_EQ(prompt.messages.size(), 3u);
}

TEST(FolderNames, AnswersAreTrimmedForbiddenCharactersCaughtAndReferencesRewritten) {
    const std::pair<const char*, const char*> answers[] = {
        {"  My Course  ", "My_Course"}, {"a  b", "a__b"}, {"   ", ""}, {"\tx", "\tx"}};
    for (const auto& [answer, folder] : answers) // only blanks are trimmed
        EXPECT_EQ(folderNameFromAnswer(answer), folder) << answer;
    for (char c : std::string("\\/:*?\"<>|"))
        EXPECT_TRUE(hasForbiddenFolderCharacter(std::string("a") + c + "b")) << c;
    EXPECT_FALSE(hasForbiddenFolderCharacter("Course-1.(old)_x"));

    // Only whole folder segments of the old name change.
    const std::string s(1, kSep);
    const std::string text = "<IMG src=\"" + s + "w" + s + "Course1" + s + "images" + s +
                             "a.gif\"> Course1 " + s + "Course10" + s + " " + s + "course1" + s;
    EXPECT_EQ(rewriteFolderReferences(text, "Course1", "Copy1"),
              "<IMG src=\"" + s + "w" + s + "Copy1" + s + "images" + s + "a.gif\"> Course1 " + s +
                  "Course10" + s + " " + s + "course1" + s);
}

TEST_F(WorkspaceTest, WorkspaceThatCannotBeMadeOrWrittenNamesItAndHowToChooseAnother) {
    // No folder can be made below a file, and /sys takes no file, not even from root.
    writeBytes(root / "file", "x");
    const std::pair<std::string, std::string> cases[] = {
        {(root / "file" / "Lumora").string(), "Not a directory"}, {"/sys", "Permission denied"}};
    for (const auto& [folder, reason] : cases) {
        SCOPED_TRACE(folder);
        prompt.messages.clear();
        if (!fs::exists(folder))
            prompt.answer(Answer::Yes); // to the same creation question as ever
        session().setInstallation(install.string(), folder);
        EXPECT_FALSE(EnsureWorkspace(session()));
        ASSERT_FALSE(prompt.messages.empty());
        EXPECT_EQ(shown(prompt.messages.back()),
                  (Shown{"Lumora cannot keep your modules in \"" + folder + "\": " + reason +
                             ".\r\nChoose another folder with --workspace FOLDER (or the "
                             "environment variable LUMORA_WORKSPACE) and start again.",
                         "Error", Icon::Critical}));
    }
    EXPECT_TRUE(prompt.answers.empty());
}

// Cancel or a blank answer give no name; a bad or taken name is refused with its message and
// the prompt asks again, by the module type's name.
TEST_F(WorkspaceTest, FolderNamePrompt) {
    fs::create_directories(workspace / "Course1");
    session().NewModuleType = "Lesson";
    for (const std::optional<std::string>& nothing :
         {std::optional<std::string>(), std::optional<std::string>("    ")}) {
        prompt.type(nothing);
        EXPECT_EQ(PromptFolderName(session()), "");
    }
    EXPECT_TRUE(prompt.messages.empty());

    session().NewModuleType = "Survey";
    for (const char* answer : {"a/b", " Course1 ", "Fresh"})
        prompt.type(answer);
    EXPECT_EQ(PromptFolderName(session()), "Fresh");
    ASSERT_EQ(prompt.asked.size(), 5u);
    EXPECT_EQ(prompt.asked.back().prompt, "Please enter a folder name for the new Survey.");
    EXPECT_EQ(prompt.asked.back().title, "New Survey Folder");
    EXPECT_EQ(prompt.asked.back().defaultText, "");
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(shown(prompt.messages[0]), (Shown{kForbidden, "Error", Icon::Critical}));
    EXPECT_EQ(
        shown(prompt.messages[1]),
        (Shown{"Course1 already exists.\r\nYou must use a unique name.", "Error", Icon::Critical}));
}

TEST_F(WorkspaceTest, NewModuleFolderCopiesTheTemplateAndItsChooserEntryOpensIt) {
    prompt.type("My Course");
    ASSERT_TRUE(NewModuleFolder(session(), "Lesson"));
    const fs::path folder = workspace / "My_Course";
    EXPECT_TRUE(fs::is_regular_file(folder / "images" / "lumora.png"));
    EXPECT_TRUE(fs::is_directory(folder / "media"));
    EXPECT_EQ(session().module.templateFolder, (install / "Templates" / "Lesson").string());
    for (const char* how : {"made", "opened from its entry"}) {
        SCOPED_TRACE(how);
        const CourseModule& m = session().module;
        EXPECT_EQ(m.moduleType + "|" + m.folderName + "|" + m.modTitle + "|" + m.ModuleFolder,
                  "Lesson|My_Course|Sample Lesson|" + folder.string());
        ASSERT_FALSE(m.pages.empty());
        EXPECT_EQ(m.pages[0].title, "Welcome");
        EXPECT_TRUE(session().ModuleLoaded);
        session().ResetModule();
        const auto entries = listModuleFolders(workspace.string());
        ASSERT_EQ(entries, std::vector<std::string>{"My_Course (L)"});
        ASSERT_TRUE(OpenModuleEntry(session(), entries[0]));
    }
}

TEST_F(WorkspaceTest, NewModuleFolderThatCannotBeMadeChangesNothing) {
    session().module.modTitle = "Open module";
    EXPECT_FALSE(NewModuleFolder(session(), "Evaluation")); // cancelled
    EXPECT_EQ(session().NewModuleType, "Evaluation");
    EXPECT_TRUE(fs::is_empty(workspace));

    fs::remove_all(install / "Templates" / "Survey");
    prompt.type("S1");
    EXPECT_FALSE(NewModuleFolder(session(), "Survey"));
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "Error");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Critical);
    EXPECT_NE(prompt.messages[0].text.find((install / "Templates" / "Survey").string()),
              std::string::npos);
    EXPECT_FALSE(fs::exists(workspace / "S1"));

    // A file of the chosen name is never touched.
    writeBytes(workspace / "Taken", "notes");
    prompt.type("Taken");
    EXPECT_FALSE(NewModuleFolder(session(), "Lesson"));
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[1].title, "Error");
    EXPECT_EQ(readBytes(workspace / "Taken"), "notes");
    EXPECT_EQ(session().module.modTitle, "Open module");
}

TEST_F(WorkspaceTest, SaveAsCopiesTheFolderAndRewritesContentPaths) {
    prompt.type("Course1");
    ASSERT_TRUE(NewModuleFolder(session(), "Lesson"));
    CourseModule& m = session().module;
    const auto image = [&](const char* folder) {
        return (workspace / folder / "images" / "a.gif").string();
    };
    m.pages[0].content = "<IMG src=\"" + image("Course1") + "\">";
    m.questions[0].questionText = m.pages[0].content;
    m.questions[0].rationale = image("Course1");
    m.glossary[0].definition = image("Course1");
    EXPECT_FALSE(SaveModuleAs(session())); // cancelled

    prompt.type("Copy1");
    ASSERT_TRUE(SaveModuleAs(session()));
    EXPECT_EQ(prompt.asked.back().title, "New Lesson Folder");
    EXPECT_TRUE(fs::is_regular_file(workspace / "Copy1" / "lessonframeset.html"));
    EXPECT_TRUE(fs::is_directory(workspace / "Course1"));
    EXPECT_EQ(m.folderName, "Copy1");
    EXPECT_EQ(m.ModuleFolder, (workspace / "Copy1").string());
    EXPECT_EQ(session().StylesheetPath, (workspace / "Copy1" / "css" / "camstyle.css").string());
    EXPECT_EQ(m.pages[0].content, "<IMG src=\"" + image("Copy1") + "\">");
    EXPECT_EQ(m.questions[0].questionText, m.pages[0].content);
    EXPECT_EQ(m.questions[0].rationale, image("Course1"));
    EXPECT_EQ(m.glossary[0].definition, image("Course1"));

    // The module's folder vanished under it: the copy fails, the module still points home.
    fs::remove_all(workspace / "Copy1");
    prompt.type("Copy2");
    EXPECT_FALSE(SaveModuleAs(session()));
    EXPECT_EQ(m.folderName, "Copy1");
    EXPECT_EQ(m.ModuleFolder, (workspace / "Copy1").string());
    EXPECT_FALSE(fs::exists(workspace / "Copy2"));
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, "Error");
}

TEST_F(WorkspaceTest, TypeDetectionByFramesetFileInOrderAndTheListing) {
    const std::pair<const char*, const char*> folders[] = {{"Both", " (L)"},       {"Pool", " (E)"},
                                                           {"PoolSurvey", " (E)"}, {"Surv", " (S)"},
                                                           {"Plain", ""},          {"Fake", ""}};
    for (const char* f : {"Both/poolframeset.html", "Both/lessonframeset.html",
                          "Pool/poolframeset.html", "PoolSurvey/surveyframeset.html",
                          "PoolSurvey/poolframeset.html", "Surv/surveyframeset.html"})
        writeBytes(workspace / f, "");
    fs::create_directories(workspace / "Plain");
    fs::create_directories(workspace / "Fake" / "lessonframeset.html"); // a folder, not a file
    for (const auto& [folder, suffix] : folders)
        EXPECT_EQ(moduleTypeSuffix((workspace / folder).string()), suffix) << folder;

    // The listing sorts by name and skips folders without a frameset file.
    fs::remove_all(workspace);
    for (const char* f : {"beta/lessonframeset.html", "Alpha/surveyframeset.html",
                          "gamma/poolframeset.html", "loose.html", "lessonframeset.html"})
        writeBytes(workspace / f, "");
    fs::create_directories(workspace / "Named (L)");
    EXPECT_EQ(listModuleFolders(workspace.string()),
              (std::vector<std::string>{"Alpha (S)", "beta (L)", "gamma (E)"}));
    EXPECT_EQ(countSubfolders(workspace.string()), 4u);
    EXPECT_TRUE(listModuleFolders((root / "nowhere").string()).empty());
    EXPECT_EQ(countSubfolders((root / "nowhere").string()), 0u);
}

TEST_F(WorkspaceTest, OpenEntryRefusesNoEntryAnUnknownTagAndAModuleThatCannotLoad) {
    EXPECT_FALSE(OpenModuleEntry(session(), ""));
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(shown(prompt.messages[0]),
              (Shown{"You must choose a folder or click \"Cancel\"", "Error", Icon::Critical}));
    EXPECT_FALSE(OpenModuleEntry(session(), "Thing (x)"));
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(prompt.messages[1].text, "No Module is in memory");
    EXPECT_EQ(moduleTypeForTag("(l)") + moduleTypeForTag("(e)") + moduleTypeForTag("(s)"),
              "LessonEvaluationSurvey");

    writeBytes(workspace / "Broken" / "surveyframeset.html", "");
    EXPECT_FALSE(OpenModuleEntry(session(), "Broken (S)"));
    ASSERT_EQ(prompt.messages.size(), 3u);
    EXPECT_EQ(prompt.messages[2].title, "Error");
    EXPECT_NE(prompt.messages[2].text.find("inc_Objectives.js"), std::string::npos);
}

} // namespace
} // namespace lumora::test
