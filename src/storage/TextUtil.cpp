#include "storage/TextUtil.h"

#include <algorithm>

namespace lumora {

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    if (from.empty() || text.size() < from.size())
        return text;
    std::string out;
    out.reserve(text.size() + (to.size() > from.size() ? text.size() / 8 : 0));
    std::size_t pos = 0;
    while (true) {
        std::size_t hit = text.find(from, pos);
        if (hit == std::string::npos)
            break;
        out.append(text, pos, hit - pos);
        out.append(to);
        pos = hit + from.size();
    }
    if (pos == 0)
        return text;
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
