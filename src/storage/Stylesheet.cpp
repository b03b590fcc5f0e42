// The colour scheme in the module's stylesheet. The stylesheet is never parsed as CSS: a
// colour rule is known by the fixed text its line starts with, and is rebuilt whole.
#include "storage/Stylesheet.h"

#include "storage/Paths.h"
#include "storage/ScriptText.h"
#include "storage/TextFile.h"
#include "base/TextUtil.h"

#include <array>
#include <filesystem>
#include <system_error>

namespace lumora {

namespace {

struct ColourRule {
    const char* prefix;
    std::string ColorScheme::*colour;
    const char* end;
};

constexpr const char* kPlainEnd = ";}";
constexpr const char* kImportantEnd = " ! important;}";

// Table order; the title background appears twice because the borders share its colour.
const std::array<ColourRule, 11> kRules{{
    {"a:link {color: ", &ColorScheme::aLink, kPlainEnd},
    {"a:visited {color: ", &ColorScheme::aVisited, kPlainEnd},
    {".conTable, .popupTable {background-color: ", &ColorScheme::contentBackground, kPlainEnd},
    {".popupTitle, .moduleTitle {color: ", &ColorScheme::titleColor, kPlainEnd},
    {".popupTitle, .moduleTable {background-color: ", &ColorScheme::titleBackground, kPlainEnd},
    {".moduleTable, .popupBorder, .popupTable {border-color: ", &ColorScheme::titleBackground,
     kPlainEnd},
    {".navPageNumberRow {background-color: ", &ColorScheme::pageNumberBackground, kPlainEnd},
    {".outlineTitleRow {background-color: ", &ColorScheme::pageNameBackground, kPlainEnd},
    {".navPageNumberRow, .pageLink {color: ", &ColorScheme::pageNumberColor, kImportantEnd},
    {".outlineTitleRow, .titleLink {color: ", &ColorScheme::pageNameColor, kImportantEnd},
    {".copyRight {color: ", &ColorScheme::copyRightColor, kPlainEnd},
}};

struct ReadRule {
    const char* prefix;
    std::string ColorScheme::*colour;
    bool mayBeImportant; // the cut depends on whether the line ends " ! important;}"
};

// The reader's order differs from the table: the border rule is not read, and the two row
// backgrounds are only known with their "#", which the value then lacks.
const std::array<ReadRule, 10> kReadRules{{
    {"a:link {color: ", &ColorScheme::aLink, false},
    {"a:visited {color: ", &ColorScheme::aVisited, false},
    {".conTable, .popupTable {background-color: ", &ColorScheme::contentBackground, false},
    {".popupTitle, .moduleTitle {color: ", &ColorScheme::titleColor, false},
    {".popupTitle, .moduleTable {background-color: ", &ColorScheme::titleBackground, false},
    {".navPageNumberRow {background-color: #", &ColorScheme::pageNumberBackground, false},
    {".outlineTitleRow {background-color: #", &ColorScheme::pageNameBackground, false},
    {".navPageNumberRow, .pageLink {color: ", &ColorScheme::pageNumberColor, true},
    {".outlineTitleRow, .titleLink {color: ", &ColorScheme::pageNameColor, true},
    {".copyRight {color: ", &ColorScheme::copyRightColor, false},
}};

} // namespace

std::vector<std::string> buildColourLines(const ColorScheme& colors) {
    std::vector<std::string> lines;
    lines.reserve(kRules.size());
    for (const ColourRule& rule : kRules)
        lines.push_back(rule.prefix + EnsureHash(colors.*rule.colour) + rule.end);
    return lines;
}

void ReadStylesheetColours(CourseModule& module, const std::string& stylesheetPath) {
    std::array<std::string, kReadRules.size()> found;
    for (const std::string& line : readTextLines(stylesheetPath)) {
        for (std::size_t k = 0; k < kReadRules.size(); ++k) {
            const ReadRule& rule = kReadRules[k];
            if (!contains(line, rule.prefix))
                continue;
            const std::size_t cut = rule.mayBeImportant && contains(line, "important") ? 14 : 2;
            // A later line of the same rule overrides an earlier one.
            found[k] = ExtractValue(line, rule.prefix, cut);
            break;
        }
    }
    for (std::size_t k = 0; k < kReadRules.size(); ++k) {
        if (!found[k].empty())
            module.colors.*kReadRules[k].colour = EnsureHash(found[k]);
    }
    module.savedColors = module.colors;
}

void WriteStylesheetColours(const CourseModule& module, const std::string& stylesheetPath) {
    // The module's stylesheet is regenerated, never created: a module without one is damaged.
    std::error_code ec;
    if (!std::filesystem::is_regular_file(fsPath(stylesheetPath), ec))
        throw FileError(stylesheetPath, "file not found");
    const std::vector<std::string> built = buildColourLines(module.colors);
    const std::string templatePath =
        joinPath(joinPath(module.templateFolder, "css"), "camstyle.css");

    SafeTextWriter out(stylesheetPath);
    for (const std::string& line : readTextLines(templatePath)) {
        std::size_t k = 0;
        while (k < kRules.size() && !contains(line, kRules[k].prefix))
            ++k;
        out.WriteLine(k < kRules.size() ? built[k] : line);
    }
    out.commitExisting();
}

} // namespace lumora
