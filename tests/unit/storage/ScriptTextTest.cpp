// The escapes and the value cutter every module file line goes through.
#include "storage/ScriptText.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(ScriptText, QuotesAreTheOnlyCharacterEscaped) {
    EXPECT_EQ(escapeQuotes("Say \"hi\""), "Say \\\"hi\\\"");
    // Backslashes, tabs and line breaks go into the file as they are.
    EXPECT_EQ(escapeQuotes("a\\b\tc\r\nd"), "a\\b\tc\r\nd");
    EXPECT_EQ(unescapeQuotes("Say \\\"hi\\\""), "Say \"hi\"");
    EXPECT_EQ(unescapeQuotes("a\\b"), "a\\b");
}

TEST(ScriptText, DefinitionsTurnOnlyCrLfPairsIntoBackslashN) {
    EXPECT_EQ(escapeDefinition("a\r\nb"), "a\\nb");
    EXPECT_EQ(escapeDefinition("\"x\"\r\n\r\ny"), "\\\"x\\\"\\n\\ny");
    // Lone CR or LF stay what they are.
    EXPECT_EQ(escapeDefinition("a\rb\nc"), "a\rb\nc");
}

TEST(ScriptText, ExtractValueRemovesEveryPrefixAndCutsTheEnd) {
    EXPECT_EQ(ExtractValue("var useSCORM = true;", "var useSCORM = ", 1), "true");
    // No trimming: a trailing blank is cut in place of the semicolon.
    EXPECT_EQ(ExtractValue("var useSCORM = true; ", "var useSCORM = ", 1), "true;");
    EXPECT_EQ(ExtractValue("x = \"v\");", "x = \"", 3), "v");
    // The prefix matches anywhere, and every occurrence goes.
    EXPECT_EQ(ExtractValue("  P=P=abc;", "P=", 1), "  abc");
    EXPECT_EQ(ExtractValue("no prefix here;", "var useSCORM = ", 1), "");
}

TEST(ScriptText, ExtractValueOfAShortLineIsEmpty) {
    EXPECT_EQ(ExtractValue("var modTitle = \"", "var modTitle = \"", 2), "");
    EXPECT_EQ(ExtractValue("var modTitle = \";", "var modTitle = \"", 2), "");
    EXPECT_EQ(ExtractValue("var modTitle = \"a;", "var modTitle = \"", 2), "");
    EXPECT_EQ(ExtractValue("var modTitle = \"ab;", "var modTitle = \"", 2), "a");
}

TEST(ScriptText, EnsureHashAddsOnlyAMissingHash) {
    EXPECT_EQ(EnsureHash("FF0000"), "#FF0000");
    EXPECT_EQ(EnsureHash("#FF0000"), "#FF0000");
    EXPECT_EQ(EnsureHash("A#B"), "A#B");
    EXPECT_EQ(EnsureHash(""), "#");
}

TEST(ScriptText, PageFileNamesFollowThePosition) {
    EXPECT_EQ(pageFileName(0), "page0.html");
    EXPECT_EQ(pageFileName(12), "page12.html");
}

} // namespace
} // namespace lumora
