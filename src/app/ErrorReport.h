// File-system failures reported in the tool's manner: an "Error" message with the critical
// icon naming the file on the first line and the reason on the second.
#pragma once

#include "base/Prompt.h"

#include <filesystem>
#include <string>

namespace lumora {

class FileError;

std::string fileErrorText(const std::string& path, const std::string& reason);
void reportFileError(Prompt& prompt, const FileError& error);
void reportFileError(Prompt& prompt, const std::filesystem::filesystem_error& error);

} // namespace lumora
