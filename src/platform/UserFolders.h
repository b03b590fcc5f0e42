// The author's documents folder as the desktop names it, for the command line, which has no Qt
// to ask: XDG_DOCUMENTS_DIR from $XDG_CONFIG_HOME/user-dirs.dirs (~/.config when unset), else
// $HOME/Documents, the same answer the desktop program gets from QStandardPaths.
#pragma once

#include <string>

namespace lumora {

// "" when HOME is not set.
std::string documentsFolder();

// The same over given values: `userDirs` is the text of user-dirs.dirs ("" when missing).
std::string documentsFolderFrom(const std::string& home, const std::string& userDirs);

} // namespace lumora
