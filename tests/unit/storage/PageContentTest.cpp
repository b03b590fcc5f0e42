// Page content read between the marker lines: the block taken as it stands must equal the
// content rebuilt line by line, whatever the line ends and marker positions.
#include "storage/PageFiles.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {
namespace {

// The reading rule spelled out: lines split at LF (a CR before it dropped), reading stops at the
// first line holding the end marker and starts after the first line holding the start marker;
// every line read is written back with CR LF.
std::string contentLineByLine(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t lf = text.find('\n', pos);
        std::size_t end = lf == std::string::npos ? text.size() : lf;
        std::string line = text.substr(pos, end - pos);
        if (lf != std::string::npos && !line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
        pos = lf == std::string::npos ? text.size() : lf + 1;
    }
    std::string content;
    bool reading = false;
    for (const std::string& line : lines) {
        if (line.find(kEndMarker) != std::string::npos)
            break;
        if (reading)
            content += line + "\r\n";
        if (line.find(kStartMarker) != std::string::npos)
            reading = true;
    }
    return content;
}

TEST(ContentBetweenMarkers, TakesTheLinesBetweenTheMarkerLines) {
    EXPECT_EQ(
        contentBetweenMarkers("a\r\n<LUMApageContent>\r\n<P>x</P>\r\ny\r\n</LUMApageContent>\r\nz"),
        "<P>x</P>\r\ny\r\n");
    // LF-only lines and a last line without its end get CR LF.
    EXPECT_EQ(contentBetweenMarkers("<LUMApageContent>\nx\ny"), "x\r\ny\r\n");
    // The end marker's line ends the reading even when it comes first or holds both markers.
    EXPECT_EQ(contentBetweenMarkers("</LUMApageContent>\r\n<LUMApageContent>\r\nx\r\n"), "");
    EXPECT_EQ(contentBetweenMarkers("<LUMApageContent></LUMApageContent>\r\nx\r\n"), "");
    EXPECT_EQ(contentBetweenMarkers("no markers\r\n"), "");
    EXPECT_EQ(contentBetweenMarkers("<LUMApageContent>"), "");
}

TEST(ContentBetweenMarkers, AgreesWithTheLineByLineRuleOnRandomPages) {
    const std::vector<std::string> pieces = {
        "<LUMApageContent>", "</LUMApageContent>", "\r\n", "\n", "\r", "<P>", "x", " ", "\r\r\n"};
    std::mt19937 random(4242);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const std::size_t count = random() % 12;
        for (std::size_t i = 0; i < count; ++i)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(contentBetweenMarkers(text), contentLineByLine(text)) << text;
    }
}

} // namespace
} // namespace lumora
