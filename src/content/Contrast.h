// How readable the colour scheme's texts are on their backgrounds: the contrast ratio of
// WCAG 2.1, and the pairs of the player's pages that fall below what its level AA asks of
// body text. The colour dialog warns with these; nothing is refused.
#pragma once

#include "storage/CourseModule.h"

#include <string>
#include <vector>

namespace lumora {

// Level AA's minimum for normal-size text.
inline constexpr double kMinimumTextContrast = 4.5;

// The relative luminance of a "#RRGGBB" colour, 0 (black) to 1 (white); a malformed colour
// reads as black, as the colour dialog shows it.
double relativeLuminance(const std::string& hex);
// (L1 + 0.05) / (L2 + 0.05) with L1 the lighter colour: 1 to 21, the same either way round.
double contrastRatio(const std::string& foreground, const std::string& background);

struct LowContrast {
    std::string pair; // "Link Text on the Page Background"
    double ratio = 0;
};

// The text and background pairs the player shows that fall below kMinimumTextContrast, in the
// order of the miniature page: title, page number, page name, links, visited links, copyright.
std::vector<LowContrast> lowContrastPairs(const ColorScheme& colors);

// "" when every pair reads well; otherwise a heading line and one line per pair, each
// indented by five spaces, with its ratio cut (never rounded up) to two decimals:
// "     Copyright on the Page Background: 4.49:1". Lines are joined by "\n" (a label shows it).
std::string contrastWarning(const ColorScheme& colors);

} // namespace lumora
