// Links around a selection; see EditingText.h.
#include "content/EditingText.h"

#include "base/TextUtil.h"
#include "content/ContentForms.h"
#include "content/Normalize.h"

namespace lumora {

namespace {

constexpr const char* kEmptyParagraph = "<P>&nbsp;</P>";

} // namespace

LinkFrame linkFrame(const std::string& address) {
    const std::string href = trimSpaces(address).empty() ? "#" : address;
    return LinkFrame{"<a href=\"" + href + "\" target=\"_new\">", "</a>",
                     stripOuterParagraph(getFileName(address))};
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
