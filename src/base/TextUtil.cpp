#include "base/TextUtil.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lumora {

namespace {

// How common a byte is in editor markup, roughly: 5 for what fills every line (blanks, tag
// brackets, the commonest letters), down to 1 for what hardly ever occurs. Only speed depends
// on it: a search anchors on the pattern's least common byte.
constexpr std::array<unsigned char, 256> kCommonness = [] {
    std::array<unsigned char, 256> rank{};
    for (int c = 0; c < 256; ++c)
        rank[c] = c < 0x20 ? 1 : c < 0x80 ? 2 : 3;
    for (unsigned char c : std::string_view("0123456789&;-:ACDEFGHILMNOSU"))
        rank[c] = 3;
    for (unsigned char c : std::string_view("bcdfgmpuvwy\"=.,\r\nPTRBI"))
        rank[c] = 4;
    for (unsigned char c : std::string_view(" etaoinsrhl<>/"))
        rank[c] = 5;
    return rank;
}();

// Chosen among the first bytes only: a long pattern costs no long look at itself.
std::size_t anchorOf(std::string_view part) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < part.size() && i < 12; ++i)
        if (kCommonness[static_cast<unsigned char>(part[i])] <
            kCommonness[static_cast<unsigned char>(part[best])])
            best = i;
    return best;
}

// Content is full of '<' and most patterns start with it: the search looks for the pattern's
// least common byte instead and compares the whole pattern around each one it finds, so most
// of the text is skipped by memchr and a pattern that is absent costs about one scan.
std::size_t findFrom(std::string_view text, std::string_view part, std::size_t pos,
                     std::size_t anchor) {
    if (pos > text.size() || text.size() - pos < part.size())
        return std::string_view::npos;
    if (part.size() < 2)
        return text.find(part, pos);
    const char* data = text.data();
    const char key = part[anchor];
    // Candidate starts run from pos to last; their anchor bytes from pos + anchor.
    const char* last = data + text.size() - part.size();
    const char* p = data + pos + anchor;
    const char* stop = last + anchor;
    while (p <= stop) {
        p = static_cast<const char*>(std::memchr(p, key, static_cast<std::size_t>(stop - p) + 1));
        if (!p)
            break;
        const char* candidate = p - anchor;
        if (std::memcmp(candidate, part.data(), part.size()) == 0)
            return static_cast<std::size_t>(candidate - data);
        ++p;
    }
    return std::string_view::npos;
}

} // namespace

void replaceAllIn(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty() || from.size() > text.size())
        return;
    // Choosing costs a look at the pattern, worth it only when there is text to skip.
    const std::size_t anchor = text.size() < 256 ? 0 : anchorOf(from);
    std::size_t hit = findFrom(text, from, 0, anchor);
    // Most passes of a conversion find nothing and leave the text as it is.
    if (hit == std::string::npos)
        return;
    if (to.size() <= from.size()) {
        // Not longer: rewrite in place, no second buffer. What is still to be searched lies at
        // or after `read`, which never falls behind `write`, so it is never overwritten first.
        char* data = text.data();
        std::size_t write = hit;
        do {
            if (!to.empty())
                std::memcpy(data + write, to.data(), to.size());
            write += to.size();
            const std::size_t read = hit + from.size();
            hit = findFrom(text, from, read, anchor);
            const std::size_t keep = (hit == std::string::npos ? text.size() : hit) - read;
            if (write != read && keep > 0)
                std::memmove(data + write, data + read, keep);
            write += keep;
        } while (hit != std::string::npos);
        text.resize(write);
        return;
    }
    std::string out;
    out.reserve(text.size() + text.size() / 8 + to.size() - from.size());
    std::size_t pos = 0;
    do {
        out.append(text, pos, hit - pos);
        out.append(to);
        pos = hit + from.size();
        hit = findFrom(text, from, pos, anchor);
    } while (hit != std::string::npos);
    out.append(text, pos, std::string::npos);
    text.swap(out);
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    replaceAllIn(text, from, to);
    return text;
}

std::string trimSpaces(std::string_view text) {
    std::size_t b = text.find_first_not_of(' ');
    if (b == std::string_view::npos)
        return {};
    std::size_t e = text.find_last_not_of(' ');
    return std::string(text.substr(b, e - b + 1));
}

std::string toLowerAscii(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    });
    return text;
}

} // namespace lumora
