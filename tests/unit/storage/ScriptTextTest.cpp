// The escapes and the value cutter every module file line goes through.
#include "storage/ScriptText.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(ScriptText, QuotesAreTheOnlyCharacterEscapedAndDefinitionsTurnCrLfIntoBackslashN) {
    EXPECT_EQ(escapeQuotes("Say \"hi\""), "Say \\\"hi\\\"");
    // Backslashes, tabs and line breaks go into the file as they are.
    EXPECT_EQ(escapeQuotes("a\\b\tc\r\nd"), "a\\b\tc\r\nd");
    EXPECT_EQ(unescapeQuotes("Say \\\"hi\\\""), "Say \"hi\"");
    EXPECT_EQ(unescapeQuotes("a\\b"), "a\\b");
    EXPECT_EQ(escapeDefinition("\"x\"\r\n\r\ny"), "\\\"x\\\"\\n\\ny");
    EXPECT_EQ(escapeDefinition("a\rb\nc"), "a\rb\nc"); // lone CR or LF stay
}

TEST(ScriptText, ExtractValueRemovesEveryPrefixAndCutsTheEnd) {
    const struct {
        const char* line;
        const char* prefix;
        std::size_t cut;
        const char* value;
    } cases[] = {
        {"var useSCORM = true;", "var useSCORM = ", 1, "true"},
        // No trimming: a trailing blank is cut in place of the semicolon.
        {"var useSCORM = true; ", "var useSCORM = ", 1, "true;"},
        {"x = \"v\");", "x = \"", 3, "v"},
        // The prefix matches anywhere, and every occurrence goes.
        {"  P=P=abc;", "P=", 1, "  abc"},
        {"no prefix here;", "var useSCORM = ", 1, ""},
        // A line no longer than the prefix and the cut gives nothing.
        {"var modTitle = \"", "var modTitle = \"", 2, ""},
        {"var modTitle = \"a;", "var modTitle = \"", 2, ""},
        {"var modTitle = \"ab;", "var modTitle = \"", 2, "a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ExtractValue(c.line, c.prefix, c.cut), c.value) << c.line;
}

} // namespace
} // namespace lumora
