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

// The files WriteModuleFiles writes for the module as it stands: its type's scripts and, for a
// Lesson, one page file per page.
std::vector<std::string> moduleFilePaths(const CourseModule& module);

// Removes the page files of pages deleted since the module was loaded or last saved (those
// past the last page among the module's pageFileCount), so a module carries no dead pages,
// then counts the pages just written as the module's own. Page files the module never held
// stay on disk.
void RemoveStalePageFiles(CourseModule& module);

// How many page files in a Lesson's folder are not pages of the module: files the writer would
// name ("page" N ".html") numbered from pageFileCount on. 0 for other types.
std::size_t countStrayPageFiles(const CourseModule& module);

} // namespace lumora
