// Reading page HTML as text: where markup and character references start and end, what they
// mean to a reader, and author-typed text made safe to stand in HTML. The spell checker walks
// page text with these, so it never reads a tag, an attribute or a script as words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumora {

// One character of UTF-8 text: its code point and its length in bytes. A byte that does not
// start a valid sequence reads as U+FFFD, one byte long, so a damaged text is still walked.
struct Utf8Char {
    char32_t cp = 0;
    std::size_t length = 0;
};
Utf8Char utf8At(std::string_view text, std::size_t pos);
std::size_t utf8Length(std::string_view text); // in characters

// Where markup that starts at `pos` ends: a tag (quoted attribute values may hold ">"), a
// comment, a declaration, or a whole script or style element, whose text is code, not words.
// Returns `pos` when no markup starts there ("a < b" is text). Unclosed markup runs to the end.
std::size_t markupEnd(std::string_view text, std::size_t pos);
// Where a character reference ("&nbsp;", "&#233;", "&#xE9;") that starts at `pos` ends;
// `pos` when there is none (a bare "&").
std::size_t entityEnd(std::string_view text, std::size_t pos);

// Whether the markup ends a run of text for a reader: paragraphs, cells, list items, line
// breaks, headings, rules and embedded scripts do; inline formatting does not.
bool breaksText(std::string_view markup);
// The text a character reference stands for, as UTF-8; unknown names stand for themselves.
std::string entityText(std::string_view entity);

// Text typed by the author, as HTML that shows it: "&", "<", ">" and the non-breaking space
// written the way the editing widget writes them.
std::string escapeHtmlText(std::string_view text);

} // namespace lumora
