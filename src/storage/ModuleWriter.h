// Writes the module scripts under ModuleFolder/scripts, one script statement per line: the
// grammar the learner player runs and the loader reads back.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"

namespace lumora {

void WriteModuleInfo(CourseModule& module, const ContentPaths& paths); // also the page files
void WriteGlossary(const CourseModule& module);
void WriteQAndA(CourseModule& module, const ContentPaths& paths);
void WriteQuestions(CourseModule& module, const ContentPaths& paths);
void WriteObjectives(CourseModule& module, const ContentPaths& paths);

// The files of the module's type, in the order the save writes them.
void WriteModuleFiles(CourseModule& module, const ContentPaths& paths);

// Page files past the last page are removed at save, so a module carries no dead pages.
void RemoveStalePageFiles(const CourseModule& module);

} // namespace lumora
