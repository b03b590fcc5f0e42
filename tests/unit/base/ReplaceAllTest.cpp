// The replace-all primitive under every content rewrite: scanning rules and boundaries.
#include "base/TextUtil.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace lumora {
namespace {

// Left to right without rescanning inserted text, and at the edges of the text; the random
// comparison below covers the rest.
TEST(ReplaceAll, ScanningRulesAndEdges) {
    const struct {
        std::string text, from, to, out;
    } cases[] = {
        {"aaa", "aa", "b", "ba"},
        {"xx", "x", "xx", "xxxx"},
        {"<<A>>", "<A>", "<A>", "<<A>>"},
        {"abc", "", "x", "abc"},
        {"a<", "<b", "!", "a<"}, // first character at the very end
        {"<p<p<pa", "<pa", "-", "<p<p-"},
        {std::string("a\0b\0", 4), std::string("\0b", 2), "+", std::string("a+\0", 3)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(replaceAll(c.text, c.from, c.to), c.out) << c.text << " / " << c.from;
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
