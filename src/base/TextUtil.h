// Literal, case-sensitive, replace-all text substitution: the only way content is rewritten.
#pragma once

#include <string>
#include <string_view>

namespace lumora {

// Replaces every occurrence of `from` by `to`, scanning from the first character; text that a
// replacement inserts is never scanned again.
std::string replaceAll(std::string text, std::string_view from, std::string_view to);
// The same on a text the caller keeps, so a conversion of many passes moves no string between
// them. `from` and `to` must not view the text itself.
void replaceAllIn(std::string& text, std::string_view from, std::string_view to);

inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// Blanks (spaces only) trimmed at both ends, as the system's Trim does.
std::string trimSpaces(std::string_view text);

std::string toLowerAscii(std::string text);

} // namespace lumora
