// The correct-option check with its message, the flag conversions and the colour number
// conversions.
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

// Types and flags compare without regard to case; any other type is always reported.
TEST(QuestionValidation, RadioNeedsExactlyOneCheckboxAtLeastOne) {
    const struct {
        const char* type;
        std::vector<std::string> flags;
        bool valid;
    } cases[] = {
        {"radio", {"false", "true", "false"}, true},
        {"radio", {"false", "false"}, false},
        {"radio", {"true", "true"}, false},
        {"checkbox", {"true", "true", "true"}, true},
        {"checkbox", {"false", "false"}, false},
        {"RADIO", {"TRUE"}, true},
        {"CheckBox", {"True", "false"}, true},
        {"select", {"true"}, false},
        {"", {"true"}, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(valid(question(c.type, c.flags)), c.valid) << c.type << " " << c.flags.size();
}

// The warning lists the invalid questions' numbers word for word, and only when there are any.
TEST(QuestionValidation, ValidateListsTheInvalidNumbersOnlyWhenThereAreAny) {
    testing::ScriptedPrompt prompt;
    CourseModule module;
    module.questions = {question("radio", {}), question("radio", {"true"}),
                        question("checkbox", {"false"})};
    validateQuestions(module, prompt);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].text,
              "The following questions have an inappropriate number of correct options.     \r\n"
              "Please revisit the following questions:\r\n"
              "     1, 3");
    EXPECT_EQ(prompt.messages[0].title, "Error");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Exclamation);
    EXPECT_EQ(prompt.messages[0].buttons, Buttons::OK);

    module.questions = {question("radio", {"true"})};
    validateQuestions(module, prompt);
    EXPECT_EQ(prompt.messages.size(), 1u);
}

// A stored flag is true only as the exact text "true", as the writer writes it.
TEST(Flags, OnlyAnExactTrueCounts) {
    for (const char* flag : {"TRUE", "", "1"})
        EXPECT_FALSE(flagToBool(flag)) << flag;
    EXPECT_TRUE(flagToBool("true"));
    for (int state : {0, 2, -1})
        EXPECT_EQ(checkStateToFlag(state), "false") << state;
    EXPECT_EQ(checkStateToFlag(1), "true");
}

TEST(Colors, HexTextToColourNumberAndBack) {
    const std::pair<const char*, int> toNumber[] = {
        {"#FF0000", 255},
        {"FF0000", 255},
        {"#00ff00", 0xFF00},
        {"#336699", 0x996633},
        {"#F00", 0},
        {"", 0},
        {"##12#34#56", 0x563412},
        // Non-digits count as 0 instead of failing; a multi-byte character is one character.
        {"#GZ00x1", 0x010000},
        {"#\xC3\xA9"
         "F0000",
         15}};
    for (const auto& [hex, number] : toNumber)
        EXPECT_EQ(hexToColor(hex), number) << hex;
    const std::pair<int, const char*> toHex[] = {{255, "#FF0000"},
                                                 {0, "#000000"},
                                                 {0x123456, "#563412"},
                                                 {0x7F123456, "#563412"},
                                                 {-1, "#FFFFFF"}};
    for (const auto& [number, hex] : toHex) // the top digits are lost
        EXPECT_EQ(colorToHex(number), hex) << number;
    for (const char* hex : {"#336699", "#FFCC66", "#000099", "#0A0B0C"})
        EXPECT_EQ(colorToHex(hexToColor(hex)), hex);
}

} // namespace
} // namespace lumora
