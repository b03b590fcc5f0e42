// A small XML tokenizer for reading manifests back: start and end tags with their attributes,
// text and comments, entities decoded. It checks only what it needs to find its way (no
// namespaces, no DTD); the SCORM schemas are the judge of validity, this just reads.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

struct XmlToken {
    enum class Kind { Start, End, Text, Comment };
    Kind kind = Kind::Text;
    std::string name; // qualified tag name for Start and End
    std::map<std::string, std::string> attributes;
    bool selfClosing = false;
    std::string text; // decoded text, or a comment's raw contents
};

// The tokens of a document in order; no value when the text is not XML this reader can follow
// (an unterminated tag, comment or attribute, or a tag name missing).
std::optional<std::vector<XmlToken>> scanXml(std::string_view xml);

// "&amp;", "&lt;", "&gt;", "&quot;", "&apos;" and numeric references decoded; others kept.
std::string decodeXmlEntities(std::string_view text);

// The name without its namespace prefix ("adlcp:masteryscore" -> "masteryscore").
std::string_view localName(std::string_view qualified);

} // namespace lumora
