// The offline help: the shipped folder is what its source makes, every reference in it leads
// somewhere, and the source markup and the reference check themselves do what they say.
#include "HelpFacts.h"
#include "HelpSource.h"

#include "content/ListOps.h"
#include "content/MediaInsertion.h"
#include "storage/Paths.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

namespace lumora::help {
namespace {

namespace fs = std::filesystem;
using lumora::testing::readBytes;
using lumora::testing::TempDir;
using lumora::testing::writeBytes;

const fs::path kSource = fs::path(LUMORA_SOURCE_DIR) / "docs/help/help.txt";
const fs::path kTemplate = fs::path(LUMORA_SOURCE_DIR) / "share/Templates/Lesson";

std::string joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const auto& l : lines)
        all += "\n  " + l;
    return all;
}

TEST(ShippedHelp, EveryReferenceResolvesAndItCoversTheTool) {
    const HelpFacts facts = scanHelpFolder((fs::path(LUMORA_DIST_DIR) / "Help").string());
    EXPECT_TRUE(facts.problems.empty()) << joined(facts.problems);
    EXPECT_GE(facts.pages, 12u);
    EXPECT_GE(facts.words, 3500u);
    EXPECT_GE(facts.terms, 12u);
    EXPECT_GE(facts.activities, 3u);
    EXPECT_GE(facts.pictures, 6u);
}

// share/Help is never edited by hand: written again from its source, not a byte changes.
TEST(ShippedHelp, IsWhatItsSourceMakes) {
    TempDir dir("help-build");
    const fs::path out = dir.path() / "Help";
    writeHelpFolder(readBytes(kSource), kTemplate.string(), out.string());
    const fs::path shipped = fs::path(LUMORA_SOURCE_DIR) / "share/Help";
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(out)) {
        if (!entry.is_regular_file())
            continue;
        const fs::path relative = fs::relative(entry.path(), out);
        EXPECT_EQ(readBytes(entry.path()), readBytes(shipped / relative))
            << relative << " differs: run cmake --build build --target write-help";
        ++files;
    }
    std::size_t shippedPages = 0;
    for (const auto& entry : fs::directory_iterator(shipped))
        shippedPages += entry.path().extension() == ".html" ? 1 : 0;
    EXPECT_EQ(files, shippedPages + 3) << "page files that the source no longer makes";
    for (const std::string& picture : picturesOf(readBytes(kSource)))
        EXPECT_TRUE(fs::is_regular_file(shipped / "media" / picture)) << picture;
}

// A one-page help with one term and one activity, written by the real writer.
const char* kSmallSource = "title: T\ncopyright: C\n"
                           "term Word\nIts meaning.\n"
                           "activity a radio\n? Q\n+ yes\n- no\n= because\n"
                           "page One\nA [[word]] and more.\n\n{activity a}\n"
                           "page Two\nBack to [one](page:One).\n";

TEST(HelpFacts, NamesEveryReferenceThatLeadsNowhere) {
    struct Case {
        const char* what;
        const char* added; // to page0's content
        const char* problem;
    };
    const Case cases[] = {
        {"none", "", ""},
        {"term", "<a onClick=\"parentRef.showGlossaryPopup('3', 240, 180);\">x</a>",
         "page0.html (One): a term link to term 3"},
        {"page", "<A href=\"page2.html\">x</A>", "page0.html (One): a page link to page 2"},
        {"activity", "<SCRIPT>document.write(parentRef.writeActivityHTML(2));</SCRIPT>",
         "page0.html (One): activity 2"},
        {"picture", "<img src=\"media/gone.png\">", "page0.html (One): a picture media/gone.png"},
        {"outside", "<img src=\"/tmp/a.png\">", "page0.html (One): a picture /tmp/a.png"},
    };
    for (const Case& c : cases) {
        TempDir dir("help-facts");
        const fs::path folder = dir.path() / "Help";
        writeHelpFolder(kSmallSource, kTemplate.string(), folder.string());
        const fs::path page = folder / "page0.html";
        std::string html = readBytes(page);
        html.insert(html.find("</LUMApageContent>"), std::string(c.added) + "\r\n");
        writeBytes(page, html);
        const HelpFacts facts = scanHelpFolder(folder.string());
        EXPECT_EQ(joined(facts.problems), *c.problem ? "\n  " + std::string(c.problem) : "")
            << c.what;
        EXPECT_EQ(facts.pages, 2u);
        EXPECT_EQ(facts.terms, 1u);
        EXPECT_EQ(facts.activities, 1u);
    }
}

