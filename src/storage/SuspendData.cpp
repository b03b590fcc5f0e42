// Worst-case length of the player's progress encoding; mirrors scripts/player-lms.js and
// player-quiz.js of the templates.
#include "storage/SuspendData.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace lumora {

namespace {

std::size_t bitChars(std::size_t bits) {
    return (bits + 5) / 6;
}

bool isWritten(const QAndAItem& item) {
    return !item.questionText.empty() && !item.options.empty() &&
           !item.options.front().txtDisplay.empty();
}

std::size_t writtenOptions(const QAndAItem& item) {
    return static_cast<std::size_t>(
        std::count_if(item.options.begin(), item.options.end(),
                      [](const QuestionOption& o) { return !o.txtDisplay.empty(); }));
}

std::vector<std::size_t> optionCounts(const CourseModule& module) {
    std::vector<std::size_t> counts;
    for (const auto& item : module.questions) {
        if (isWritten(item)) {
            counts.push_back(writtenOptions(item));
        }
    }
    return counts;
}

std::size_t evaluationWorstCase(const CourseModule& module) {
    auto counts = optionCounts(module);
    const std::size_t width = suspendDigits(counts.size());
    // The player asks intNumQuestions of the pool (all when it is not positive); the longest
    // string comes from the questions with the most options.
    std::size_t asked = counts.size();
    if (module.intNumQuestions > 0) {
        asked = std::min(asked, static_cast<std::size_t>(module.intNumQuestions));
    }
    std::sort(counts.begin(), counts.end(), std::greater<>());
    std::size_t length = 2;
    for (std::size_t i = 0; i < asked; ++i) {
        length += width + bitChars(counts[i]);
    }
    return length;
}

std::size_t surveyWorstCase(const CourseModule& module) {
    std::size_t length = 2;
    for (std::size_t options : optionCounts(module)) {
        length += suspendDigits(options + 1);
    }
    return length;
}

} // namespace

std::size_t suspendDigits(std::size_t count) {
    std::size_t digits = 1;
    for (std::size_t cap = 64; cap < count; cap *= 64) {
        ++digits;
    }
    return digits;
}

std::size_t suspendDataWorstCase(const CourseModule& module) {
    if (module.moduleType == kLesson) {
        return 1 + bitChars(module.pages.size());
    }
    if (module.moduleType == kEvaluation) {
        return evaluationWorstCase(module);
    }
    if (module.moduleType == kSurvey) {
        return surveyWorstCase(module);
    }
    return 0;
}

} // namespace lumora
