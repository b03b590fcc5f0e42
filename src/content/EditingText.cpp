// Links around a selection; see EditingText.h.
#include "content/EditingText.h"

#include "base/TextUtil.h"
#include "content/ContentForms.h"
#include "content/HtmlScan.h"
#include "content/ListOps.h"
#include "content/Normalize.h"

namespace lumora {

namespace {

constexpr const char* kEmptyParagraph = "<P>&nbsp;</P>";

// A reference built around an empty text splits into the part before the text and the part
// after it.
LinkFrame frameAround(const std::string& emptyLink, std::size_t closeLength,
                      const std::string& shownText) {
    const std::size_t open = emptyLink.size() - closeLength;
    return LinkFrame{emptyLink.substr(0, open), emptyLink.substr(open), escapeHtmlText(shownText)};
}

} // namespace

LinkFrame linkFrame(const std::string& address) {
    const std::string href = trimSpaces(address).empty() ? "#" : address;
    return LinkFrame{"<a href=\"" + href + "\" target=\"_new\">", "</a>",
                     stripOuterParagraph(getFileName(address))};
}

LinkFrame pageLinkFrame(int page, const std::string& title) {
    return frameAround(pageLinkHTML(page, ""), 4, title); // "</A>"
}

LinkFrame termLinkFrame(int term, const std::string& termText) {
    return frameAround(termLinkHTML(term, ""), 4, termText); // "</a>"
}

std::string makeLinkHTML(const std::string& address, const std::string& text) {
    LinkFrame frame = linkFrame(address);
    return frame.open + (text.empty() ? frame.emptyText : stripOuterParagraph(text)) + frame.close;
}

std::string linkTextOfSelection(const std::string& selectionHtml) {
    std::string text = stripOuterParagraph(selectionHtml);
    // The paragraph is recognised before and after stripping: the classic control handed back
    // an empty line either way.
    if (text == kEmptyParagraph || replaceAll(selectionHtml, "\r\n", "") == kEmptyParagraph)
        return {};
    return text;
}

} // namespace lumora