TEST(HelpFacts, AnUnusedTermOrActivityIsAProblem) {
    TempDir dir("help-unused");
    const fs::path folder = dir.path() / "Help";
    std::string source = kSmallSource;
    source.replace(source.find("A [[word]]"), 10, "A word");
    source.replace(source.find("{activity a}"), 12, "");
    writeHelpFolder(source, kTemplate.string(), folder.string());
    EXPECT_EQ(joined(scanHelpFolder(folder.string()).problems),
              "\n  term Word is linked from no page\n  activity 1 is on no page");
}

TEST(HelpSource, MarkupBecomesWhatTheFormsInsert) {
    const ContentPaths paths{"/h/Help", "/h"};
    const std::string head = "term Word\nMeaning.\nactivity k checkbox\n? Q\n+ a\n"
                             "page First\nx\npage Q&A\n";
    struct Case {
        const char* text;
        std::string html;
    };
    const Case cases[] = {
        {"**bold** text", "<P><B>bold</B> text</P>"},
        {"a < b & c", "<P>a &lt; b &amp; c</P>"},
        {"two\nlines", "<P>two lines</P>"},
        {"see [[Word]]", "<P>see " + termLinkHTML(0, "Word") + "</P>"},
        {"see [[the word|word]]", "<P>see " + termLinkHTML(0, "the word") + "</P>"},
        {"go [to it](page:First)", "<P>go <A href=\"page0.html\">to it</A></P>"},
        {"[here](page:Q&A)", "<P><A href=\"page1.html\">here</A></P>"},
        {"## Part", "<H3>Part</H3>"},
        {"- a\n- b\n  more", "<UL><LI>a</LI><LI>b more</LI></UL>"},
        {"1. a\n2. b", "<OL><LI>a</LI><LI>b</LI></OL>"},
        {"![A form](f.png)",
         imageHTML("/h/Help" + std::string(1, kSep) + "media" + kSep + "f.png", "A form")},
        {"{activity k}", activityPlaceholder(paths, 1)},
    };
    for (const Case& c : cases) {
        const CourseModule m = parseHelpSource(head + c.text + "\n", paths);
        ASSERT_EQ(m.pages.size(), 2u);
        EXPECT_EQ(m.pages[1].content, "<H2>Q&amp;A</H2>\r\n" + c.html) << c.text;
    }
}

TEST(HelpSource, RefusesWhatWouldLeadNowhere) {
    const ContentPaths paths{"/h/Help", "/h"};
    const std::string head = "term Word\nMeaning.\nactivity k radio\n? Q\n+ a\npage P\n";
    const std::pair<std::string, std::string> cases[] = {
        {head + "[[Other]]", "line 7: no glossary term \"Other\""},
        {head + "[x](page:Nowhere)", "line 7: no page \"Nowhere\""},
        {head + "{activity z}", "line 7: no activity \"z\""},
        {head + "**open", "line 7: \"**\" without \"**\""},
        {"activity k yesno\n", "line 1: write: activity KEY radio|checkbox"},
        {"stray text\n", "line 1: text outside a term, an activity or a page"},
        {"page Only\nno terms\n", "line 2: the help needs pages, terms and activities"},
    };
    for (const auto& [source, message] : cases) {
        try {
            parseHelpSource(source, paths);
            ADD_FAILURE() << "accepted: " << source;
        } catch (const SourceError& e) {
            EXPECT_EQ(e.what(), message);
        }
    }
}

TEST(HelpFacts, CountsTheWordsAReaderSees) {
    const std::pair<const char*, std::size_t> cases[] = {
        {"<P>one two</P><P>three</P>", 3},
        {"<P>one</P><P>two</P>", 2},
        {"a&nbsp;b", 2},
        {"<B>bo</B>ld", 1},
        {"<SCRIPT>document.write(x(1));</SCRIPT>words here", 2},
        {"<IMG src=\"media/a.png\" alt=\"not counted\">", 0},
    };
    for (const auto& [html, words] : cases)
        EXPECT_EQ(countWords(html), words) << html;
}

} // namespace
} // namespace lumora::help
