// The commands of lumora-cli over a started session. Each returns the exit status; file
// errors travel as exceptions to main, which reports them with status 3.
#pragma once

#include "cli/CliOptions.h"

#include <iosfwd>

namespace lumora {
class Session;
}

namespace lumora::cli {

enum ExitStatus { kDone = 0, kRefused = 1, kUsage = 2, kFileError = 3 };

class CliPrompt;

int runCommand(Session& session, CliPrompt& prompt, const CliOptions& options, std::ostream& out);

} // namespace lumora::cli
