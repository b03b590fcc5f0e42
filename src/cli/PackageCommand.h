// lumora-cli package NAME [-o FILE]: brings a module's import files up to date, checks them
// and writes the zip an LMS imports.
#pragma once

#include <string>

namespace lumora {

class Session;

// Exit status: 0 written, 1 refused (no such module, a problem in the package), 3 file error.
// An empty outPath means NAME + ".zip" in the current folder. Messages go to stderr.
int runPackageCommand(Session& session, const std::string& name, const std::string& outPath);

} // namespace lumora
