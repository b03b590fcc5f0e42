// Which texts break the string literals of the module scripts as the writer writes them.
#include "content/ScriptLiterals.h"

#include "support/ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::ScriptedPrompt;

TEST(ScriptLiterals, ALiteralBreaksOnlyWhereTheScriptWouldStop) {
    const struct {
        const char* literal;
        bool breaks;
    } cases[] = {
        {"", false},
        {"Say \\\"hi\\\" </script> <b>x</b> \xF0\x9F\x98\x80", false},
        {"C:\\temp \\d \\' \\\\", false}, // identity escapes and an escaped backslash
        {"\\x41 \\u0041 \\u{1F600}", false},
        {"ends in \\", true},
        {"a\\\\\\\"", false}, // \\ then \": a backslash and a quote
        {"a\\\\\"", true},    // \\ then a bare quote
        {"bare \" quote", true},
        {"\\x4", true},
        {"\\u004", true},
        {"\\u{}", true},
        {"\\u{12", true},
        {"two\r\nlines", true},
        {"lone\nfeed", true},
        {"continued\\\r\nline", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(breaksStringLiteral(c.literal), c.breaks) << c.literal;
}

// The texts are named as the author knows them, in file order, and a save warns with them.
TEST(ScriptLiterals, TheBreakingTextsOfAModuleAreNamed) {
    const ContentPaths paths{"/ws/course", "/opt/lumora"};
    DefaultRecords defaults = makeDefaultRecords(2024);
    CourseModule m = defaults.module;
    m.moduleType = kLesson;
    m.modTitle = "C:\\";
    m.copyright = "fine \"quoted\" \\n";
    m.pages = {{"", "Intro", ""}, {"", "ends\\", ""}};
    m.glossary = {{"0", "no definition, not written\\", " "}, {"1", "ok", "two\r\nlines \\u00"}};
    m.questions = {defaults.item, defaults.item};
    m.questions[0].questionText = "Why\\";
    m.questions[0].options[0].txtDisplay = "a \\x";
    m.questions[0].rationale = "one\nline";
    m.questions[1].rationale = "not written: the item has no text\\";
    EXPECT_EQ(textsBreakingScripts(m, paths),
              (std::vector<std::string>{"Module Title", "Page Title of page 2",
                                        "Definition of term 2", "Q&A item 1",
                                        "Option 1 of Q&A item 1", "Rationale of Q&A item 1"}));

    m.moduleType = kEvaluation;
    m.questions[0].options[0].incorrectRationale = "\\";
    EXPECT_EQ(textsBreakingScripts(m, paths),
              (std::vector<std::string>{"Module Title", "Question 1", "Option 1 of question 1",
                                        "Feedback of option 1 of question 1",
                                        "Rationale of question 1"}));

    ScriptedPrompt prompt;
    m.questions = {defaults.item};
    warnAboutBreakingTexts(m, paths, prompt);
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(prompt.messages[0].title, "Warning");
    EXPECT_EQ(prompt.messages[0].icon, Icon::Exclamation);
    EXPECT_NE(prompt.messages[0].text.find("browser:\r\n     Module Title\r\nPlease change"),
              std::string::npos);
    m.modTitle = "C:\\\\";
    warnAboutBreakingTexts(m, paths, prompt);
    EXPECT_EQ(prompt.messages.size(), 1u);
}

} // namespace
} // namespace lumora
