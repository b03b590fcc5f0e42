// Argument parsing for lumora-cli; see CliOptions.h.
#include "cli/CliOptions.h"

namespace lumora::cli {

const char* const kUsageText =
    "usage: lumora-cli [--workspace DIR] [--app-dir DIR] [--yes] COMMAND\n"
    "  new TYPE NAME            create a Lesson, Evaluation or Survey from its template\n"
    "  list                     the workspace's modules, as the folder chooser lists them\n"
    "  check NAME               load, check the questions and the page files\n"
    "  save NAME [--non-scorm]  load and save, for SCORM/AICC or not\n"
    "  show NAME                the loaded module as JSON\n"
    "  package NAME [--format FORMAT] [--mastery N] [-o FILE]  a zip ready to upload to an LMS\n"
    "                           FORMAT: scorm12 (SCORM 1.2 with the AICC course files, the\n"
    "                           default), scorm2004 (SCORM 2004 4th Edition) or cmi5;\n"
    "                           N: an Evaluation's pass mark in percent, 0 to 100;\n"
    "                           FILE: NAME-FORMAT.zip in the current folder unless given\n"
    "\n"
    "The workspace is --workspace, else $LUMORA_WORKSPACE, else MyContent beside the\n"
    "program (installed system-wide: Lumora in your documents folder). A missing\n"
    "workspace is created by \"new\", or by any command with --yes; --yes also answers\n"
    "Yes to every other question.\n"
    "Exit status: 0 done, 1 refused or invalid, 2 usage, 3 file error.\n";

std::optional<CliOptions> parseArguments(const std::vector<std::string>& args, std::string& error) {
    CliOptions o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](std::string& into) {
            if (i + 1 >= args.size()) {
                error = a + " needs a value";
                return false;
            }
            into = args[++i];
            return true;
        };
        if (a == "--workspace" || a == "--app-dir" || a == "-o") {
            std::string& into = a == "--workspace" ? o.workspace
                                : a == "--app-dir" ? o.appDir
                                                   : o.outPath;
            if (!value(into))
                return std::nullopt;
        } else if (a == "--format" || a == "--mastery") {
            std::string text;
            if (!value(text))
                return std::nullopt;
            (a == "--format" ? o.format : o.mastery) = std::move(text);
        } else if (a == "--yes") {
            o.yes = true;
        } else if (a == "--non-scorm") {
            o.nonScorm = true;
        } else if (a == "--help" || a == "-h") {
            o.help = true;
        } else if (a.size() > 1 && a[0] == '-') {
            error = "unknown option " + a;
            return std::nullopt;
        } else if (o.command.empty()) {
            o.command = a;
        } else {
            o.operands.push_back(a);
        }
    }
    return o;
}

} // namespace lumora::cli
