// The pre-save check of correct options, the survey's rating words and the flag conversions
// between option records and check boxes.
#include "content/Validation.h"

#include "base/TextUtil.h"

namespace lumora {

int countCorrectOptions(const QAndAItem& item) {
    int n = 0;
    for (const QuestionOption& option : item.options)
        if (toLowerAscii(option.correct) == "true")
            ++n;
    return n;
}

bool isQuestionValid(const CourseModule& module, std::size_t position) {
    if (position >= module.questions.size())
        return false;
    const QAndAItem& item = module.questions[position];
    const int n = countCorrectOptions(item);
    const std::string type = toLowerAscii(item.questionType);
    if (type == "radio")
        return n == 1;
    if (type == "checkbox")
        return n >= 1;
    return false; // an unknown type can never be answered correctly
}

std::string invalidQuestionsMessage(const CourseModule& module) {
    std::string numbers;
    for (std::size_t p = 0; p < module.questions.size(); ++p) {
        if (isQuestionValid(module, p))
            continue;
        if (!numbers.empty())
            numbers += ", ";
        numbers += std::to_string(p + 1);
    }
    if (numbers.empty())
        return {};
    return std::string("The following questions have an inappropriate number of correct "
                       "options.     ") +
           kCrLf + "Please revisit the following questions:" + kCrLf + "     " + numbers;
}

void validateQuestions(const CourseModule& module, Prompt& prompt) {
    // Only a warning: the save goes on whatever the author answers.
    const std::string text = invalidQuestionsMessage(module);
    if (!text.empty())
        prompt.message(text, "Error", Icon::Exclamation, Buttons::OK);
}

std::string surveyScaleWord(std::int16_t rating) {
    switch (rating) {
    case 1:
        return "Excellent";
    case 2:
        return "Good";
    case 3:
        return "Average";
    case 4:
        return "Below Average";
    case 5:
        return "Poor";
    default:
        return "";
    }
}

bool flagToBool(const std::string& flag) {
    return flag == "true";
}

std::string checkStateToFlag(int state) {
    return state == 1 ? "true" : "false";
}

} // namespace lumora
