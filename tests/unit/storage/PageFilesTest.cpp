// Page files: content spliced between the marker lines of the template's skeleton.
#include "StorageFixture.h"

#include "storage/PageFiles.h"
#include "storage/TextFile.h"

#include <utility>
#include <vector>

namespace lumora::test {
namespace {

TEST(PageFileText, ContentReplacesWhatTheSkeletonHoldsBetweenTheMarkers) {
    EXPECT_EQ(buildPageFile(
                  {"head", "<x><LUMApageContent>", "sample", "more", "</LUMApageContent>", "tail"},
                  "A\r\nB"),
              "head\r\n<x><LUMApageContent>\r\nA\r\nB\r\n</LUMApageContent>\r\ntail\r\n");
    // Without markers the skeleton is copied whole and the content has nowhere to go.
    EXPECT_EQ(buildPageFile({"a", "b"}, "lost"), "a\r\nb\r\n");
}

TEST(PageFileText, LineWithBothMarkersIsWrittenThenTheContent) {
    // Copying stays off after such a line until a later line holds an end marker.
    EXPECT_EQ(buildPageFile({"<LUMApageContent>old</LUMApageContent>", "dropped",
                             "</LUMApageContent>", "end"},
                            "C"),
              "<LUMApageContent>old</LUMApageContent>\r\nC\r\n</LUMApageContent>\r\nend\r\n");
}

// Lines split at LF (a CR before it dropped); reading starts after the first line holding the
// start marker and stops at the first line holding the end marker; every line read is written
// back with CR LF.
TEST(PageFileText, ReadingTakesTheLinesBetweenTheMarkerLines) {
    const std::pair<std::string, std::string> cases[] = {
        {"x\r\n<LUMApageContent>\r\na\r\n\nb\r\n</LUMApageContent>\r\nafter\r\n", "a\r\n\r\nb\r\n"},
        // Without an end marker the content runs to the end of the file, last line included;
        // LF-only lines get CR LF and a lone CR stays inside its line.
        {"<LUMApageContent>\na\rb\r\nc", "a\rb\r\nc\r\n"},
        // The end marker's line ends the reading: inside the content, first, or with both.
        {"<LUMApageContent>\r\na\r\n<P></LUMApageContent></P>\r\nb\r\n</LUMApageContent>\r\n",
         "a\r\n"},
        {"</LUMApageContent>\r\n<LUMApageContent>\r\nx\r\n", ""},
        {"<LUMApageContent></LUMApageContent>\r\nx\r\n", ""},
        {"no start\r\na\r\n</LUMApageContent>", ""},
        {"<LUMApageContent>", ""},
        // A CR doubled before the LF: one goes with the line break, the other stays in the line.
        {"<LUMApageContent>\r\r\nx\r\r\n\r</LUMApageContent>", "x\r\r\n"},
        // The last line without an LF keeps its CR.
        {"<LUMApageContent>\na\r", "a\r\r\n"},
    };
    for (const auto& [text, content] : cases)
        EXPECT_EQ(contentBetweenMarkers(text), content) << text;
}

// Content goes out with its media paths relative and comes back absolute with one line break
// added; saving what was read changes nothing.
TEST_F(StorageTest, PageFilesSettleAfterOneRound) {
    CourseModule m = makeModule(kLesson);
    const std::string editor =
        "<IMG src=\"" + joinPath(joinPath(paths.moduleFolder, "media"), "a.png") + "\">";
    m.pages = {LessonPage{"page0.html", "", editor}};
    WritePageFile(m, 0, paths);
    const std::string first = readBytes(moduleFile("page0.html"));
    EXPECT_NE(first.find("\r\n<IMG src=\"media/a.png\">\r\n"), std::string::npos);
    for (int round = 0; round < 3; ++round) {
        m.pages[0].content = ReadPageContent(m, 0, paths);
        EXPECT_EQ(m.pages[0].content, editor + "\r\n");
        WritePageFile(m, 0, paths);
    }
    EXPECT_EQ(readBytes(moduleFile("page0.html")), first);

    // A page file deleted by hand is recreated from the skeleton, which must be there.
    fs::remove(moduleFile("page0.html"));
    fs::remove(fs::path(m.templateFolder) / "page0.html");
    EXPECT_THROW(WritePageFile(m, 0, paths), FileError);
    EXPECT_THROW(LoadPageContent(m, 0, paths), FileError);
}

} // namespace
} // namespace lumora::test
