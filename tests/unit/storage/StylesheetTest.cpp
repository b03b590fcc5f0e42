// The colour scheme as the rule lines of the module's stylesheet.
#include "StorageFixture.h"

#include "storage/Stylesheet.h"
#include "storage/TextFile.h"

namespace lumora::test {
namespace {

class StylesheetTest : public StorageTest {
  protected:
    void SetUp() override {
        StorageTest::SetUp();
        module = makeModule(kLesson);
        stylesheet = moduleFile("css/camstyle.css").string();
        templateSheet = fs::path(module.templateFolder) / "css" / "camstyle.css";
    }
    CourseModule module;
    std::string stylesheet;
    fs::path templateSheet;
};

TEST_F(StylesheetTest, ReadsTheRulesItKnows) {
    writeBytes(stylesheet, "body {margin: 0;}\r\n"
                           "a:link {color: #111111;}\r\n"
                           "a:visited {color: 222222;}\r\n"
                           ".conTable, .popupTable {background-color: #333333;}\r\n"
                           ".popupTitle, .moduleTitle {color: #444444;}\r\n"
                           ".popupTitle, .moduleTable {background-color: #555555;}\r\n"
                           ".moduleTable, .popupBorder, .popupTable {border-color: #999999;}\r\n"
                           ".navPageNumberRow {background-color: #666666;}\r\n"
                           ".outlineTitleRow {background-color: 777777;}\r\n"
                           ".navPageNumberRow, .pageLink {color: #888888 ! important;}\r\n"
                           ".outlineTitleRow, .titleLink {color: #AAAAAA;}\n"
                           ".copyRight {color: #BBBBBB;}\r\n"
                           ".copyRight {color: #CCCCCC;}\r\n"
                           "a:link {color: ;}\r\n");
    module.savedColors = ColorScheme{};
    ReadStylesheetColours(module, stylesheet);
    // The later empty a:link rule overrides the earlier one, and an empty value is not stored;
    // the border rule is not read; without "#" a rule is not recognised; a later line overrides.
    EXPECT_EQ(module.colors, (ColorScheme{"#000099", "#222222", "#333333", "#444444", "#555555",
                                          "#666666", "#FFFFCC", "#888888", "#AAAAAA", "#CCCCCC"}));
    EXPECT_EQ(module.savedColors, module.colors);
}

TEST_F(StylesheetTest, WriteRegeneratesFromTheTemplate) {
    writeBytes(templateSheet,
               "/* player styles */\r\n"
               "a:link {color: #000099;}\r\n"
               ".popupTitle, .moduleTable {background-color: #336699;}\r\n"
               ".moduleTable, .popupBorder, .popupTable {border-color: #336699;}\r\n"
               "  .navPageNumberRow, .pageLink {color: #000000 ! important;} /* indented */\r\n"
               "a:visited {color: red;} .copyRight {color: blue;}\r\n"
               "td {padding: 2px;}\n");
    writeBytes(stylesheet, "hand edits that will be lost\r\n");
    module.colors.aLink = "FF0000";
    module.colors.titleBackground = "#123456";
    module.colors.aVisited = "#ABCDEF";
    module.colors.pageNumberColor = "#FEDCBA";
    WriteStylesheetColours(module, stylesheet);
    EXPECT_EQ(readBytes(stylesheet),
              "/* player styles */\r\n"
              "a:link {color: #FF0000;}\r\n"
              ".popupTitle, .moduleTable {background-color: #123456;}\r\n"
              ".moduleTable, .popupBorder, .popupTable {border-color: #123456;}\r\n"
              ".navPageNumberRow, .pageLink {color: #FEDCBA ! important;}\r\n"
              "a:visited {color: #ABCDEF;}\r\n"
              "td {padding: 2px;}\r\n");

    // The module's own stylesheet is never created.
    fs::remove(stylesheet);
    EXPECT_THROW(WriteStylesheetColours(module, stylesheet), FileError);
    EXPECT_FALSE(fs::exists(stylesheet));
    EXPECT_THROW(ReadStylesheetColours(module, stylesheet), FileError);
}

TEST_F(StylesheetTest, ColoursRoundTripThroughTheStylesheet) {
    std::string sheet;
    for (const std::string& line : buildColourLines(defaultColorScheme()))
        sheet += line + "\r\n";
    writeBytes(templateSheet, sheet);
    writeBytes(stylesheet, sheet);
    ColorScheme chosen{"#010101", "#020202", "#030303", "#040404", "#050505",
                       "#060606", "#070707", "#080808", "#090909", "#0A0A0A"};
    module.colors = chosen;
    WriteStylesheetColours(module, stylesheet);

    module.colors = defaultColorScheme();
    ReadStylesheetColours(module, stylesheet);
    EXPECT_EQ(module.colors, chosen);
    EXPECT_EQ(module.savedColors, chosen);
}

} // namespace
} // namespace lumora::test
