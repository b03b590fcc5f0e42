// The worst-case length of the player's progress string, per module type.
#include "storage/SuspendData.h"

#include "storage/ModuleLoader.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace lumora {
namespace {

QAndAItem item(std::size_t options, const std::string& text = "Question") {
    QAndAItem q;
    q.questionType = "radio";
    q.questionText = text;
    for (std::size_t i = 0; i < options; ++i) {
        q.options.push_back({"false", std::to_string(i), "Option " + std::to_string(i), ""});
    }
    return q;
}

CourseModule module(const char* type) {
    CourseModule m;
    m.moduleType = type;
    return m;
}

TEST(SuspendDataWorstCase, DigitsGrowAtPowersOfSixtyFourAndALessonHoldsSixPagesPerCharacter) {
    for (auto [count, digits] :
         {std::pair<std::size_t, std::size_t>{0, 1}, {64, 1}, {65, 2}, {4096, 2}, {4097, 3}})
        EXPECT_EQ(suspendDigits(count), digits) << count;
    auto m = module(kLesson);
    for (auto [pages, length] :
         {std::pair<std::size_t, std::size_t>{1, 2}, {6, 2}, {7, 3}, {50, 10}}) {
        m.pages.resize(pages);
        EXPECT_EQ(suspendDataWorstCase(m), length) << pages;
    }
}

TEST(SuspendDataWorstCase, EvaluationCountsTheAskedQuestionsWithTheMostOptionsThatAreWritten) {
    auto m = module(kEvaluation);
    m.questions = {item(2), item(7), item(3)};
    m.intNumQuestions = 2;
    // "E" + phase, then per question one position digit and its option bits: 7 options need
    // two characters, 3 options one.
    EXPECT_EQ(suspendDataWorstCase(m), 2u + (1 + 2) + (1 + 1));
    m.intNumQuestions = 0; // not positive: the whole pool is asked
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 3 + 2 + 2);
    m.intNumQuestions = 40; // larger than the pool: capped by the script footer
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 3 + 2 + 2);

    // What the writer skips does not count.
    m.questions = {item(3), item(3, ""), item(0)};
    auto gap = item(3);
    gap.options[1].txtDisplay.clear(); // an empty option is not written
    m.questions.push_back(gap);
    auto noFirst = item(3);
    noFirst.options[0].txtDisplay.clear(); // no first option: the item is not written
    m.questions.push_back(noFirst);
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 2 + 2);

    // Positions widen past 64 questions.
    m.questions.assign(65, item(4));
    m.intNumQuestions = 65;
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 65 * (2 + 1));
}

TEST(SuspendDataWorstCase, SurveyHasOneRatingPerQuestion) {
    auto m = module(kSurvey);
    m.questions = {item(5), item(5), item(0)};
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 1 + 1);
    m.questions.push_back(item(64)); // 65 values with "no rating": two digits
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 1 + 1 + 2);
}

// The templates' sample modules, read by the loader. The player tests check that the strings
// the player really produces for them stay within these same numbers.
TEST(SuspendDataWorstCase, SampleTemplates) {
    namespace fs = std::filesystem;
    const fs::path templates = fs::path(LUMORA_SOURCE_DIR) / "share" / "Templates";
    const testing::TempDir temp("suspend");
    const fs::path work = temp / "module";
    const std::pair<const char*, std::size_t> expected[] = {
        {kLesson, 2}, {kEvaluation, 8}, {kSurvey, 5}};
    for (const auto& [type, length] : expected) {
        fs::remove_all(work);
        fs::copy(templates / type, work, fs::copy_options::recursive);
        CourseModule m = makeDefaultRecords(2025).module;
        m.moduleType = type;
        m.ModuleFolder = work.string();
        m.templateFolder = (templates / type).string();
        m.framesetFile = framesetFileFor(type);
        ContentPaths paths;
        paths.moduleFolder = work.string();
        paths.installFolder = (templates.parent_path()).string();
        LoadModuleFiles(m, paths);
        EXPECT_EQ(suspendDataWorstCase(m), length) << type;
    }
}

} // namespace
} // namespace lumora
