// Where the installed folder is and where the workspace goes. Staged or copied, the program sits
// in its installed folder beside Templates/, app/ and Help/, with the workspace MyContent/ there
// too. Installed system-wide, the program is in .../bin and its folder is .../share/lumora,
// which the author cannot write: the workspace is then "Lumora" in the author's documents.
#pragma once

#include <string>

namespace lumora {

struct Installation {
    std::string appPath;     // the installed folder
    bool systemWide = false; // found as ../share/lumora beside the program's folder
};

// The program's own folder when it holds Templates; else ../share/lumora when that does; else
// the program's own folder (start-up then reports the missing templates).
Installation findInstallation(const std::string& programFolder);

// The workspace for session.setInstallation: the one given (--workspace, LUMORA_WORKSPACE)
// first; for a system-wide installation documentsFolder + "/Lumora"; otherwise "", which keeps
// AppPath + "MyContent".
std::string chooseWorkspace(const std::string& given, const Installation& installation,
                            const std::string& documentsFolder);

} // namespace lumora
