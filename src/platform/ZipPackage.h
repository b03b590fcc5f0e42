// The package an LMS imports: a zip of a package plan's entries (storage/LmsPackage.h).
#pragma once

#include "storage/LmsPackage.h"

#include <string>
#include <vector>

namespace lumora {

// Writes the entries, in their order, into a zip at zipPath: the files named by sourcePath
// copied as they are, the others from their bytes. A source that is no longer a regular file
// (replaced by a symbolic link since it was listed) is refused. The zip is built under a
// temporary name beside zipPath and renamed over it when complete, so an old package survives
// a failure and a failed export leaves nothing behind. Throws FileError naming the file and
// the reason.
void writePackage(const std::vector<PackageEntry>& entries, const std::string& zipPath);

} // namespace lumora
