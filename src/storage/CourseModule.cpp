#include "storage/CourseModule.h"

#include "content/Validation.h"

namespace lumora {

ColorScheme defaultColorScheme() {
    ColorScheme c;
    c.aLink = "#000099";
    c.aVisited = "#336699";
    c.contentBackground = "#FFFFFF";
    c.titleColor = "#FFFFFF";
    c.titleBackground = "#336699";
    c.pageNumberBackground = "#FFCC66";
    c.pageNameBackground = "#FFFFCC";
    c.pageNumberColor = "#000000";
    c.pageNameColor = "#000000";
    c.copyRightColor = "#666666";
    return c;
}

DefaultRecords makeDefaultRecords(int currentYear) {
    DefaultRecords d;
    d.option = QuestionOption{"false", "0", "Sample Option", ""};
    d.item.questionType = "radio";
    d.item.shuffleDistractors = "false";
    d.item.options = {d.option};
    d.colors = defaultColorScheme();

    CourseModule& m = d.module;
    m.copyright = "\xC2\xA9 " + std::to_string(currentYear);
    m.useSCORM = "true";
    m.shuffleEvalQuestions = "false";
    m.pages = {d.page};
    m.glossary = {d.term};
    m.questions = {d.item};
    m.colors = d.colors;
    m.savedColors = d.colors;

    QAndAItem& s = d.surveyQuestion;
    s.questionType = "radio";
    s.questionText = "Rate how well you met the objective: <i>Enter Learning Objective Here</i>.";
    s.shuffleDistractors = "false";
    s.options.resize(6);
    for (int value = 1; value <= 5; ++value) {
        QuestionOption& o = s.options[static_cast<std::size_t>(value - 1)];
        o.correct = "true";
        o.txtValue = std::to_string(value);
        o.txtDisplay = surveyScaleWord(static_cast<std::int16_t>(value));
    }
    return d;
}

std::string framesetFileFor(const std::string& moduleType) {
    if (moduleType == kLesson)
        return "lessonframeset.html";
    if (moduleType == kEvaluation)
        return "poolframeset.html";
    if (moduleType == kSurvey)
        return "surveyframeset.html";
    return "";
}

} // namespace lumora
