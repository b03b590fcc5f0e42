// The text the editing commands build around a selection: external and internal links and the
// link text taken from a selection's HTML. Pure string functions; the editors put the results in
// place.
#pragma once

#include <string>

namespace lumora {

// A link around a text still to come: open + text + close. Built once from the address, so the
// editing widget can wrap the selection it reads in the same call that replaces it.
struct LinkFrame {
    std::string open;      // "<a href=\"" address "\" target=\"_new\">"
    std::string close;     // "</a>"
    std::string emptyText; // the text of a link made without one: the address's file name
};

// A blank address becomes "#"; the empty text is the address's file name without its
// wrapping paragraph. Nothing is escaped.
LinkFrame linkFrame(const std::string& address);

// The internal links the page link dialog and the term chooser wrap around a selection
// (pageLinkHTML, termLinkHTML). Made with nothing marked, a link shows the page's title or the
// term itself, as text.
LinkFrame pageLinkFrame(int page, const std::string& title);
LinkFrame termLinkFrame(int term, const std::string& termText);

// "<a href=\"" address "\" target=\"_new\">" text "</a>", the text passed through
// stripOuterParagraph, an empty text replaced by the address's file name.
std::string makeLinkHTML(const std::string& address, const std::string& text);

// The text a link gets from the HTML of a selection: without its line breaks and its wrapping
// paragraph; an empty paragraph selected alone ("<P>&nbsp;</P>") counts as no text.
std::string linkTextOfSelection(const std::string& selectionHtml);

} // namespace lumora
