// Normalisation of content handed back by the HTML editor, and its three small companions.
// Each is a fixed sequence of literal, case-sensitive replace-all steps; the order matters.
#pragma once

#include <string>

namespace lumora {

std::string normalizeHTML(const std::string& html);
std::string normalizeHTML(std::string&& html); // the same, reusing the text's buffer
std::string blankIfEmpty(const std::string& html);
std::string blankIfEmpty(std::string&& html); // the same, without a copy
std::string stripParagraphs(const std::string& html);
std::string stripOuterParagraph(const std::string& html);

} // namespace lumora
