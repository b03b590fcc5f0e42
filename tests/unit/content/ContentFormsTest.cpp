// Stored form <-> editor form of content: media paths, activity placeholders and the script
// string wrappers, both ways.
#include "content/ContentForms.h"

#include "storage/Paths.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora {
namespace {

const std::string kStoredThree =
    "<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(3));</SCRIPT>";

class ContentForms : public ::testing::Test {
  protected:
    ContentPaths paths{std::string(1, kSep) + "ws" + kSep + "My Course",
                       std::string(1, kSep) + "opt" + kSep + "lumora"};
    std::string media = paths.moduleFolder + kSep + "media" + kSep;
    std::string start =
        "<IMG src=\"" + paths.installFolder + kSep + "app" + kSep + "QAndAStart.gif\">";
    std::string end = "<IMG src=\"" + paths.installFolder + kSep + "app" + kSep + "QAndAEnd.gif\">";
};

TEST_F(ContentForms, ActivityReferenceRoundTripsAndIsSavedInUpperCase) {
    const std::string stored = "<P>Before</P>" + kStoredThree + "<P>After</P>";
    const std::string editor = toEditorHTML(stored, paths);
    EXPECT_EQ(editor, "<P>Before</P>" + start + "3" + end + "<P>After</P>");
    EXPECT_EQ(activityPlaceholder(paths, 12), start + "12" + end);
    EXPECT_EQ(toStoredHTML(editor, paths), stored);

    const std::string lower = "<script language=\"JavaScript\">document.write(parentRef."
                              "writeActivityHTML(3));</script>";
    EXPECT_EQ(toEditorHTML(lower, paths), start + "3" + end);
    EXPECT_EQ(toStoredHTML(toEditorHTML(lower, paths), paths), kStoredThree);
    // Start and end texts are converted independently of each other.
    EXPECT_EQ(toEditorHTML("<script>f(g());</script>", paths), "<script>f(g(" + end);
}

TEST_F(ContentForms, MediaPathsBecomeAbsoluteAndComeBack) {
    const std::string stored = "<IMG src=\"media/photo 1.png\"><A href=\"media/doc.pdf\">d</A>";
    const std::string editor = toEditorHTML(stored, paths);
    EXPECT_EQ(editor,
              "<IMG src=\"" + media + "photo 1.png\"><A href=\"" + media + "doc.pdf\">d</A>");
    EXPECT_EQ(toStoredHTML(editor, paths), stored);
    // Only attribute values are made absolute: plain text mentioning media/ stays.
    EXPECT_EQ(toEditorHTML("see media/x.png", paths), "see media/x.png");
}

TEST_F(ContentForms, StoredFormAcceptsOtherSlashFormAndFileUrls) {
    const std::string other = otherSlashForm(media);
    EXPECT_EQ(toStoredHTML("<IMG src=\"" + other + "a.gif\">", paths), "<IMG src=\"media/a.gif\">");

    std::string urlPath = media;
    for (char& c : urlPath)
        if (c == '\\')
            c = '/';
    if (urlPath.front() != '/')
        urlPath.insert(0, "/");
    EXPECT_EQ(toStoredHTML("<IMG src=\"file://" + urlPath + "a.gif\">", paths),
              "<IMG src=\"media/a.gif\">");
    // A browser escapes the blank of "My Course".
    std::string escaped = urlPath;
    escaped.replace(escaped.find(' '), 1, "%20");
    EXPECT_EQ(toStoredHTML("<IMG src=\"file://" + escaped + "b.gif\">", paths),
              "<IMG src=\"media/b.gif\">");
    // Paths elsewhere only lose the scheme; the third slash stays.
    EXPECT_EQ(toStoredHTML("<IMG src=\"file:///elsewhere/c.gif\">", paths),
              "<IMG src=\"/elsewhere/c.gif\">");
}

TEST_F(ContentForms, ScriptStringEscapesOnlyQuotesAndLineBreaks) {
    const std::string editor = "Say \"hi\"\r\n<IMG src=\"" + media + "x.png\">";
    const std::string literal = toScriptString(editor, paths);
    EXPECT_EQ(literal, "Say \\\"hi\\\"<br><IMG src=\\\"media/x.png\\\">");
    EXPECT_EQ(fromScriptString(literal, paths), editor);
    EXPECT_EQ(toScriptString("a\\b 'c'\rd\ne", paths), "a\\b 'c'\rd\ne");
    // A typed "<br>" and a line break read back the same.
    EXPECT_EQ(fromScriptString("one<br>two", paths), "one\r\ntwo");
}

// The control's line breaks become "<br>", which the table fix-ups then remove; an
// empty-looking string reads as empty (which shapes are empty: blankIfEmpty's table).
TEST_F(ContentForms, TablesAreFlattenedAndEmptyLookingScriptStringsReadAsEmpty) {
    EXPECT_EQ(
        toScriptString("<TABLE>\r\n<TBODY>\r\n<TR>\r\n<TD>x</TD></TR></TBODY></TABLE>", paths),
        "<TABLE><TR><TD>x</TD></TR></TABLE>");
    EXPECT_EQ(fromScriptString("<P>&nbsp;</P>", paths), "");
    EXPECT_EQ(fromScriptString("<P>&nbsp;</P><br>", paths), "<P>&nbsp;</P>\r\n");
}

TEST(GetFileName, SplitsAtSlashFirstThenBackslash) {
    EXPECT_EQ(getFileName("C:\\pics\\a.png"), "a.png");
    EXPECT_EQ(getFileName("http://x.org/dir/b.gif"), "b.gif");
    // With a slash present, back-slashes are part of the name.
    EXPECT_EQ(getFileName("dir/sub\\c.gif"), "sub\\c.gif");
    EXPECT_EQ(getFileName("plain.txt"), "plain.txt");
    EXPECT_EQ(getFileName("folder/"), "");
    EXPECT_EQ(getFileName(""), "");
}

} // namespace
} // namespace lumora
