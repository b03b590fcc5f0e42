// The package an LMS imports: a zip of the module folder with imsmanifest.xml at its root.
#pragma once

#include <string>

namespace lumora {

// Writes every file of the module folder (as listPackageFiles names them: no dotfiles, no
// unfinished temporary files) into a zip at zipPath, paths relative to the folder. The zip is
// built under a temporary name beside zipPath and renamed over it when complete, so an old
// package survives a failure. Throws FileError naming the file and the reason.
void writePackage(const std::string& moduleFolder, const std::string& zipPath);

} // namespace lumora
