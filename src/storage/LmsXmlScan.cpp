#include "storage/LmsXmlScan.h"

#include <cstdint>

namespace lumora {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isNameChar(char c) {
    return !isSpace(c) && c != '>' && c != '/' && c != '=' && c != '<' && c != '"' && c != '\'';
}

void appendUtf8(std::string& out, std::uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// A numeric reference's code point, when it names a valid one.
std::optional<std::uint32_t> numericReference(std::string_view body) {
    if (body.size() < 2 || body[0] != '#')
        return std::nullopt;
    bool hex = body[1] == 'x' || body[1] == 'X';
    std::string_view digits = body.substr(hex ? 2 : 1);
    if (digits.empty() || digits.size() > 8)
        return std::nullopt;
    std::uint32_t value = 0;
    for (char c : digits) {
        int d;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (hex && c >= 'a' && c <= 'f')
            d = c - 'a' + 10;
        else if (hex && c >= 'A' && c <= 'F')
            d = c - 'A' + 10;
        else
            return std::nullopt;
        value = value * (hex ? 16 : 10) + static_cast<std::uint32_t>(d);
    }
    if (value == 0 || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return std::nullopt;
    return value;
}

} // namespace

std::string decodeXmlEntities(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] != '&') {
            out += text[i++];
            continue;
        }
        std::size_t semi = text.find(';', i);
        if (semi == std::string_view::npos || semi - i > 12) {
            out += text[i++];
            continue;
        }
        std::string_view body = text.substr(i + 1, semi - i - 1);
        if (body == "amp")
            out += '&';
        else if (body == "lt")
            out += '<';
        else if (body == "gt")
            out += '>';
        else if (body == "quot")
            out += '"';
        else if (body == "apos")
            out += '\'';
        else if (auto cp = numericReference(body))
            appendUtf8(out, *cp);
        else {
            out += text[i++];
            continue;
        }
        i = semi + 1;
    }
    return out;
}

std::string_view localName(std::string_view qualified) {
    std::size_t colon = qualified.find(':');
    return colon == std::string_view::npos ? qualified : qualified.substr(colon + 1);
}

std::optional<std::vector<XmlToken>> scanXml(std::string_view xml) {
    std::vector<XmlToken> tokens;
    std::size_t i = 0;
    const std::size_t n = xml.size();
    while (i < n) {
        if (xml[i] != '<') {
            std::size_t lt = xml.find('<', i);
            if (lt == std::string_view::npos)
                lt = n;
            XmlToken t;
            t.kind = XmlToken::Kind::Text;
            t.text = decodeXmlEntities(xml.substr(i, lt - i));
            tokens.push_back(std::move(t));
            i = lt;
            continue;
        }
        std::string_view rest = xml.substr(i);
        if (rest.starts_with("<!--")) {
            std::size_t end = xml.find("-->", i + 4);
            if (end == std::string_view::npos)
                return std::nullopt;
            XmlToken t;
            t.kind = XmlToken::Kind::Comment;
            t.text = std::string(xml.substr(i + 4, end - i - 4));
            tokens.push_back(std::move(t));
            i = end + 3;
            continue;
        }
        if (rest.starts_with("<![CDATA[")) {
            std::size_t end = xml.find("]]>", i + 9);
            if (end == std::string_view::npos)
                return std::nullopt;
            XmlToken t;
            t.kind = XmlToken::Kind::Text;
            t.text = std::string(xml.substr(i + 9, end - i - 9));
            tokens.push_back(std::move(t));
            i = end + 3;
            continue;
        }
        if (rest.starts_with("<?") || rest.starts_with("<!")) {
            // Declarations and processing instructions carry nothing a manifest check needs.
            std::size_t end = xml.find('>', i);
            if (end == std::string_view::npos)
                return std::nullopt;
            i = end + 1;
            continue;
        }
        XmlToken t;
        ++i;
        if (i < n && xml[i] == '/') {
            t.kind = XmlToken::Kind::End;
            ++i;
        } else {
            t.kind = XmlToken::Kind::Start;
        }
        std::size_t nameStart = i;
        while (i < n && isNameChar(xml[i]))
            ++i;
        if (i == nameStart)
            return std::nullopt;
        t.name = std::string(xml.substr(nameStart, i - nameStart));
        for (;;) {
            while (i < n && isSpace(xml[i]))
                ++i;
            if (i >= n)
                return std::nullopt;
            if (xml[i] == '>') {
                ++i;
                break;
            }
            if (xml[i] == '/' && i + 1 < n && xml[i + 1] == '>') {
                t.selfClosing = true;
                i += 2;
                break;
            }
            if (t.kind == XmlToken::Kind::End)
                return std::nullopt;
            std::size_t attrStart = i;
            while (i < n && isNameChar(xml[i]))
                ++i;
            if (i == attrStart)
                return std::nullopt;
            std::string attr(xml.substr(attrStart, i - attrStart));
            while (i < n && isSpace(xml[i]))
                ++i;
            if (i >= n || xml[i] != '=')
                return std::nullopt;
            ++i;
            while (i < n && isSpace(xml[i]))
                ++i;
            if (i >= n || (xml[i] != '"' && xml[i] != '\''))
                return std::nullopt;
            char quote = xml[i++];
            std::size_t close = xml.find(quote, i);
            if (close == std::string_view::npos)
                return std::nullopt;
            t.attributes[attr] = decodeXmlEntities(xml.substr(i, close - i));
            i = close + 1;
        }
        tokens.push_back(std::move(t));
    }
    return tokens;
}

} // namespace lumora
