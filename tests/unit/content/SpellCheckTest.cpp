// The spell checker's view of a block: which words it reads (never markup or references in
// HTML), how the author's answers rewrite the block, the sentence shown around a word, and
// the limit on how much longer corrections may make the block.
#include "content/SpellCheckRun.h"
#include "content/SpellWords.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace lumora {
namespace {

std::vector<std::string> words(const std::string& text, bool html) {
    std::vector<std::string> out;
    std::size_t from = 0;
    while (const auto span = nextWord(text, from, html)) {
        out.push_back(text.substr(span->start, span->end - span->start));
        from = span->end;
    }
    return out;
}

TEST(SpellWords, WordsOfABlock) {
    using W = std::vector<std::string>;
    const struct {
        std::string text;
        bool html;
        W expected;
    } cases[] = {
        {"<P class=\"intro\" title=\"Teh\">The <B>operatr</B> signs&nbsp;it</P>",
         true,
         {"The", "operatr", "signs", "it"}},
        {"<SCRIPT language=JavaScript>var teh = '<P>wrd';</SCRIPT >Word<!-- commnt <b> -->"
         "<style>p { colr: red }</style><script>x</scripts></script> end",
         true,
         {"Word", "end"}},
        {"<IMG alt=\"a > b\" title='it''s'>after <A href=x'y>link</A>", true, {"after", "link"}},
        {"AT&amp;T caf&eacute; &#233;t&#xE9; a & b", true, {"AT", "T", "caf", "t", "a", "b"}},
        {"a < b <3 </ c> x</", true, {"a", "b", "c", "x"}},
        {"word <B unclosed tag words", true, {"word"}},
        {"<!DOCTYPE html><?xml x?><P>ok</P>", true, {"ok"}},
        {"<B>bold</B> &nbsp;", false, {"B", "bold", "B", "nbsp"}},
        {"Don't lock-out the 50mg dose, 2nd time 3-4 x2",
         false,
         {"Don't", "lock-out", "the", "dose", "time"}},
        {"'quoted' instructors' rock'n'roll don\xE2\x80\x99t",
         false,
         {"quoted", "instructors", "rock'n'roll", "don\xE2\x80\x99t"}},
        {"-dash- well--known re-\nenter e-mail",
         false,
         {"dash", "well", "known", "re", "enter", "e-mail"}},
        {"Z\xC3\xBCrich\xE2\x80\x94Gen\xC3\xA8ve \xC2\xABStra\xC3\x9F"
         "e\xC2\xBB \xD0\x9C\xD0\xB8\xD1\x80",
         false,
         {"Z\xC3\xBCrich", "Gen\xC3\xA8ve",
          "Stra\xC3\x9F"
          "e",
          "\xD0\x9C\xD0\xB8\xD1\x80"}},
        {"ab\xFF"
         "cd \xE2\x82"
         "ef \xF0\x9F\x98\x80gh",
         false,
         {"ab", "cd", "ef", "gh"}},
        {std::string(64, 'a') + " " + std::string(65, 'b') + " c",
         false,
         {std::string(64, 'a'), "c"}},
        {"", true, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(words(c.text, c.html), c.expected) << c.text;
}

// The answers a test gives, one per doubtful word: "change:TO", "all:TO", "ignore", "ignoreAll".
struct Scenario {
    std::string block;
    bool html;
    std::vector<std::string> answers;
    std::vector<std::string> asked;
    std::string result;
};

void play(const Scenario& s, const std::set<std::string>& doubtful) {
    SpellCheckRun run(s.block, s.html, [&](const std::string& w) { return !doubtful.count(w); });
    std::vector<std::string> asked;
    bool more = run.next();
    for (const std::string& a : s.answers) {
        ASSERT_TRUE(more) << "no word left for " << a << " in " << s.block;
        asked.push_back(run.word());
        if (a.rfind("change:", 0) == 0)
            more = run.change(a.substr(7));
        else if (a.rfind("all:", 0) == 0)
            more = run.changeAll(a.substr(4));
        else if (a == "ignore")
            more = run.ignore();
        else
            more = run.ignoreAll();
    }
    EXPECT_FALSE(more) << "words left after the answers in " << s.block;
    EXPECT_EQ(asked, s.asked) << s.block;
    EXPECT_EQ(run.text(), s.result) << s.block;
}

TEST(SpellCheckRun, AnswersRewriteTheBlock) {
    const std::set<std::string> doubtful = {"Teh", "permitt", "permitts", "n", "aa"};
    const std::string grown(90, 'g');
    const Scenario scenarios[] = {
        // Change one occurrence, Change All the later ones, markup and attributes untouched.
        {"<P title=\"permitt\">Teh permitt is <B>signed</B>. Teh <I>permitt</I> is kept.</P>",
         true,
         {"change:The", "all:permit", "ignore"},
         {"Teh", "permitt", "Teh"},
         "<P title=\"permitt\">The permit is <B>signed</B>. Teh <I>permit</I> is kept.</P>"},
        // Change All leaves earlier occurrences and other words that start the same alone.
        {"permitt permitt permitts permitt",
         false,
         {"ignore", "all:permit", "ignore"},
         {"permitt", "permitt", "permitts"},
         "permitt permit permitts permit"},
        // Ignore All passes every later occurrence; nothing changes.
        {"Teh a Teh b Teh", false, {"ignoreAll"}, {"Teh"}, "Teh a Teh b Teh"},
        // A correction is text: in HTML written as HTML text, in plain text as typed.
        {"<P>fish n chips n peas</P>",
         true,
         {"change:&", "change:<b>"},
         {"n", "n"},
         "<P>fish &amp; chips &lt;b&gt; peas</P>"},
        {"fish n chips", false, {"change:&"}, {"n"}, "fish & chips"},
        // Corrections add at most 200 characters: the third is cut to the room left.
        {"<P>aa aa aa</P>",
         true,
         {"all:" + grown},
         {"aa"},
         "<P>" + grown + " " + grown + " " + grown.substr(0, 26) + "</P>"},
        // A shorter correction gives room back; an escaped character is never cut in half.
        {"aa " + std::string(150, 'x') + " aa aa",
         true,
         {"change:" + std::string(199, 'y'), "change:", "change:" + std::string(7, '&')},
         {"aa", "aa", "aa"},
         std::string(199, 'y') + " " + std::string(150, 'x') + "  &amp;"},
    };
    for (const Scenario& s : scenarios)
        play(s, doubtful);
}

TEST(SpellCheckRun, SentenceAroundTheWord) {
    const struct {
        std::string block;
        bool html;
        SpellContext expected;
    } cases[] = {
        {"<P>First one. The operatr <B>signs</B> the permit&nbsp;now. Next one.</P>",
         true,
         {"The ", "operatr", " signs the permit now."}},
        {"<TABLE><TR><TD>cell one</TD><TD>A operatr</TD></TR></TABLE>after",
         true,
         {"A ", "operatr", ""}},
        {"Line one\r\noperatr here\r\nLine three", false, {"", "operatr", " here"}},
        {"<SCRIPT>long();</SCRIPT>" + std::string(50, 'w') + " " + std::string(50, 'v') +
             " operatr " + std::string(50, 'z') + " " + std::string(50, 'y'),
         true,
         {"\xE2\x80\xA6" + std::string(50, 'v') + " ", "operatr",
          " " + std::string(50, 'z') + "\xE2\x80\xA6"}},
    };
    for (const auto& c : cases) {
        SpellCheckRun run(c.block, c.html, [](const std::string& w) { return w != "operatr"; });
        ASSERT_TRUE(run.next()) << c.block;
        const SpellContext got = run.context();
        EXPECT_EQ(got.before, c.expected.before) << c.block;
        EXPECT_EQ(got.word, c.expected.word) << c.block;
        EXPECT_EQ(got.after, c.expected.after) << c.block;
    }
}

TEST(SpellCheckRun, SentenceShowsEarlierCorrections) {
    SpellCheckRun run("<P>Teh big operatr.</P>", true,
                      [](const std::string& w) { return w != "Teh" && w != "operatr"; });
    ASSERT_TRUE(run.next());
    ASSERT_TRUE(run.change("The"));
    EXPECT_EQ(run.context().before, "The big ");
}

TEST(SpellCheckRun, AsksTheEngineOncePerDistinctWord) {
    std::string block;
    for (int i = 0; i < 500; ++i)
        block += "<P>the safe operatr</P>";
    std::vector<std::string> asked;
    SpellCheckRun run(block, true, [&](const std::string& w) {
        asked.push_back(w);
        return w != "operatr";
    });
    ASSERT_TRUE(run.next());
    ASSERT_TRUE(run.ignore());
    EXPECT_FALSE(run.ignoreAll());
    EXPECT_EQ(asked, (std::vector<std::string>{"the", "safe", "operatr"}));
    EXPECT_EQ(run.text(), block);
}

} // namespace
} // namespace lumora
