// The block of text a spell check hands to the checking dialog, and the rules for what comes
// back: the HTML of the selection (or of the whole page) without its line breaks, refused when
// it starts inside a table body, and corrections that may lengthen it by 200 characters at most.
#pragma once

#include <cstddef>
#include <string>

namespace lumora {

// The room the dialog has to lengthen a block, in characters.
inline constexpr std::size_t kSpellingRoom = 200;

// The HTML block to check: the selection's HTML with every CR LF pair removed.
std::string spellingBlock(const std::string& selectionHtml);

// A block that begins with "<tbody>" (any case): the author marked cells of a table, which
// cannot be put back on their own.
bool startsInTableBody(const std::string& block);

// The dialog's result as it fits the block's buffer: at most the block's length plus
// kSpellingRoom characters (UTF-8 sequences count as one).
std::string withinSpellingRoom(const std::string& block, const std::string& corrected);

} // namespace lumora
