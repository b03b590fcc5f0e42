// Plain text fields as script string literals, and the value cutter the loader uses.
#pragma once

#include <string>

namespace lumora {

std::string escapeQuotes(const std::string& text);     // " -> \"
std::string escapeDefinition(const std::string& text); // quotes, then CR LF -> \n
std::string unescapeQuotes(const std::string& text);   // \" -> "
std::string ExtractValue(const std::string& line, const std::string& prefix, std::size_t cut);
std::string EnsureHash(const std::string& value);
std::string pageFileName(std::size_t index); // "page" + index + ".html"

} // namespace lumora
