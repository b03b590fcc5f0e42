// Page files: content spliced between the marker lines of the template's skeleton.
#include "StorageFixture.h"

#include "storage/PageFiles.h"
#include "storage/TextFile.h"

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

TEST(PageFileText, ReadingTakesTheLinesBetweenTheMarkers) {
    EXPECT_EQ(contentBetweenMarkers("x\r\n<LUMApageContent>\r\na\r\n\nb\r\n</LUMApageContent>\r\n"
                                    "after\r\n"),
              "a\r\n\r\nb\r\n");
    EXPECT_EQ(contentBetweenMarkers("no start\r\na\r\n</LUMApageContent>"), "");
    // Without an end marker the content runs to the end of the file, last line included.
    EXPECT_EQ(contentBetweenMarkers("<LUMApageContent>\na\rb\r\nc"), "a\rb\r\nc\r\n");
    // A content line that holds the end marker cuts the page short.
    EXPECT_EQ(contentBetweenMarkers("<LUMApageContent>\r\na\r\n<P></LUMApageContent></P>\r\nb\r\n"
                                    "</LUMApageContent>\r\n"),
              "a\r\n");
}

class PageFilesTest : public StorageTest {};

TEST_F(PageFilesTest, WriteThenReadAddsOneTrailingLineBreak) {
    CourseModule m = makeModule(kLesson);
    m.pages = {LessonPage{"page0.html", "", "<P>One</P>\r\n<P>Two</P>"}};
    WritePageFile(m, 0, paths);
    EXPECT_EQ(ReadPageContent(m, 0, paths), "<P>One</P>\r\n<P>Two</P>\r\n");
}

TEST_F(PageFilesTest, SavingWhatWasReadLeavesThePageFileAsItWas) {
    CourseModule m = makeModule(kLesson);
    m.pages = {LessonPage{"page0.html", "", "<P>One</P>"}};
    WritePageFile(m, 0, paths);
    const std::string first = readFileBytes(joinPath(m.ModuleFolder, "page0.html"));
    for (int round = 0; round < 3; ++round) {
        m.pages[0].content = ReadPageContent(m, 0, paths);
        WritePageFile(m, 0, paths);
    }
    EXPECT_EQ(readFileBytes(joinPath(m.ModuleFolder, "page0.html")), first);
    EXPECT_EQ(ReadPageContent(m, 0, paths), "<P>One</P>\r\n");
}

TEST_F(PageFilesTest, MediaPathsAreStoredRelativeAndReadBackAbsolute) {
    CourseModule m = makeModule(kLesson);
    const std::string editor =
        "<IMG src=\"" + joinPath(joinPath(paths.moduleFolder, "media"), "a.png") + "\">";
    m.pages = {LessonPage{"page0.html", "", editor}};
    WritePageFile(m, 0, paths);
    EXPECT_NE(readBytes(moduleFile("page0.html")).find("\r\n<IMG src=\"media/a.png\">\r\n"),
              std::string::npos);
    EXPECT_EQ(ReadPageContent(m, 0, paths), editor + "\r\n");
}

TEST_F(PageFilesTest, LoadRecreatesADeletedPageFromTheSkeleton) {
    CourseModule m = makeModule(kLesson);
    writeBytes(fs::path(m.templateFolder) / "page0.html",
               "<LUMApageContent>\r\n</LUMApageContent>\r\n");
    m.pages = {LessonPage{"page0.html", "", "stale"}};
    LoadPageContent(m, 0, paths);
    EXPECT_EQ(m.pages[0].content, "");
    EXPECT_EQ(readBytes(moduleFile("page0.html")), "<LUMApageContent>\r\n</LUMApageContent>\r\n");
}

TEST_F(PageFilesTest, MissingFilesFail) {
    CourseModule m = makeModule(kLesson);
    m.pages = {LessonPage{"page0.html", "", ""}};
    EXPECT_THROW(ReadPageContent(m, 0, paths), FileError);
    fs::remove(fs::path(m.templateFolder) / "page0.html");
    EXPECT_THROW(WritePageFile(m, 0, paths), FileError);
    EXPECT_THROW(LoadPageContent(m, 0, paths), FileError);
}

} // namespace
} // namespace lumora::test
