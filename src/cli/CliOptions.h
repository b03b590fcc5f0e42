// The command line's arguments: global options anywhere, then the command and its operands.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lumora::cli {

struct CliOptions {
    std::string workspace;              // --workspace DIR
    std::string appDir;                 // --app-dir DIR
    bool yes = false;                   // --yes
    bool nonScorm = false;              // --non-scorm (save)
    std::string outPath;                // -o FILE (package)
    std::optional<std::string> format;  // --format NAME (package)
    std::optional<std::string> mastery; // --mastery N (package)
    bool help = false;
    std::string command;
    std::vector<std::string> operands;
};

// No value (and `error` set) for an unknown option or an option without its value.
std::optional<CliOptions> parseArguments(const std::vector<std::string>& args, std::string& error);

extern const char* const kUsageText;

} // namespace lumora::cli
