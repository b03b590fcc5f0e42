// Registry data as text; see RegistryValues.h.
#include "app/RegistryValues.h"

#include <cctype>
#include <cstdint>

namespace lumora {

namespace {

std::string upperAscii(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

std::string hexDigits(unsigned byte) {
    static const char* const digits = "0123456789ABCDEF";
    std::string out;
    if (byte >= 16)
        out += digits[byte >> 4];
    out += digits[byte & 0xF];
    return out;
}

} // namespace

std::optional<std::string> registryValueText(const RegistryValue& value) {
    // The value is read into a buffer whose last byte is dropped when it is a NUL: text values
    // end with one, and so does a number whose highest byte is zero, which changes nothing.
    std::string data = value.data;
    if (!data.empty() && data.back() == '\0')
        data.pop_back();

    if (value.type == 1)
        return data;
    if (value.type != 4)
        return std::string();

    // Unpadded digits are the reader's long-standing behaviour: bytes 02 01 read as 0x12.
    std::string hex;
    for (auto it = data.rbegin(); it != data.rend(); ++it)
        hex += hexDigits(static_cast<unsigned char>(*it));
    if (hex.empty() || hex.size() > 16)
        return std::nullopt;
    std::uint64_t number = 0;
    for (char c : hex)
        number = number * 16 + static_cast<std::uint64_t>(c <= '9' ? c - '0' : c - 'A' + 10);
    return std::to_string(number);
}

InstalledProducts::InstalledProducts(const std::vector<std::string>& subkeyNames) {
    for (const std::string& name : subkeyNames)
        keys_.insert(upperAscii(name.substr(0, name.find('\0'))));
}

bool InstalledProducts::contains(const std::string& productCode) const {
    return keys_.count(upperAscii(productCode)) != 0;
}

} // namespace lumora
