#include "storage/TextUtil.h"

#include <algorithm>

namespace lumora {

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    if (from.empty())
        return text;
    std::size_t hit = text.find(from);
    // Most passes of a conversion find nothing: hand the text back without copying it.
    if (hit == std::string::npos)
        return text;
    if (from.size() == to.size()) {
        // Same length: rewrite in place, no second buffer.
        do {
            text.replace(hit, from.size(), to);
            hit = text.find(from, hit + to.size());
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
        hit = text.find(from, pos);
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
