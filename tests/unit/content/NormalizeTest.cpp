// normalizeHTML and its companions: the order of the fix-ups, what they leave alone, and the
// nineteen characters turned into entities.
#include "content/Normalize.h"

#include "base/TextUtil.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// The fix-ups in the order they apply: tag renames, table flattening, then the nineteen
// characters turned into entities.
const std::vector<std::pair<std::string, std::string>> kSteps = {
    {"<STRONG>", "<b>"},
    {"</STRONG>", "</b>"},
    {"<EM>", "<i>"},
    {"</EM>", "</i>"},
    {"<br><TBODY><br><TR><br>", "<TR>"},
    {"</TR><br><TR><br>", "</TR><TR>"},
    {"</TBODY>", ""},
    {"<P><TABLE", "<TABLE"},
    {"</TABLE></P>", "</TABLE>"},
    {"<br><P><br>", "<P>"},
    {"\xE2\x82\xAC", "&euro;"},
    {"\xE2\x80\xA0", "&dagger;"},
    {"\xE2\x80\x94", "&mdash;"},
    {"\xE2\x84\xA2", "&trade;"},
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
    {"\xC3\xB7", "&divide;"}};

// The table applied the plain way, one full replace-all pass per step in order.
std::string normalizeStepByStep(std::string text) {
    for (const auto& [find, replace] : kSteps)
        text = replaceAll(std::move(text), find, replace);
    return text;
}

TEST(NormalizeHTML, FixUpsAndWhatTheyLeaveAlone) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"<STRONG>a</STRONG> <EM>b</EM>", "<b>a</b> <i>b</i>"},
        {"<strong>a</strong><Em>b</Em>", "<strong>a</strong><Em>b</Em>"},
        // An upper-case opening tag closed in lower case: only the opening tag changes.
        {"<STRONG>x</strong>", "<b>x</strong>"},
        {"<P><TABLE border=1 width=\"50%\"><br><TBODY><br><TR><br><TD>a</TD></TR><br><TR><br>"
         "<TD>b</TD></TR></TBODY></TABLE></P>",
         "<TABLE border=1 width=\"50%\"><TR><TD>a</TD></TR><TR><TD>b</TD></TR></TABLE>"},
        // An opening TBODY survives without its "<br>" frame or with attributes; every
        // closing one goes.
        {"<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE>",
         "<TABLE><TBODY><TR><TD>a</TD></TR></TABLE>"},
        {"<br><TBODY class=x><br><TR><br></TBODY>", "<br><TBODY class=x><br><TR><br>"},
        {"<tbody></tbody></TBODY>", "<tbody></tbody>"},
        // Step order decides overlapping patterns: removing "</TBODY>" first lets a later step
        // see "</TABLE></P>", but a "<P><TABLE" made by the last tag step comes too late.
        {"<br><TBODY><br><TR><br><STRONG>a</STRONG></TR><br><TR><br>", "<TR><b>a</b></TR><TR>"},
        {"<P><TABLE></TABLE></TBODY></P>", "<TABLE></TABLE>"},
        {"<br><P><br><TABLE>", "<P><TABLE>"},
        // Not idempotent around paragraphs.
        {"<br><br><P><br><br>", "<br><P><br>"},
        {"<br><P><br>", "<P>"},
        // En dash, double dagger, curly quotes, bullet, no-break space, accented letters stay,
        // and so do existing entities.
        {"\xE2\x80\x93\xE2\x80\xA1\xE2\x80\x9C\xE2\x80\x9D\xE2\x80\xA2\xC2\xA0\xC3\xA9\xC3\x96",
         "\xE2\x80\x93\xE2\x80\xA1\xE2\x80\x9C\xE2\x80\x9D\xE2\x80\xA2\xC2\xA0\xC3\xA9\xC3\x96"},
        {"&euro;\xE2\x82\xAC&amp;", "&euro;&euro;&amp;"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(normalizeHTML(in), out) << in;
    // Each of the nineteen characters on its own.
    for (std::size_t i = 10; i < kSteps.size(); ++i)
        EXPECT_EQ(normalizeHTML("a" + kSteps[i].first + "b"), "a" + kSteps[i].second + "b");
}

TEST(NormalizeHTML, MatchesStepByStepReplacementOnArbitraryMarkup) {
    // Fragments that build, split and overlap the patterns, plus stray UTF-8 bytes.
    const std::vector<std::string> pieces{
        "<",        "<STRONG>",     "</STRONG>", "<EM>",  "</EM>",    "STRONG>", "EM>",
        "<br>",     "<TBODY>",      "<TR>",      "</TR>", "</TBODY>", "<P>",     "</P>",
        "<TABLE",   "</TABLE>",     ">",         "x",     "/",        "\xE2",    "\x82",
        "\xAC",     "\xE2\x80",     "\xA0",      "\x94",  "\xC2",     "\xC3",    "\xB7",
        "\xC2\xA9", "\xE2\x84\xA2", "\xC3\x97",  "&euro;"};
    std::mt19937 random(20240601);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    for (int round = 0; round < 3000; ++round) {
        std::string html;
        for (int i = 0; i < 12; ++i)
            html += pieces[pick(random)];
        ASSERT_EQ(normalizeHTML(html), normalizeStepByStep(html)) << html;
    }
}

// blankIfEmpty: only the three empty shapes become empty. stripParagraphs: upper-case
// paragraphs and "&nbsp;" go. stripOuterParagraph: one bare paragraph tag at each end goes (an
// opening tag with attributes is not bare; the closing tag still goes).
TEST(NormalizeHelpers, EmptyShapesAndParagraphs) {
    const struct {
        std::string (*fn)(const std::string&);
        const char* in;
        const char* out;
    } cases[] = {
        {blankIfEmpty, " ", ""},
        {blankIfEmpty, "&nbsp;", ""},
        {blankIfEmpty, "<P>&nbsp;</P>", ""},
        {blankIfEmpty, "<p>&nbsp;</p>", "<p>&nbsp;</p>"},
        {blankIfEmpty, "<P>&nbsp;</P><P>&nbsp;</P>", "<P>&nbsp;</P><P>&nbsp;</P>"},
        {blankIfEmpty, "  ", "  "},
        {stripParagraphs, "<P>What&nbsp;is <b>it</b>?</P><P>&nbsp;</P>", "Whatis <b>it</b>?"},
        {stripParagraphs, "<p>kept</p>", "<p>kept</p>"},
        {stripOuterParagraph, "<P>text</P>", "text"},
        {stripOuterParagraph, "<p>a\r\nb</p>", "ab"},
        {stripOuterParagraph, "<P><P>x</P></P>", "<P>x</P>"},
        {stripOuterParagraph, "<P align=center>x</P>", "<P align=center>x"},
        {stripOuterParagraph, "<p>", ""},
        {stripOuterParagraph, "</p>", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.fn(c.in), c.out) << c.in;
}

} // namespace
} // namespace lumora
