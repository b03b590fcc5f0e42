// One spell check of a text block; see SpellCheckRun.h.
#include "content/SpellCheckRun.h"

#include "content/HtmlScan.h"

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

// How far back the sentence of a doubtful word is looked for: the last few words passed, and
// never more than a few kilobytes, whatever markup lies between them.
constexpr std::size_t kWordsRemembered = 16;
constexpr std::size_t kContextBytes = 4096;

// The correction as written into the block, cut so that it has at most `room` characters.
// In HTML the cut falls between characters of the author's text, never inside a reference.
std::string fitted(const std::string& to, bool html, long room) {
    std::string out;
    long used = 0;
    for (std::size_t pos = 0; pos < to.size();) {
        const Utf8Char c = utf8At(to, pos);
        const std::string piece =
            html ? escapeHtmlText(to.substr(pos, c.length)) : to.substr(pos, c.length);
        const long length = static_cast<long>(utf8Length(piece));
        if (used + length > room)
            break;
        out += piece;
        used += length;
        pos += c.length;
    }
    return out;
}

} // namespace

SpellCheckRun::SpellCheckRun(std::string block, bool html, Check check)
    : input_(std::move(block)), html_(html), check_(std::move(check)) {}

bool SpellCheckRun::accepted(const std::string& word) {
    const auto known = verdicts_.find(word);
    if (known != verdicts_.end())
        return known->second;
    const bool ok = check_(word);
    verdicts_.emplace(word, ok);
    return ok;
}

std::size_t SpellCheckRun::outPosition(std::size_t inputPos) const {
    return out_.size() + (inputPos - read_);
}

void SpellCheckRun::remember(std::size_t inputPos) {
    recent_.push_back(outPosition(inputPos));
    if (recent_.size() > kWordsRemembered)
        recent_.pop_front();
}

void SpellCheckRun::replace(WordSpan span, const std::string& to) {
    const long oldLength = static_cast<long>(
        utf8Length(std::string_view(input_).substr(span.start, span.end - span.start)));
    const std::string written = fitted(to, html_, kRoomToGrow - growth_ + oldLength);
    growth_ += static_cast<long>(utf8Length(written)) - oldLength;
    out_.append(input_, read_, span.start - read_);
    out_ += written;
    read_ = span.end;
}

bool SpellCheckRun::next() {
    current_.reset();
    word_.clear();
    while (const auto span = nextWord(input_, scan_, html_)) {
        scan_ = span->end;
        std::string word = input_.substr(span->start, span->end - span->start);
        if (const auto to = changeAll_.find(word); to != changeAll_.end()) {
            remember(span->start);
            replace(*span, to->second);
            continue;
        }
        if (accepted(word)) {
            remember(span->start);
            continue;
        }
        current_ = span;
        word_ = std::move(word);
        return true;
    }
    return false;
}

bool SpellCheckRun::change(const std::string& to) {
    if (!current_)
        return false;
    remember(current_->start);
    replace(*current_, to);
    return next();
}

bool SpellCheckRun::changeAll(const std::string& to) {
    if (!current_)
        return false;
    changeAll_[word_] = to;
    return change(to);
}

bool SpellCheckRun::ignore() {
    if (!current_)
        return false;
    remember(current_->start);
    return next();
}

bool SpellCheckRun::ignoreAll() {
    if (!current_)
        return false;
    verdicts_[word_] = true;
    return ignore();
}

std::string SpellCheckRun::text() const {
    return out_ + input_.substr(read_);
}

SpellContext SpellCheckRun::context() const {
    if (!current_)
        return {};
    // Before the word: corrected text from a word start remembered (a place outside markup).
    const std::size_t wordAt = outPosition(current_->start);
    std::size_t from = wordAt;
    for (std::size_t start : recent_) {
        if (wordAt - start <= kContextBytes) {
            from = start;
            break;
        }
    }
    std::string before;
    if (from < out_.size())
        before = out_.substr(from) + input_.substr(read_, current_->start - read_);
    else
        before = input_.substr(read_ + (from - out_.size()), wordAt - from);

    // After it: the text as it stands, up to a character boundary.
    std::size_t until = std::min(input_.size(), current_->end + kContextBytes);
    while (until < input_.size() && (static_cast<unsigned char>(input_[until]) & 0xC0) == 0x80)
        ++until;
    const std::string after = input_.substr(current_->end, until - current_->end);
    return sentenceAround(readableText(before, html_), word_, readableText(after, html_));
}

} // namespace lumora
