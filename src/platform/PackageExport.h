// Exporting a module as the zip an LMS imports, in any of the package formats: the folder is
// read, never written; the format's import files are made for the zip alone. Shared by the
// desktop program and lumora-cli.
#pragma once

#include "storage/CourseModule.h"
#include "storage/LmsPackage.h"

#include <string>
#include <vector>

namespace lumora {

// Plans the package and writes the zip. Returns the problems that forbid the package (nothing
// is written then); throws FileError on file failures, leaving no partial zip.
std::vector<std::string> exportModulePackage(const CourseModule& module, const std::string& zipPath,
                                             const PackageOptions& options = {});

// Whether zipPath would lie inside the module folder (the package would then contain itself).
bool packagePathInsideModule(const std::string& zipPath, const std::string& moduleFolder);

// "Course1-scorm2004.zip": the file name a package is offered under.
std::string suggestedPackageName(const std::string& folderName, PackageFormat format);

} // namespace lumora
