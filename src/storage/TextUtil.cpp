#include "storage/TextUtil.h"

#include <algorithm>
#include <cstring>

namespace lumora {

namespace {

// Content is full of '<' and most patterns start with it: checking the second character before
// comparing the rest skips most false starts far more cheaply than a full comparison.
std::size_t findFrom(std::string_view text, std::string_view part, std::size_t pos) {
    if (part.size() < 2 || pos >= text.size())
        return text.find(part, pos);
    const char* data = text.data();
    const char* p = data + pos;
    if (text.size() - pos < part.size())
        return std::string_view::npos;
    const char* last = data + text.size() - part.size();
    while (p <= last) {
        p = static_cast<const char*>(
            std::memchr(p, part[0], static_cast<std::size_t>(last - p) + 1));
        if (!p)
            break;
        if (p[1] == part[1] && std::memcmp(p + 2, part.data() + 2, part.size() - 2) == 0)
            return static_cast<std::size_t>(p - data);
        ++p;
    }
    return std::string_view::npos;
}

} // namespace

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    if (from.empty())
        return text;
    std::size_t hit = findFrom(text, from, 0);
    // Most passes of a conversion find nothing: hand the text back without copying it.
    if (hit == std::string::npos)
        return text;
    if (from.size() == to.size()) {
        // Same length: rewrite in place, no second buffer.
        do {
            text.replace(hit, from.size(), to);
            hit = findFrom(text, from, hit + to.size());
        } while (hit != std::string::npos);
        return text;
    }
    std::string out;
    out.reserve(text.size() + (to.size() > from.size() ? text.size() / 8 : 0));
    std::size_t pos = 0;
    do {
        out.append(text, pos, hit - pos);
        out.append(to);
        pos = hit + from.size();
        hit = findFrom(text, from, pos);
    } while (hit != std::string::npos);
    out.append(text, pos, std::string::npos);
    return out;
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
