// Links around a selection, the copy of media files into a module, and the spell check block.
#include "content/EditingText.h"
#include "content/ListOps.h"
#include "content/MediaInsertion.h"
#include "content/SpellCheckBlock.h"
#include "storage/TextFile.h"
#include "support/ScriptedPrompt.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

using testing::readBytes;
using testing::TempDir;
using testing::writeBytes;
namespace fs = std::filesystem;

TEST(EditingText, LinksTakeTheSelectionOrTheAddressesFileName) {
    struct Row {
        std::string address, text, html;
    };
    const std::vector<Row> rows = {
        {"http://a.org/x/guide.html", "",
         "<a href=\"http://a.org/x/guide.html\" target=\"_new\">"
         "guide.html</a>"},
        {"  ", "here", "<a href=\"#\" target=\"_new\">here</a>"},
        {"b.html", "<P>one\r\ntwo</P>", "<a href=\"b.html\" target=\"_new\">onetwo</a>"},
        {"b.html", "<B>\"&</B>", "<a href=\"b.html\" target=\"_new\"><B>\"&</B></a>"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(makeLinkHTML(row.address, row.text), row.html) << row.address;
        const LinkFrame frame = linkFrame(row.address);
        EXPECT_EQ(frame.open + (row.text.empty() ? frame.emptyText : "T") + frame.close,
                  row.text.empty() ? row.html : makeLinkHTML(row.address, "T"));
    }
    EXPECT_EQ(linkTextOfSelection("<P>&nbsp;</P>"), "");
    EXPECT_EQ(linkTextOfSelection("<P>&nbsp;</P>\r\n"), "");
    EXPECT_EQ(linkTextOfSelection("<p>word</p>"), "word");
    EXPECT_EQ(linkTextOfSelection("<P align=center>a</P>"), "<P align=center>a");
}

// The choosers' links: the marked text goes between open and close; without one, the page's
// title or the term shows as text, markup in it escaped.
TEST(EditingText, PageAndTermLinkFrames) {
    const LinkFrame page = pageLinkFrame(3, "Q&A <intro>");
    EXPECT_EQ(page.open + "x" + page.close, "<A href=\"page3.html\">x</A>");
    EXPECT_EQ(page.emptyText, "Q&amp;A &lt;intro&gt;");
    const LinkFrame term = termLinkFrame(0, "R&D");
    EXPECT_EQ(term.open + "x" + term.close, termLinkHTML(0, "x"));
    EXPECT_EQ(term.emptyText, "R&amp;D");
}

TEST(MediaInsertion, NamesAndPictures) {
    EXPECT_EQ(mediaTargetName("my pic  1.png"), "my_pic__1.png");
    EXPECT_EQ(companionFolderName("page.old.htm"), "page_files");
    EXPECT_EQ(companionFolderName("README"), "README_files");
    for (const char* image : {"/m/a.gif", "/m/a.jpeg", "/m/a.jpg", "/m/a.png", "/m.jpgs/a.doc"})
        EXPECT_TRUE(showsAsImage(image)) << image;
    for (const char* linked : {"/m/a.GIF", "/m/a.PNG", "/m/a.swf", "/m/a.bmp"})
        EXPECT_FALSE(showsAsImage(linked)) << linked;
    EXPECT_EQ(imageHTML("/m/a.gif", ""), "<img src=\"/m/a.gif\" alt=\"\" border=0>");
    EXPECT_EQ(imageHTML("/m/a.gif", "Two\r\nlines <b>"),
              "<table border=0 cellpadding=0 cellspacing=0 width=1><tr><td>"
              "<img src=\"/m/a.gif\" alt=\"Twolines <b>\" border=0></td></tr>"
              "<tr><td align=center>Twolines <b></td></tr></table>");
}

// A copy that fails names the file and the reason, asks nothing and leaves the media file of
// the same name as it was.
TEST(MediaInsertion, AFailedCopyReportsTheFileAndKeepsTheOldMedia) {
    TempDir dir("media");
    const std::string module = (dir / "Course").string();
    writeBytes(dir / "Course/media/pic.png", "old");
    writeBytes(dir / "in/pic.png", "new");
    ::chmod((dir / "in/pic.png").c_str(), 0);
    const bool readable = static_cast<bool>(std::ifstream(dir / "in/pic.png"));
    fs::create_directories(dir / "in/folder.png");

    testing::ScriptedPrompt prompt;
    struct Row {
        std::string chosen, namedInError;
    };
    std::vector<Row> rows = {{(dir / "in/folder.png").string(), (dir / "in/folder.png").string()}};
    if (!readable) // a superuser reads anything
        rows.push_back({(dir / "in/pic.png").string(), (dir / "in/pic.png").string()});
    for (const Row& row : rows) {
        try {
            makeMediaHTML(row.chosen, module, prompt, "");
            ADD_FAILURE() << "no error for " << row.chosen;
        } catch (const FileError& e) {
            EXPECT_EQ(e.path(), row.namedInError);
            EXPECT_FALSE(e.reason().empty());
        }
    }
    EXPECT_TRUE(prompt.asked.empty());
    EXPECT_EQ(readBytes(dir / "Course/media/pic.png"), "old");
    EXPECT_FALSE(fs::exists(dir / "Course/media/pic.png.tmp-lumora"));

    // No media folder at all: the target is named.
    writeBytes(dir / "in/b.doc", "b");
    try {
        copyIntoMedia((dir / "in/b.doc").string(), (dir / "Other").string());
        ADD_FAILURE() << "copied into a missing media folder";
    } catch (const FileError& e) {
        EXPECT_EQ(e.path(), (dir / "Other/media/b.doc").string());
    }
}

TEST(SpellCheckBlock, BlockTableRefusalAndRoom) {
    EXPECT_EQ(spellingBlock("<P>a</P>\r\n<P>b\rc</P>\r\n"), "<P>a</P><P>b\rc</P>");
    EXPECT_TRUE(startsInTableBody("<TBODY><TR><TD>x"));
    EXPECT_TRUE(startsInTableBody("<tbody>"));
    EXPECT_FALSE(startsInTableBody("<TABLE><TBODY>"));
    EXPECT_FALSE(startsInTableBody("<TBOD"));

    const std::string block = "caf\xC3\xA9"; // four characters, five bytes
    const std::string longer(300, 'x');
    EXPECT_EQ(withinSpellingRoom(block, longer), std::string(204, 'x'));
    EXPECT_EQ(withinSpellingRoom(block, std::string(203, 'x') + "\xC3\xA9\xC3\xA9"),
              std::string(203, 'x') + "\xC3\xA9");
    EXPECT_EQ(withinSpellingRoom(block, "cafe"), "cafe");
}

} // namespace
} // namespace lumora
