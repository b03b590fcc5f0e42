// Path text as the system builds it: folders joined with the platform's separator, folders
// held without a trailing separator except AppPath, which always ends with one.
#pragma once

#include <filesystem>
#include <string>

namespace lumora {

inline constexpr char kSep = static_cast<char>(std::filesystem::path::preferred_separator);

inline std::string joinPath(const std::string& folder, const std::string& name) {
    return folder + kSep + name;
}

// The other slash form of a native path (on POSIX: the same path with back-slashes).
std::string otherSlashForm(const std::string& path);

inline std::filesystem::path fsPath(const std::string& utf8) {
    return std::filesystem::path(utf8);
}

} // namespace lumora
