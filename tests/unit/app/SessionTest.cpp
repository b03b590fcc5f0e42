// The session's load and save over the staged templates: a new module loads, saves and reloads
// unchanged, and a save tells the author when the learner's progress could outgrow an LMS.
#include "AppFixture.h"

#include "app/Workspace.h"
#include "storage/SuspendData.h"

namespace lumora::test {
namespace {

using SessionTest = AppTest;

// What the author edits, with content in editor form.
std::string describe(const CourseModule& m) {
    std::string d = m.modTitle + "|" + m.copyright + "|" + m.useSCORM + "|" +
                    m.shuffleEvalQuestions + "|" + std::to_string(m.intNumQuestions) + "\n";
    for (const LessonPage& p : m.pages)
        d += "page " + p.fileName + "|" + p.title + "|" + p.content + "\n";
    for (const GlossaryTerm& t : m.glossary)
        d += "term " + t.id + "|" + t.term + "|" + t.definition + "\n";
    for (const QAndAItem& q : m.questions) {
        d += "item " + q.id + "|" + q.questionType + "|" + q.questionText + "|" + q.rationale +
             "|" + q.shuffleDistractors + "\n";
        for (const QuestionOption& o : q.options)
            d += "  option " + o.correct + "|" + o.txtValue + "|" + o.txtDisplay + "|" +
                 o.incorrectRationale + "\n";
    }
    return d;
}

TEST_F(SessionTest, NewModulesFromEveryTemplateSaveAndReloadUnchanged) {
    stageTemplates();
    for (const char* type : {kLesson, kEvaluation, kSurvey}) {
        SCOPED_TRACE(type);
        prompt.type(std::string("Course ") + type);
        ASSERT_TRUE(NewModuleFolder(session(), type));
        const fs::path folder = session().module.ModuleFolder;
        const auto before = folderFiles(folder, "", false);
        const std::string loaded = describe(session().module);
        ASSERT_NE(session().module.modTitle, "");

        session().saveForScorm(session().module.useSCORM == "true");
        EXPECT_FALSE(session().ModuleChanged);
        EXPECT_EQ(folderFiles(folder, "", false), before);

        const std::string name = session().module.folderName;
        session().ResetModule();
        session().module.moduleType = type;
        session().module.folderName = name;
        ASSERT_TRUE(session().LoadModule());
        EXPECT_EQ(describe(session().module), loaded);
        // The import files now name the module, not the template.
        const std::string manifest = readBytes(folder / "imsmanifest.xml");
        EXPECT_EQ(manifest.find("LUM-TEMPLATE"), std::string::npos);
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
