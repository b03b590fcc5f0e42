// The module scripts hold every text as a double-quoted string literal of the player's
// JavaScript, with only the quote escaped. Some texts cannot be carried that way: the course
// then stops with a script error. This check finds them, so the author can be told at save.
#pragma once

#include "base/Prompt.h"
#include "content/ContentForms.h"
#include "storage/CourseModule.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// True when `literal`, written between double quotes, would not be read back as one string:
// a backslash before the closing quote, a quote left unescaped, a \u or \x without its hex
// digits, or a line break inside it.
bool breaksStringLiteral(std::string_view literal);

// The texts of the module that break their literal as the writer writes them, named for the
// author ("Module Title", "Page Title of page 2", "Definition of term 1", "Option 2 of
// question 3", ...), in the order the files hold them. Items and terms the writer leaves out
// are not looked at.
std::vector<std::string> textsBreakingScripts(const CourseModule& module,
                                              const ContentPaths& paths);

// After a save: when there are such texts, says which (title "Warning", exclamation icon).
void warnAboutBreakingTexts(const CourseModule& module, const ContentPaths& paths, Prompt& prompt);

} // namespace lumora
