// Normalisation of editor markup: tag fix-ups for the editing control's dialect, then named
// entities for the nineteen characters that must survive a script string and any code page.
#include "content/Normalize.h"

#include "base/TextUtil.h"

#include <array>
#include <cstring>
#include <string_view>

namespace lumora {
namespace {

struct Replacement {
    std::string_view find;
    std::string_view replace;
};

// Tag fix-ups, steps 1 to 4: the control's upper-case emphasis tags.
constexpr std::array<Replacement, 4> kTagRenames{{
    {"<STRONG>", "<b>"},
    {"</STRONG>", "</b>"},
    {"<EM>", "<i>"},
    {"</EM>", "</i>"},
}};

// Steps 5 to 10. The order matters: the TBODY and paragraph patterns only exist once line
// breaks have become "<br>", step 5 must run before step 6 consumes the "<TR><br>" they share,
// and removing "</TBODY>" can join "</TABLE></P>".
constexpr std::array<Replacement, 6> kTableFixups{{
    {"<br><TBODY><br><TR><br>", "<TR>"},
    {"</TR><br><TR><br>", "</TR><TR>"},
    {"</TBODY>", ""},
    {"<P><TABLE", "<TABLE"},
    {"</TABLE></P>", "</TABLE>"},
    {"<br><P><br>", "<P>"},
}};

// The characters the old single-byte code page could not round-trip through the player's
// scripts, as UTF-8, in the order they are replaced. Nothing else is converted.
// clang-format off
constexpr std::array<Replacement, 19> kEntities{{
    {"\xE2\x82\xAC", "&euro;"},   // U+20AC
    {"\xE2\x80\xA0", "&dagger;"}, // U+2020
    {"\xE2\x80\x94", "&mdash;"},  // U+2014
    {"\xE2\x84\xA2", "&trade;"},  // U+2122
    {"\xC2\xA2", "&cent;"},
    {"\xC2\xA3", "&pound;"},
    {"\xC2\xA5", "&yen;"},
    {"\xC2\xA7", "&sect;"},
    {"\xC2\xA9", "&copy;"},
    {"\xC2\xAE", "&reg;"},
    {"\xC2\xB0", "&deg;"},
    {"\xC2\xB1", "&plusmn;"},
    {"\xC2\xB5", "&micro;"},
    {"\xC2\xB6", "&para;"},
    {"\xC2\xBC", "&frac14;"},
    {"\xC2\xBD", "&frac12;"},
    {"\xC2\xBE", "&frac34;"},
    {"\xC3\x97", "&times;"},
    {"\xC3\xB7", "&divide;"},
}};
// clang-format on

template <std::size_t N>
std::string applyInOrder(std::string text, const std::array<Replacement, N>& steps) {
    for (const Replacement& step : steps)
        replaceAllIn(text, step.find, step.replace);
    return text;
}

// The same result as applyInOrder, in one scan and one copy, for tables whose patterns cannot
// overlap one another and whose replacements cannot form a pattern: then no step can create,
// hide or split a match of another, and replacing each match where it stands is equivalent.
// The character table qualifies: its patterns are whole UTF-8 sequences replaced by ASCII.
// The scan starts at the first byte that can begin a pattern, found with memchr: most content
// has none of these characters and is handed back untouched.
template <std::size_t N>
std::string applyDisjoint(std::string text, const std::array<Replacement, N>& steps) {
    std::array<bool, 256> starts{};
    std::size_t first = text.size();
    for (const Replacement& step : steps) {
        const auto lead = static_cast<unsigned char>(step.find.front());
        if (starts[lead])
            continue;
        starts[lead] = true;
        if (const void* hit = std::memchr(text.data(), lead, first))
            first = static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
    }

    std::string out;
    std::size_t copied = 0;
    const std::size_t size = text.size();
    for (std::size_t i = first; i < size; ++i) {
        if (!starts[static_cast<unsigned char>(text[i])])
            continue;
        const std::string_view rest(text.data() + i, size - i);
        for (const Replacement& step : steps) {
            // Every pattern here is at least two characters long.
            if (rest.size() < step.find.size() || rest[1] != step.find[1] ||
                !rest.starts_with(step.find))
                continue;
            if (out.empty())
                out.reserve(size + size / 16);
            out.append(text, copied, i - copied);
            out.append(step.replace);
            copied = i + step.find.size();
            i = copied - 1;
            break;
        }
    }
    if (copied == 0)
        return text;
    out.append(text, copied, std::string::npos);
    return out;
}

bool startsWithLower(std::string_view text, std::string_view lowerPrefix) {
    if (text.size() < lowerPrefix.size())
        return false;
    return toLowerAscii(std::string(text.substr(0, lowerPrefix.size()))) == lowerPrefix;
}

bool endsWithLower(std::string_view text, std::string_view lowerSuffix) {
    if (text.size() < lowerSuffix.size())
        return false;
    return toLowerAscii(std::string(text.substr(text.size() - lowerSuffix.size()))) == lowerSuffix;
}

} // namespace

std::string normalizeHTML(const std::string& html) {
    return normalizeHTML(std::string(html));
}

std::string normalizeHTML(std::string&& html) {
    // Each step is a search for a pattern's least common byte, so the tag renames are cheaper
    // as four passes than as one scan stopping at every '<'.
    std::string text = applyInOrder(std::move(html), kTagRenames);
    text = applyInOrder(std::move(text), kTableFixups);
    return applyDisjoint(std::move(text), kEntities);
}

namespace {

// What the editing control leaves behind when the author clears everything.
bool isEmptyShape(const std::string& html) {
    return html == " " || html == "&nbsp;" || html == "<P>&nbsp;</P>";
}

} // namespace

std::string blankIfEmpty(const std::string& html) {
    return isEmptyShape(html) ? std::string() : html;
}

std::string blankIfEmpty(std::string&& html) {
    return isEmptyShape(html) ? std::string() : std::move(html);
}

std::string stripParagraphs(const std::string& html) {
    std::string text = replaceAll(html, "<P>", "");
    text = replaceAll(std::move(text), "</P>", "");
    return replaceAll(std::move(text), "&nbsp;", "");
}

std::string stripOuterParagraph(const std::string& html) {
    std::string text = replaceAll(html, "\r\n", "");
    if (startsWithLower(text, "<p>"))
        text.erase(0, 3);
    if (endsWithLower(text, "</p>"))
        text.erase(text.size() - 4);
    return text;
}

} // namespace lumora
