// The session's load and save over the staged templates: a new module saves and reloads
// unchanged, and a save tells the author when the learner's progress could outgrow an LMS.
#include "AppFixture.h"

#include "app/Workspace.h"
#include "storage/SuspendData.h"

namespace lumora::test {
namespace {

using SessionTest = AppTest;

// A template is what the writer writes: a new module's first save changes none of its files
// (but the import files, which name the module), and after a reload the next save neither.
TEST_F(SessionTest, NewModulesFromEveryTemplateSaveAndReloadUnchanged) {
    stageTemplates();
    for (const char* type : {kLesson, kEvaluation, kSurvey}) {
        SCOPED_TRACE(type);
        prompt.type(std::string("Course ") + type);
        ASSERT_TRUE(NewModuleFolder(session(), type));
        const fs::path folder = session().module.ModuleFolder;
        const auto before = folderFiles(folder, "", false);
        ASSERT_NE(session().module.modTitle, "");

        session().saveForScorm(session().module.useSCORM == "true");
        EXPECT_FALSE(session().ModuleChanged);
        EXPECT_EQ(folderFiles(folder, "", false), before);
        EXPECT_EQ(readBytes(folder / "imsmanifest.xml").find("LUM-TEMPLATE"), std::string::npos);

        ASSERT_TRUE(reopen(session()));
        session().markChanged();
        session().saveForScorm(session().module.useSCORM == "true");
        EXPECT_EQ(folderFiles(folder, "", false), before);
    }
}

TEST_F(SessionTest, SaveWarnsWhenProgressCouldOutgrowTheLms) {
    stageTemplates();
    prompt.type("Big Pool");
    ASSERT_TRUE(NewModuleFolder(session(), kEvaluation));
    CourseModule& m = session().module;
    const QAndAItem sample = m.questions.front();
    m.questions.assign(1500, sample);
    m.intNumQuestions = 1500;
    ASSERT_GT(suspendDataWorstCase(m), kSuspendDataLimit);

    prompt.messages.clear();
    session().saveForScorm(false); // no LMS: nothing to warn about
    for (const auto& shown : prompt.messages)
        EXPECT_NE(shown.title, "Warning");

    prompt.messages.clear();
    session().saveForScorm(true);
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, "Warning");
    EXPECT_EQ(prompt.last()->icon, Icon::Exclamation);
    EXPECT_NE(prompt.last()->text.find("only 4096"), std::string::npos);
    // The warning does not stop the save.
    EXPECT_FALSE(session().ModuleChanged);
    EXPECT_NE(readBytes(fs::path(m.ModuleFolder) / "scripts" / "inc_Questions.js")
                  .find("var intNumQuestions = 1500;"),
              std::string::npos);
}

} // namespace
} // namespace lumora::test
