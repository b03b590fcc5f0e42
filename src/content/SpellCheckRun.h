// One spell check of a text block, as the checking dialog drives it: the run walks the block
// word by word, stops at each word the engine doubts and takes the author's answer (Change,
// Change All, Ignore, Ignore All). It walks lazily, finding the next doubtful word only when
// asked, and copies the block once, so a block of megabytes never stalls the dialog.
#pragma once

#include "content/SpellWords.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

namespace lumora {

class SpellCheckRun {
  public:
    // True for a word the engine accepts.
    using Check = std::function<bool(const std::string& word)>;

    // Corrections together may make the block at most this many characters (not bytes)
    // longer; a shorter correction gives room back. What a correction would add beyond that is
    // cut off the correction itself, so the rest of the block, its markup above all, always
    // comes back whole.
    static constexpr long kRoomToGrow = 200;

    // In HTML mode only the words a reader sees are checked, and a correction is written as
    // HTML text ("<" as "&lt;"); in plain mode every word is checked and text stays as typed.
    SpellCheckRun(std::string block, bool html, Check check);

    // Moves to the next word the engine doubts, replacing the words on the Change All list and
    // passing those on the Ignore All list on the way. False when the block is done.
    bool next();

    // The doubtful word the run stands on, and its sentence.
    const std::string& word() const { return word_; }
    SpellContext context() const;

    // The author's answers to the current word. Each moves on to the next doubtful word and
    // returns what next() returns.
    bool change(const std::string& to);
    bool changeAll(const std::string& to); // this word and every later occurrence of it
    bool ignore();
    bool ignoreAll(); // this word and every later occurrence (also after Add)

    // The block with the corrections made so far.
    std::string text() const;

  private:
    std::size_t outPosition(std::size_t inputPos) const;
    void remember(std::size_t inputPos);
    void replace(WordSpan span, const std::string& to);
    bool accepted(const std::string& word);

    std::string input_;
    std::string out_;      // corrected text up to read_
    std::size_t read_ = 0; // input copied to out_ (or replaced) up to here
    std::size_t scan_ = 0; // input walked up to here
    std::optional<WordSpan> current_;
    std::string word_;
    bool html_;
    Check check_;
    long growth_ = 0;                                // characters the corrections added so far
    std::unordered_map<std::string, bool> verdicts_; // per distinct word, Ignore All included
    std::unordered_map<std::string, std::string> changeAll_;
    std::deque<std::size_t> recent_; // where the last words passed start, in out_ terms
};

} // namespace lumora
