// The contrast ratio against published WCAG values, and the scheme's pairs that are warned of.
#include "content/Contrast.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(Contrast, RatiosMatchKnownWcagValues) {
    struct Row {
        const char* text;
        const char* background;
        double ratio;
    };
    // Values as WCAG contrast checkers give them, to two decimals.
    const Row rows[] = {
        {"#000000", "#FFFFFF", 21.00}, {"#FFFFFF", "#FFFFFF", 1.00}, {"#777777", "#FFFFFF", 4.48},
        {"#767676", "#FFFFFF", 4.54},  {"#FF0000", "#FFFFFF", 4.00}, {"#0000FF", "#FFFFFF", 8.59},
        {"#008000", "#FFFFFF", 5.14},  {"#595959", "#FFFFFF", 7.00}, {"#336699", "#FFFFFF", 6.00},
        {"#FFFF00", "#000000", 19.56}, {"#ffffff", "808080", 3.95},
    };
    for (const Row& row : rows) {
        EXPECT_NEAR(contrastRatio(row.text, row.background), row.ratio, 0.005) << row.text;
        EXPECT_DOUBLE_EQ(contrastRatio(row.text, row.background),
                         contrastRatio(row.background, row.text));
    }
    // A colour that is not six hexadecimal digits reads as black, as the dialog paints it.
    EXPECT_DOUBLE_EQ(contrastRatio("#FFF", "#FFFFFF"), 21.0);
}

TEST(Contrast, WarningNamesEachPoorPairWithItsRatioCutNotRounded) {
    ColorScheme colors = defaultColorScheme();
    EXPECT_EQ(contrastWarning(colors), "");

    colors.titleColor = "#6699CC";     // on #336699
    colors.pageNameColor = "#FFFFCC";  // on its own background
    colors.copyRightColor = "#777777"; // 4.478:1 on white, which rounds to 4.48
    colors.aVisited = "#767676";       // 4.54:1: passes
    EXPECT_EQ(contrastWarning(colors),
              "Some text may be hard to read; WCAG 2.1 AA asks for a contrast of at least 4.5:1:\n"
              "     Module Title on the title background: 1.99:1\n"
              "     Page Name on its background: 1.00:1\n"
              "     Copyright on the Page Background: 4.47:1");

    colors = defaultColorScheme();
    colors.contentBackground = "#000099"; // the link colour
    const std::vector<LowContrast> low = lowContrastPairs(colors);
    ASSERT_EQ(low.size(), 3u);
    EXPECT_EQ(low[0].pair, "Link Text on the Page Background");
    EXPECT_EQ(low[1].pair, "Visited Link Text on the Page Background");
    EXPECT_EQ(low[2].pair, "Copyright on the Page Background");
}

} // namespace
} // namespace lumora
