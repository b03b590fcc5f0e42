// The replace-all primitive under every content rewrite: scanning rules and boundaries.
#include "base/TextUtil.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

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

// The plain definition: find from the left, append the replacement, continue after the match.
std::string replaceAllNaively(const std::string& text, const std::string& from,
                              const std::string& to) {
    if (from.empty())
        return text;
    std::string out;
    std::size_t pos = 0;
    for (std::size_t hit = text.find(from); hit != std::string::npos; hit = text.find(from, pos)) {
        out += text.substr(pos, hit - pos);
        out += to;
        pos = hit + from.size();
    }
    return out + text.substr(pos);
}

TEST(ReplaceAll, AgreesWithThePlainDefinitionOnRandomText) {
    // Few distinct bytes, so patterns overlap, repeat and sit at both ends; replacements are
    // shorter, equal and longer (rewritten in place or into a new buffer), and the rarest
    // byte a search anchors on falls at the start, middle and end of patterns.
    const std::vector<std::string> alphabet = {
        "<", ">", "a", "b", "P", "Y", "(", "\xC2", std::string(1, '\0')};
    std::mt19937 random(977);
    const auto randomText = [&](std::size_t maxLength) {
        std::string text;
        const std::size_t length = random() % (maxLength + 1);
        for (std::size_t i = 0; i < length; ++i)
            text += alphabet[random() % alphabet.size()];
        return text;
    };
    for (int round = 0; round < 20000; ++round) {
        // Long texts too: only there does the search pick an anchor other than the first byte.
        const std::string text = randomText(round % 4 == 0 ? 700 : 40);
        std::string from = randomText(5);
        if (from.empty() && round % 2 == 0)
            from = "Y";
        const std::string to = randomText(6);
        ASSERT_EQ(replaceAll(text, from, to), replaceAllNaively(text, from, to))
            << "text \"" << text << "\" from \"" << from << "\" to \"" << to << "\"";
    }
}

} // namespace
} // namespace lumora
