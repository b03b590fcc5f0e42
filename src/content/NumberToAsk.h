// The check run on every keystroke in an Evaluation's "Number to Ask" field: what it says to
// the author, what it stores and what the field shows afterwards. Pure, so the form only
// carries out the verdict.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace lumora {

struct NumberToAskVerdict {
    std::string message;                  // shown as an "Error" with the critical icon; "" for none
    std::optional<std::int16_t> store;    // the new intNumQuestions (the module is then changed)
    std::optional<std::string> fieldText; // what the field is set to; none leaves it as typed
};

// `text` is the field's text, `current` intNumQuestions, `available` the number of questions
// in the module. The stored value always lies between 0 and `available`.
NumberToAskVerdict checkNumberToAsk(const std::string& text, std::int16_t current,
                                    std::size_t available);

} // namespace lumora
