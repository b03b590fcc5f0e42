// Contrast of the colour scheme; see Contrast.h.
#include "content/Contrast.h"

#include "content/Colors.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace lumora {

namespace {

// One sRGB channel (0-255) made linear, with the threshold WCAG 2.1 gives.
double linearChannel(long value) {
    const double c = static_cast<double>(value) / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

struct Pair {
    const char* name;
    std::string ColorScheme::*text;
    std::string ColorScheme::*background;
};

constexpr Pair kPairs[] = {
    {"Module Title on the title background", &ColorScheme::titleColor,
     &ColorScheme::titleBackground},
    {"Page number on its background", &ColorScheme::pageNumberColor,
     &ColorScheme::pageNumberBackground},
    {"Page Name on its background", &ColorScheme::pageNameColor, &ColorScheme::pageNameBackground},
    {"Link Text on the Page Background", &ColorScheme::aLink, &ColorScheme::contentBackground},
    {"Visited Link Text on the Page Background", &ColorScheme::aVisited,
     &ColorScheme::contentBackground},
    {"Copyright on the Page Background", &ColorScheme::copyRightColor,
     &ColorScheme::contentBackground},
};

// A failing ratio must never show as passing: 4.499 is written 4.49, not 4.50.
std::string ratioText(double ratio) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f:1", std::floor(ratio * 100.0 + 1e-9) / 100.0);
    return text;
}

} // namespace

double relativeLuminance(const std::string& hex) {
    const long color = hexToColor(hex); // 0x00BBGGRR
    return 0.2126 * linearChannel(color & 0xFF) + 0.7152 * linearChannel((color >> 8) & 0xFF) +
           0.0722 * linearChannel((color >> 16) & 0xFF);
}

double contrastRatio(const std::string& foreground, const std::string& background) {
    const double a = relativeLuminance(foreground);
    const double b = relativeLuminance(background);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

std::vector<LowContrast> lowContrastPairs(const ColorScheme& colors) {
    std::vector<LowContrast> low;
    for (const Pair& pair : kPairs) {
        const double ratio = contrastRatio(colors.*pair.text, colors.*pair.background);
        if (ratio < kMinimumTextContrast)
            low.push_back({pair.name, ratio});
    }
    return low;
}

std::string contrastWarning(const ColorScheme& colors) {
    const std::vector<LowContrast> low = lowContrastPairs(colors);
    if (low.empty())
        return {};
    std::string text = "Some text may be hard to read; WCAG 2.1 AA asks for a contrast of at "
                       "least 4.5:1:";
    for (const LowContrast& pair : low)
        text += "\n     " + pair.pair + ": " + ratioText(pair.ratio);
    return text;
}

} // namespace lumora
