// Exporting a module as the zip an LMS imports: the import files are brought up to date with
// the folder, checked, and the folder is zipped. Shared by the desktop program and lumora-cli.
#pragma once

#include "storage/CourseModule.h"

#include <string>
#include <vector>

namespace lumora {

// Rewrites the module's import files, checks the folder and writes the zip. Returns the
// problems the check found (nothing is written then); throws FileError on file failures.
std::vector<std::string> exportModulePackage(const CourseModule& module,
                                             const std::string& zipPath);

// Whether zipPath would lie inside the module folder (the package would then contain itself).
bool packagePathInsideModule(const std::string& zipPath, const std::string& moduleFolder);

} // namespace lumora
