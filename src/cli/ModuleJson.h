// The open module as JSON for "lumora-cli show": the fields an author edits, content in
// editor form, in a fixed key order so the output can be compared as text.
#pragma once

#include "storage/CourseModule.h"

#include <string>

namespace lumora::cli {

// A JSON string literal, quotes included. UTF-8 passes through; control characters become
// \u00XX.
std::string jsonString(const std::string& text);

std::string moduleJson(const CourseModule& module);

} // namespace lumora::cli
