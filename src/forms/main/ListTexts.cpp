// List texts of the main form.
#include "forms/main/ListTexts.h"

#include "base/TextUtil.h"
#include "content/Normalize.h"
#include "content/Validation.h"

namespace lumora {

std::string getNumberedPageText(const CourseModule& module, std::size_t index) {
    if (index >= module.pages.size())
        return {};
    const std::string& title = module.pages[index].title;
    return index == 0 ? title : std::to_string(index) + ". " + title;
}

std::string getNumberedQuestionText(const CourseModule& module, std::size_t index) {
    if (index >= module.questions.size())
        return {};
    return std::to_string(index + 1) + ". " + stripParagraphs(module.questions[index].questionText);
}

std::vector<std::string> questionListTexts(const CourseModule& module) {
    std::vector<std::string> texts;
    for (std::size_t i : listedQuestions(module))
        texts.push_back(getNumberedQuestionText(module, i));
    return texts;
}

std::vector<std::size_t> listedQuestions(const CourseModule& module) {
    std::vector<std::size_t> items;
    for (std::size_t i = 0; i < module.questions.size(); ++i)
        if (!module.questions[i].questionText.empty())
            items.push_back(i);
    return items;
}

std::string definitionForField(const std::string& definition) {
    return replaceAll(replaceAll(definition, "\r\n", "\n"), "\\n", "\n");
}

std::string flagOfCheckBox(bool checked) {
    return checkStateToFlag(checked ? 1 : 0);
}

std::string mainCaption(const CourseModule& module) {
    return "Lumora: " + module.modTitle;
}

std::string pageTitleFromField(const std::string& text) {
    return replaceAll(text, "\r\n", "");
}

bool resolutionTooLow(bool maximised, int screenHeightPixels) {
    return maximised && screenHeightPixels < 480;
}

} // namespace lumora
