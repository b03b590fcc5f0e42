// The number-to-ask check over the texts an author can type, with four questions available and
// two to ask before the keystroke.
#include "content/NumberToAsk.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace lumora {
namespace {

constexpr const char* kTooLong = "Please choose a number less than 2000000000.";
constexpr const char* kTooMany = "You don't have that many to ask";
constexpr const char* kNotACount = "You can only enter a positive number, without decimals";

struct Case {
    std::string typed;
    std::string message;
    std::optional<std::int16_t> stored;
    std::optional<std::string> field;
};

TEST(NumberToAsk, EachTypedTextGetsItsMessageValueAndField) {
    const Case cases[] = {
        {"2", "", std::nullopt, std::nullopt}, // the field's own write coming back
        {"0", "", 0, "0"},
        {"4", "", 4, "4"},
        {"03", "", 3, "3"}, // leading zeros: the field shows the plain number
        {"9", kTooMany, 4, "4"},
        {"3.5", kNotACount, std::nullopt, "2"},
        {"3.", kNotACount, std::nullopt, "2"},
        {"-1", kNotACount, std::nullopt, "2"},
        {"", kNotACount, std::nullopt, "2"},
        {"-", kNotACount, std::nullopt, "2"},
        {"x", kNotACount, std::nullopt, "2"},
        {"1e3", kNotACount, std::nullopt, "2"},
        {"2147483647", kTooMany, 4, "4"},
        {"2147483648", kTooLong, 4, "4"}, // ten digits past the 32-bit range
        {"9999999999", kTooLong, 4, "4"},
        {"1234567890123", kTooLong, 4, "4"}, // thirteen digits
        {"-9999999999", kTooLong, 4, "4"},   // eleven characters, numeric
        {"abcdefghijkl", "", 4, "4"},        // eleven or more, not numeric: no message
    };
    for (const Case& c : cases) {
        const NumberToAskVerdict v = checkNumberToAsk(c.typed, 2, 4);
        EXPECT_EQ(v.message, c.message) << "typed '" << c.typed << "'";
        EXPECT_EQ(v.store, c.stored) << "typed '" << c.typed << "'";
        EXPECT_EQ(v.fieldText, c.field) << "typed '" << c.typed << "'";
    }
    // Setting the field to the count when it is already stored changes nothing.
    EXPECT_EQ(checkNumberToAsk("99999999999", 4, 4).store, std::nullopt);
}

} // namespace
} // namespace lumora
