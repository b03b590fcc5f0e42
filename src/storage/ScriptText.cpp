// Plain text fields as script string literals: the quote and line-break escapes the writer
// applies, the unescape and value cutter the loader applies, and the colour and page-name rules.
#include "storage/ScriptText.h"

#include "base/TextUtil.h"

namespace lumora {

std::string escapeQuotes(const std::string& text) {
    return replaceAll(text, "\"", "\\\"");
}

std::string escapeDefinition(const std::string& text) {
    // Quotes first, so the backslash of "\n" is never mistaken for part of an escape.
    return replaceAll(escapeQuotes(text), "\r\n", "\\n");
}

std::string unescapeQuotes(const std::string& text) {
    return replaceAll(text, "\\\"", "\"");
}

std::string ExtractValue(const std::string& line, const std::string& prefix, std::size_t cut) {
    if (prefix.empty() || !contains(line, prefix))
        return {};
    std::string rest = replaceAll(line, prefix, "");
    // A damaged line shorter than its closing characters has no value at all.
    if (rest.size() <= cut)
        return {};
    rest.resize(rest.size() - cut);
    return rest;
}

std::string EnsureHash(const std::string& value) {
    if (contains(value, "#"))
        return value;
    return "#" + value;
}

std::string pageFileName(std::size_t index) {
    return "page" + std::to_string(index) + ".html";
}

} // namespace lumora
