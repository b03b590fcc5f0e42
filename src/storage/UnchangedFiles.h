// Saving a module rewrites only the files whose bytes change. Each safe write makes a new file
// and drops the old one, and a Lesson save touches a thousand page files of which an author has
// usually changed one or two.
#pragma once

#include <string>

namespace lumora {

// Writes bytes safely (temporary file and rename) unless the file already holds exactly these
// bytes. Returns whether it wrote. Throws FileError.
bool writeFileIfChanged(const std::string& path, const std::string& bytes);

} // namespace lumora
