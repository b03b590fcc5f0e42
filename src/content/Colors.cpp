// Colour conversions between the stylesheet's "#RRGGBB" and the colour dialogs' 0x00BBGGRR.
#include "content/Colors.h"

#include <vector>

namespace lumora {
namespace {

// A hexadecimal digit as the system reads it: anything that is not one counts as 0.
int digitValue(char32_t c) {
    if (c >= '0' && c <= '9')
        return static_cast<int>(c - '0');
    if (c >= 'A' && c <= 'F')
        c += 'a' - 'A';
    if (c >= 'a' && c <= 'f')
        return static_cast<int>(c - 'a') + 10;
    return 0;
}

// Characters, not bytes, are counted: each UTF-8 sequence is one (non-digit) character.
std::vector<char32_t> characters(const std::string& text) {
    std::vector<char32_t> out;
    for (unsigned char byte : text) {
        if ((byte & 0xC0) == 0x80)
            continue;
        out.push_back(byte < 0x80 ? byte : 0xFFFD);
    }
    return out;
}

} // namespace

long hexToColor(const std::string& hex) {
    std::vector<char32_t> chars;
    for (char32_t c : characters(hex))
        if (c != '#')
            chars.push_back(c);
    if (chars.size() != 6)
        return 0;
    auto pair = [&](std::size_t i) { return 16 * digitValue(chars[i]) + digitValue(chars[i + 1]); };
    return pair(0) + 256L * pair(2) + 65536L * pair(4);
}

std::string colorToHex(long color) {
    // Only the last six hexadecimal digits survive, so larger (or negative) numbers keep
    // their low 24 bits.
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const unsigned long low = static_cast<unsigned long>(color) & 0xFFFFFFUL;
    auto byteHex = [&](unsigned shift) {
        const unsigned long b = (low >> shift) & 0xFF;
        return std::string{kDigits[b >> 4], kDigits[b & 0xF]};
    };
    return "#" + byteHex(0) + byteHex(8) + byteHex(16);
}

} // namespace lumora
