// The module's colour scheme as the colour rule lines of css/camstyle.css.
#pragma once

#include "storage/CourseModule.h"

#include <string>
#include <vector>

namespace lumora {

// The eleven built rule lines, in table order.
std::vector<std::string> buildColourLines(const ColorScheme& colors);

// Reads the colours from the module's stylesheet into module.colors and copies them into
// module.savedColors. stylesheetPath is ModuleFolder + "/css/camstyle.css".
void ReadStylesheetColours(CourseModule& module, const std::string& stylesheetPath);
// Regenerates the module's stylesheet from the template's, replacing the colour lines.
void WriteStylesheetColours(const CourseModule& module, const std::string& stylesheetPath);

} // namespace lumora
