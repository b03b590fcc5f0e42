// The number-to-ask check. The field takes a count of questions; anything else is refused
// with one of three messages, and the field never holds a value that was not stored.
#include "content/NumberToAsk.h"

#include <algorithm>
#include <cctype>
#include <limits>

namespace lumora {
namespace {

constexpr const char* kTooLong = "Please choose a number less than 2000000000.";
constexpr const char* kTooMany = "You don't have that many to ask";
constexpr const char* kNotACount = "You can only enter a positive number, without decimals";

// A number as the field may hold one: an optional sign, then digits with at most one decimal
// point among or around them, blanks allowed on either side.
bool isNumeric(const std::string& text) {
    std::size_t i = text.find_first_not_of(' ');
    const std::size_t end = text.find_last_not_of(' ') + 1;
    if (i == std::string::npos)
        return false;
    if (text[i] == '+' || text[i] == '-')
        ++i;
    bool digits = false;
    bool point = false;
    for (; i < end; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (std::isdigit(c)) {
            digits = true;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    return digits;
}

// The value of a numeric text without a decimal point, or none when it lies outside the range
// of a 32-bit signed integer.
std::optional<long long> wholeValue(const std::string& text) {
    long long value = 0;
    bool negative = false;
    for (char c : text) {
        if (c == '-') {
            negative = true;
        } else if (std::isdigit(static_cast<unsigned char>(c))) {
            value = value * 10 + (c - '0');
            if (value > std::numeric_limits<std::int32_t>::max() + 1LL)
                return std::nullopt;
        }
    }
    value = negative ? -value : value;
    if (value > std::numeric_limits<std::int32_t>::max())
        return std::nullopt;
    return value;
}

} // namespace

NumberToAskVerdict checkNumberToAsk(const std::string& text, std::int16_t current,
                                    std::size_t available) {
    const std::string currentText = std::to_string(current);
    // The program's own write into the field comes back as a change: nothing more to do.
    if (text == currentText)
        return {};

    const auto count = static_cast<std::int16_t>(
        std::min<std::size_t>(available, std::numeric_limits<std::int16_t>::max()));
    const std::string countText = std::to_string(count);
    const auto useCount = [&](std::string message) {
        NumberToAskVerdict verdict{std::move(message), std::nullopt, countText};
        if (count != current)
            verdict.store = count;
        return verdict;
    };

    const bool numeric = isNumeric(text);
    // Eleven characters or more cannot be a count; a ten-digit number past the 32-bit range
    // is told the same.
    if (text.size() >= 11)
        return useCount(numeric ? kTooLong : "");
    if (!numeric || text.find('.') != std::string::npos)
        return {kNotACount, std::nullopt, currentText};
    const std::optional<long long> value = wholeValue(text);
    if (!value)
        return useCount(kTooLong);
    if (*value < 0)
        return {kNotACount, std::nullopt, currentText};
    if (*value > count)
        return {kTooMany, count, countText};
    const auto stored = static_cast<std::int16_t>(*value);
    return {"", stored, std::to_string(stored)};
}

} // namespace lumora
