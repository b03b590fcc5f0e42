// The correct-option check with its message, the survey scale, the flag conversions and the
// colour number conversions.
#include "content/Validation.h"
#include "content/Colors.h"

#include "support/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumora {
namespace {

QAndAItem question(const std::string& type, const std::vector<std::string>& flags) {
    QAndAItem item;
    item.questionType = type;
    item.questionText = "text";
    for (const std::string& flag : flags)
        item.options.push_back({flag, "0", "option", ""});
    return item;
}

bool valid(const QAndAItem& item) {
    CourseModule module;
    module.questions = {item};
    return isQuestionValid(module, 0);
}

TEST(QuestionValidation, RadioNeedsExactlyOneCheckboxAtLeastOne) {
    EXPECT_TRUE(valid(question("radio", {"false", "true", "false"})));
    EXPECT_FALSE(valid(question("radio", {"false", "false"})));
    EXPECT_FALSE(valid(question("radio", {"true", "true"})));
    EXPECT_TRUE(valid(question("checkbox", {"true", "true", "true"})));
    EXPECT_FALSE(valid(question("checkbox", {"false", "false"})));
    // Types and flags compare without regard to case; any other type is always reported.
    EXPECT_TRUE(valid(question("RADIO", {"TRUE"})));
    EXPECT_TRUE(valid(question("CheckBox", {"True", "false"})));
    EXPECT_FALSE(valid(question("select", {"true"})));
    EXPECT_FALSE(valid(question("", {"true"})));
}

TEST(QuestionValidation, MessageListsInvalidNumbersWordForWord) {
    CourseModule module;
    module.questions = {question("radio", {}), question("radio", {"true"}),
                        question("checkbox", {"false"})};
    EXPECT_EQ(invalidQuestionsMessage(module),
              "The following questions have an inappropriate number of correct options.     \r\n"
              "Please revisit the following questions:\r\n"
              "     1, 3");
    module.questions = {question("radio", {"true"})};
    EXPECT_EQ(invalidQuestionsMessage(module), "");
}

TEST(QuestionValidation, ValidateShowsTheWarningOnlyWhenNeeded) {
    testing::ScriptedPrompt prompt;
    CourseModule module;
    module.questions = {question("radio", {"true"}), question("radio", {"true", "true"})};
    validateQuestions(module, prompt);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "Error");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Exclamation);
    EXPECT_EQ(prompt.messages[0].buttons, Buttons::OK);
    EXPECT_TRUE(prompt.messages[0].text.ends_with("\r\n     2"));

    module.questions.pop_back();
    validateQuestions(module, prompt);
    EXPECT_EQ(prompt.messages.size(), 1u);
}

TEST(SurveyScale, FiveWordsAndNothingElse) {
    const std::vector<std::string> words{"",     "Excellent", "Good", "Average", "Below Average",
                                         "Poor", ""};
    for (int rating = 0; rating <= 6; ++rating)
        EXPECT_EQ(surveyScaleWord(static_cast<std::int16_t>(rating)),
                  words[static_cast<std::size_t>(rating)]);
    EXPECT_EQ(surveyScaleWord(-1), "");
}

TEST(Flags, OnlyExactTrueAndCheckedStateCount) {
    EXPECT_TRUE(flagToBool("true"));
    EXPECT_FALSE(flagToBool("TRUE"));
    EXPECT_FALSE(flagToBool(""));
    EXPECT_FALSE(flagToBool("1"));
    EXPECT_EQ(checkStateToFlag(1), "true");
    EXPECT_EQ(checkStateToFlag(0), "false");
    EXPECT_EQ(checkStateToFlag(2), "false");
    EXPECT_EQ(checkStateToFlag(-1), "false");
}

TEST(Colors, HexTextToColourNumber) {
    EXPECT_EQ(hexToColor("#FF0000"), 255);
    EXPECT_EQ(hexToColor("FF0000"), 255);
    EXPECT_EQ(hexToColor("#00ff00"), 0xFF00);
    EXPECT_EQ(hexToColor("#336699"), 0x996633);
    EXPECT_EQ(hexToColor("#F00"), 0);
    EXPECT_EQ(hexToColor(""), 0);
    EXPECT_EQ(hexToColor("##12#34#56"), 0x563412);
    // Non-digits count as 0 instead of failing; a multi-byte character is one character.
    EXPECT_EQ(hexToColor("#GZ00x1"), 0x010000);
    EXPECT_EQ(hexToColor("#\xC3\xA9"
                         "F0000"),
              15);
}

TEST(Colors, ColourNumberToHexText) {
    EXPECT_EQ(colorToHex(255), "#FF0000");
    EXPECT_EQ(colorToHex(0), "#000000");
    EXPECT_EQ(colorToHex(0x123456), "#563412");
    EXPECT_EQ(colorToHex(0x7F123456), "#563412"); // top digits are lost
    EXPECT_EQ(colorToHex(-1), "#FFFFFF");
    for (const char* hex : {"#336699", "#FFCC66", "#000099", "#0A0B0C"})
        EXPECT_EQ(colorToHex(hexToColor(hex)), hex);
}

} // namespace
} // namespace lumora
