// Markup, references and escaping over page HTML; see HtmlScan.h.
#include "content/HtmlScan.h"

#include <array>
#include <utility>

namespace lumora {

namespace {

bool isAsciiAlpha(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isAsciiDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

char lowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lowerAscii(a[i]) != lowerAscii(b[i]))
            return false;
    return true;
}

void appendUtf8(std::string& out, char32_t cp) {
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

// The end of the tag that starts at `pos` (its "<"), after its ">". A quote opens a value only
// right after "=", as in HTML, so an apostrophe in an unquoted value does not swallow the page.
std::size_t tagEnd(std::string_view text, std::size_t pos) {
    char quote = 0;
    bool afterEquals = false;
    for (std::size_t i = pos + 1; i < text.size(); ++i) {
        const char c = text[i];
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (c == '>') {
            return i + 1;
        } else if (afterEquals && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == '=') {
            afterEquals = true;
            continue;
        }
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
            afterEquals = false;
    }
    return text.size();
}

// The tag's name, after "<" or "</".
std::string_view tagName(std::string_view markup) {
    std::size_t start = 1;
    if (start < markup.size() && markup[start] == '/')
        ++start;
    std::size_t end = start;
    while (end < markup.size() && (isAsciiAlpha(markup[end]) || isAsciiDigit(markup[end])))
        ++end;
    return markup.substr(start, end - start);
}

// The end of a script or style element whose opening tag ends at `from`: after its closing tag.
std::size_t rawTextEnd(std::string_view text, std::size_t from, std::string_view name) {
    for (std::size_t p = text.find("</", from); p != std::string_view::npos;
         p = text.find("</", p + 2)) {
        if (equalsIgnoringCase(tagName(text.substr(p, name.size() + 3)), name))
            return tagEnd(text, p);
    }
    return text.size();
}

} // namespace

Utf8Char utf8At(std::string_view text, std::size_t pos) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(pos);
    if (lead < 0x80)
        return {lead, 1};
    std::size_t length = 0;
    char32_t cp = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, cp = lead & 0x1F, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, cp = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, cp = lead & 0x07, least = 0x10000;
    } else {
        return {0xFFFD, 1};
    }
    if (pos + length > text.size())
        return {0xFFFD, 1};
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80)
            return {0xFFFD, 1};
        cp = (cp << 6) | (byte(pos + i) & 0x3F);
    }
    if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        return {0xFFFD, 1};
    return {cp, length};
}

std::size_t utf8Length(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t pos = 0; pos < text.size(); pos += utf8At(text, pos).length)
        ++count;
    return count;
}

std::size_t markupEnd(std::string_view text, std::size_t pos) {
    if (pos + 1 >= text.size() || text[pos] != '<')
        return pos;
    const char next = text[pos + 1];
    if (text.substr(pos, 4) == "<!--") {
        const std::size_t close = text.find("-->", pos + 4);
        return close == std::string_view::npos ? text.size() : close + 3;
    }
    if (next == '!' || next == '?') {
        const std::size_t close = text.find('>', pos + 2);
        return close == std::string_view::npos ? text.size() : close + 1;
    }
    if (next == '/')
        return pos + 2 < text.size() && isAsciiAlpha(text[pos + 2]) ? tagEnd(text, pos) : pos;
    if (!isAsciiAlpha(next))
        return pos;
    const std::size_t end = tagEnd(text, pos);
    const std::string_view name = tagName(text.substr(pos, end - pos));
    if (equalsIgnoringCase(name, "script") || equalsIgnoringCase(name, "style"))
        return rawTextEnd(text, end, name);
    return end;
}

std::size_t entityEnd(std::string_view text, std::size_t pos) {
    if (pos >= text.size() || text[pos] != '&')
        return pos;
    std::size_t i = pos + 1;
    std::size_t digits = 0;
    if (i < text.size() && text[i] == '#') {
        ++i;
        const bool hex = i < text.size() && (text[i] == 'x' || text[i] == 'X');
        if (hex)
            ++i;
        while (i < text.size() && digits < 8 && (hex ? isHexDigit(text[i]) : isAsciiDigit(text[i])))
            ++i, ++digits;
    } else {
        while (i < text.size() && digits < 32 &&
               (isAsciiAlpha(text[i]) || (digits > 0 && isAsciiDigit(text[i]))))
            ++i, ++digits;
    }
    return digits > 0 && i < text.size() && text[i] == ';' ? i + 1 : pos;
}

bool breaksText(std::string_view markup) {
    static constexpr std::array<std::string_view, 30> kBreaking = {
        "p",  "div", "br",      "td",         "th",  "tr", "table",  "tbody",   "thead",  "tfoot",
        "li", "ul",  "ol",      "dl",         "dt",  "dd", "h1",     "h2",      "h3",     "h4",
        "h5", "h6",  "caption", "blockquote", "pre", "hr", "center", "address", "script", "style"};
    if (markup.size() < 2 || markup[0] != '<')
        return false;
    const std::string_view name = tagName(markup);
    for (std::string_view b : kBreaking)
        if (equalsIgnoringCase(name, b))
            return true;
    return false;
}

std::string entityText(std::string_view entity) {
    if (entity.size() < 3 || entity.front() != '&' || entity.back() != ';')
        return std::string(entity);
    const std::string_view body = entity.substr(1, entity.size() - 2);
    if (body[0] == '#') {
        const bool hex = body.size() > 1 && (body[1] == 'x' || body[1] == 'X');
        char32_t cp = 0;
        for (std::size_t i = hex ? 2 : 1; i < body.size(); ++i) {
            const char c = body[i];
            const char32_t digit = isAsciiDigit(c)
                                       ? static_cast<char32_t>(c - '0')
                                       : static_cast<char32_t>(lowerAscii(c) - 'a' + 10);
            cp = cp * (hex ? 16 : 10) + digit;
        }
        if (cp == 0 || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
            cp = 0xFFFD;
        std::string out;
        appendUtf8(out, cp);
        return out;
    }
    // The references the editing widget and the page normalisation write, and a few common ones.
    static constexpr std::pair<std::string_view, char32_t> kNamed[] = {
        {"nbsp", 0xA0},    {"amp", '&'},      {"lt", '<'},        {"gt", '>'},
        {"quot", '"'},     {"apos", '\''},    {"euro", 0x20AC},   {"dagger", 0x2020},
        {"mdash", 0x2014}, {"ndash", 0x2013}, {"trade", 0x2122},  {"cent", 0xA2},
        {"pound", 0xA3},   {"yen", 0xA5},     {"sect", 0xA7},     {"copy", 0xA9},
        {"reg", 0xAE},     {"deg", 0xB0},     {"plusmn", 0xB1},   {"micro", 0xB5},
        {"para", 0xB6},    {"frac14", 0xBC},  {"frac12", 0xBD},   {"frac34", 0xBE},
        {"times", 0xD7},   {"divide", 0xF7},  {"hellip", 0x2026}, {"lsquo", 0x2018},
        {"rsquo", 0x2019}, {"ldquo", 0x201C}, {"rdquo", 0x201D},  {"bull", 0x2022}};
    for (const auto& [name, cp] : kNamed) {
        if (body == name) {
            std::string out;
            appendUtf8(out, cp);
            return out;
        }
    }
    return std::string(entity);
}

std::string escapeHtmlText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '\xC2' && i + 1 < text.size() && text[i + 1] == '\xA0')
            out += "&nbsp;", ++i;
        else
            out += c;
    }
    return out;
}

} // namespace lumora
