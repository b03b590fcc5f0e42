// File-system failures as "Error" messages; see ErrorReport.h.
#include "app/ErrorReport.h"

#include "storage/TextFile.h"

namespace lumora {

std::string fileErrorText(const std::string& path, const std::string& reason) {
    return path + kCrLf + reason;
}

void reportFileError(Prompt& prompt, const FileError& error) {
    prompt.error(fileErrorText(error.path(), error.reason()));
}

void reportFileError(Prompt& prompt, const std::filesystem::filesystem_error& error) {
    prompt.error(fileErrorText(error.path1().string(), error.code().message()));
}

} // namespace lumora
