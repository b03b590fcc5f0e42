// lumora-cli package NAME [--format F] [--mastery N] [-o FILE]: writes the zip an LMS imports,
// in the format asked for, without changing a file of the module folder.
#pragma once

#include <optional>
#include <string>

namespace lumora {

class Session;

struct PackageRequest {
    std::string name;
    std::string outPath;                // empty: NAME-FORMAT.zip in the current folder
    std::optional<std::string> format;  // scorm12 (the default), scorm2004 or cmi5
    std::optional<std::string> mastery; // an Evaluation's pass mark in percent
};

// Exit status: 0 written; 1 refused (no such module, a pass mark that is no number from 0 to
// 100 or given for a module that is no Evaluation, a module not saved for SCORM/AICC, a
// package that cannot be made); 2 an unknown format; 3 file error. Messages go to stderr.
int runPackageCommand(Session& session, const PackageRequest& request);

} // namespace lumora
