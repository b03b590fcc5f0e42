// The words of a text block as the spell checker sees them, and the sentence around one. In
// HTML the words are those a reader sees: tags, attribute values, comments, script and style
// text and character references are never words and always end one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

// Longer runs of letters are codes or identifiers, not words anyone misspells by hand.
inline constexpr std::size_t kLongestWord = 64; // characters

// A word's bytes in the text: [start, end).
struct WordSpan {
    std::size_t start = 0;
    std::size_t end = 0;
    bool operator==(const WordSpan&) const = default;
};

// The first word that starts at or after `from` (a position outside markup). A word is a run
// of letters of any script; an apostrophe joins two letters ("don't") and a hyphen two parts
// ("lock-out"). Runs that hold a digit ("50mg", "2nd") are numbers and codes, not words.
std::optional<WordSpan> nextWord(std::string_view text, std::size_t from, bool html);

// What a reader sees of a stretch of text: markup dropped, references read, white space
// collapsed; a paragraph, cell or line break becomes "\n".
std::string readableText(std::string_view text, bool html);

// The doubtful word in its sentence, as the checking dialog shows it.
struct SpellContext {
    std::string before;
    std::string word;
    std::string after;
};

// `before` is readable text that ends where the word starts, `after` readable text from where
// it ends; each is cut to the word's sentence and to at most about `reach` characters.
SpellContext sentenceAround(const std::string& before, const std::string& word,
                            const std::string& after, std::size_t reach = 80);

} // namespace lumora
