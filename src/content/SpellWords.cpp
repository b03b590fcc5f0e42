// Words and their sentences for the spell checker; see SpellWords.h.
#include "content/SpellWords.h"

#include "content/HtmlScan.h"

#include <utility>

namespace lumora {

namespace {

// Blocks of punctuation, symbols, spaces and controls above ASCII; every other character is
// taken for a letter (or a combining mark, which belongs to the letter before it).
constexpr std::pair<char32_t, char32_t> kNotLetters[] = {
    {0x80, 0xBF},       // controls, Latin-1 punctuation and signs (the non-breaking space too)
    {0xD7, 0xD7},       // multiplication sign
    {0xF7, 0xF7},       // division sign
    {0x2000, 0x2BFF},   // general punctuation, currency, letterlike, arrows, maths, shapes
    {0x2E00, 0x2E7F},   // supplemental punctuation
    {0x3000, 0x303F},   // CJK symbols and punctuation
    {0xD800, 0xF8FF},   // surrogates and private use
    {0xFE10, 0xFE6F},   // vertical, compatibility and small forms
    {0xFEFF, 0xFF20},   // byte-order mark, full-width punctuation and digits
    {0xFF3B, 0xFF40},   //
    {0xFF5B, 0xFF65},   //
    {0xFFF0, 0xFFFF},   // specials (the replacement character for damaged bytes)
    {0x1F000, 0x1FAFF}, // pictographs and emoji
    {0xE0000, 0x10FFFF} // tags and private use
};

bool isLetter(char32_t cp) {
    if (cp < 0x80)
        return (cp >= 'A' && cp <= 'Z') || (cp >= 'a' && cp <= 'z');
    for (const auto& [from, to] : kNotLetters)
        if (cp >= from && cp <= to)
            return false;
    return true;
}

bool isDigit(char32_t cp) {
    return cp >= '0' && cp <= '9';
}

bool isApostrophe(char32_t cp) {
    return cp == '\'' || cp == 0x2019;
}

bool isHyphen(char32_t cp) {
    return cp == '-' || cp == 0x2010 || cp == 0x2011;
}

bool isSpace(char32_t cp) {
    return cp == ' ' || cp == '\t' || cp == '\r' || cp == '\n' || cp == 0xA0;
}

// The markup or reference at `pos` in HTML, as [pos, end); pos itself when there is none.
std::size_t skippable(std::string_view text, std::size_t pos, bool html) {
    if (!html)
        return pos;
    if (text[pos] == '<')
        return markupEnd(text, pos);
    if (text[pos] == '&')
        return entityEnd(text, pos);
    return pos;
}

// The end of the run of letters, digits and joiners that starts at `pos`; counts its
// characters and notes a digit.
std::size_t runEnd(std::string_view text, std::size_t pos, std::size_t& count, bool& digit) {
    count = 0;
    digit = false;
    char32_t previous = 0;
    while (pos < text.size()) {
        const Utf8Char c = utf8At(text, pos);
        if (isLetter(c.cp) || isDigit(c.cp)) {
            digit = digit || isDigit(c.cp);
        } else {
            // A joiner belongs to the word only with word characters on both sides.
            const bool joins =
                isApostrophe(c.cp) ? isLetter(previous) : isHyphen(c.cp) && previous != 0;
            if (!joins || pos + c.length >= text.size())
                break;
            const char32_t following = utf8At(text, pos + c.length).cp;
            if (!(isApostrophe(c.cp) ? isLetter(following)
                                     : isLetter(following) || isDigit(following)))
                break;
        }
        previous = c.cp;
        pos += c.length;
        ++count;
    }
    return pos;
}

void appendSpace(std::string& out) {
    if (out.empty() || (out.back() != ' ' && out.back() != '\n'))
        out += ' ';
}

void appendBreak(std::string& out) {
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    if (out.empty() || out.back() != '\n')
        out += '\n';
}

bool endsSentence(std::string_view text, std::size_t pos) {
    const char c = text[pos];
    return (c == '.' || c == '!' || c == '?') &&
           (pos + 1 == text.size() || text[pos + 1] == ' ' || text[pos + 1] == '\n');
}

// The last `reach` characters of the text, cut at a space, marked as cut.
std::string keepEnd(std::string text, std::size_t reach) {
    if (utf8Length(text) <= reach)
        return text;
    std::size_t cut = text.size();
    for (std::size_t kept = 0; cut > 0 && kept < reach; ++kept) {
        --cut;
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
            --cut;
    }
    const std::size_t space = text.find(' ', cut);
    if (space != std::string::npos && space + 1 < text.size())
        cut = space + 1;
    return "\xE2\x80\xA6" + text.substr(cut);
}

// The first `reach` characters of the text, cut at a space, marked as cut.
std::string keepStart(std::string text, std::size_t reach) {
    if (utf8Length(text) <= reach)
        return text;
    std::size_t cut = 0;
    for (std::size_t kept = 0; kept < reach; ++kept)
        cut += utf8At(text, cut).length;
    const std::size_t space = text.rfind(' ', cut);
    if (space != std::string::npos && space > 0)
        cut = space;
    return text.substr(0, cut) + "\xE2\x80\xA6";
}

} // namespace

std::optional<WordSpan> nextWord(std::string_view text, std::size_t from, bool html) {
    std::size_t pos = from;
    while (pos < text.size()) {
        const std::size_t skipped = skippable(text, pos, html);
        if (skipped != pos) {
            pos = skipped;
            continue;
        }
        const Utf8Char c = utf8At(text, pos);
        if (!isLetter(c.cp) && !isDigit(c.cp)) {
            pos += c.length;
            continue;
        }
        std::size_t count = 0;
        bool digit = false;
        const std::size_t end = runEnd(text, pos, count, digit);
        if (!digit && count <= kLongestWord)
            return WordSpan{pos, end};
        pos = end;
    }
    return std::nullopt;
}

std::string readableText(std::string_view text, bool html) {
    std::string out;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t skipped = skippable(text, pos, html);
        if (skipped != pos) {
            const std::string_view piece = text.substr(pos, skipped - pos);
            if (piece[0] == '&') {
                const std::string read = entityText(piece);
                if (read == "\xC2\xA0")
                    appendSpace(out);
                else
                    out += read;
            } else if (breaksText(piece)) {
                appendBreak(out);
            }
            pos = skipped;
            continue;
        }
        const Utf8Char c = utf8At(text, pos);
        if (c.cp == '\n' && !html)
            appendBreak(out);
        else if (isSpace(c.cp))
            appendSpace(out);
        else
            out.append(text.substr(pos, c.length));
        pos += c.length;
    }
    return out;
}

SpellContext sentenceAround(const std::string& before, const std::string& word,
                            const std::string& after, std::size_t reach) {
    std::size_t start = 0;
    for (std::size_t i = before.size(); i-- > 0;) {
        if (before[i] == '\n' || endsSentence(before, i)) {
            start = i + 1;
            break;
        }
    }
    std::size_t end = after.size();
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i] == '\n') {
            end = i;
            break;
        }
        if (endsSentence(after, i)) {
            end = i + 1;
            break;
        }
    }
    std::string head = before.substr(start);
    while (!head.empty() && head.front() == ' ')
        head.erase(0, 1);
    return {keepEnd(std::move(head), reach), word, keepStart(after.substr(0, end), reach)};
}

} // namespace lumora
