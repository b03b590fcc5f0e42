// The worst-case length of the player's progress string, per module type.
#include "storage/SuspendData.h"

#include "storage/ModuleLoader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

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

TEST(SuspendDigits, GrowsAtPowersOfSixtyFour) {
    EXPECT_EQ(suspendDigits(0), 1u);
    EXPECT_EQ(suspendDigits(64), 1u);
    EXPECT_EQ(suspendDigits(65), 2u);
    EXPECT_EQ(suspendDigits(4096), 2u);
    EXPECT_EQ(suspendDigits(4097), 3u);
}

TEST(SuspendDataWorstCase, LessonIsOneLetterAndSixPagesPerCharacter) {
    auto m = module(kLesson);
    m.pages.resize(1);
    EXPECT_EQ(suspendDataWorstCase(m), 2u);
    m.pages.resize(6);
    EXPECT_EQ(suspendDataWorstCase(m), 2u);
    m.pages.resize(7);
    EXPECT_EQ(suspendDataWorstCase(m), 3u);
    m.pages.resize(50);
    EXPECT_EQ(suspendDataWorstCase(m), 10u);
}

TEST(SuspendDataWorstCase, EvaluationCountsTheAskedQuestionsWithTheMostOptions) {
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
}

TEST(SuspendDataWorstCase, EvaluationSkipsWhatTheWriterSkips) {
    auto m = module(kEvaluation);
    m.questions = {item(3), item(3, ""), item(0)};
    auto gap = item(3);
    gap.options[1].txtDisplay.clear(); // an empty option is not written
    m.questions.push_back(gap);
    auto noFirst = item(3);
    noFirst.options[0].txtDisplay.clear(); // no first option: the item is not written
    m.questions.push_back(noFirst);
    EXPECT_EQ(suspendDataWorstCase(m), 2u + 2 + 2);
}

TEST(SuspendDataWorstCase, EvaluationPositionsWidenWithALargePool) {
    auto m = module(kEvaluation);
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

TEST(SuspendDataWorstCase, AModuleCanOutgrowTheLimit) {
    auto m = module(kEvaluation);
    m.questions.assign(500, item(40));
    m.intNumQuestions = 500;
    EXPECT_GT(suspendDataWorstCase(m), kSuspendDataLimit);
    EXPECT_EQ(suspendDataWorstCase(module("Unknown")), 0u);
}

// The templates' sample modules, read by the loader. The player tests check that the strings
// the player really produces for them stay within these same numbers.
TEST(SuspendDataWorstCase, SampleTemplates) {
    namespace fs = std::filesystem;
    const fs::path templates = fs::path(LUMORA_SOURCE_DIR) / "share" / "Templates";
    const fs::path work =
        fs::temp_directory_path() / ("lumora-suspend-" + std::to_string(::getpid()));
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
    fs::remove_all(work);
}

} // namespace
} // namespace lumora
