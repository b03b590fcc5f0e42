// The replace-all primitive under every content rewrite: scanning rules and boundaries.
#include "storage/TextUtil.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora {
namespace {

TEST(ReplaceAll, ScansLeftToRightWithoutRescanningInsertedText) {
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("aab", "ab", "ba"), "aba"); // same length, rewritten in place
    EXPECT_EQ(replaceAll("xx", "x", "xx"), "xxxx");
    EXPECT_EQ(replaceAll("<A><A>", "<A>", ""), "");
    EXPECT_EQ(replaceAll("<<A>>", "<A>", "<A>"), "<<A>>");
}

TEST(ReplaceAll, HandlesEdgesOfTheText) {
    EXPECT_EQ(replaceAll("", "a", "b"), "");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("ab", "abc", "x"), "ab");
    EXPECT_EQ(replaceAll("abc", "abc", "x"), "x");
    EXPECT_EQ(replaceAll("xab", "ab", "!"), "x!");
    EXPECT_EQ(replaceAll("abx", "ab", "!"), "!x");
    EXPECT_EQ(replaceAll("a<", "<b", "!"), "a<"); // first character at the very end
    EXPECT_EQ(replaceAll("<p<p<pa", "<pa", "-"), "<p<p-");
    EXPECT_EQ(replaceAll(std::string("a\0b\0", 4), std::string_view("\0b", 2), "+"),
              std::string("a+\0", 3));
}

} // namespace
} // namespace lumora
