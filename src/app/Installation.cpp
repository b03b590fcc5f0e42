// The installed folder and the workspace's place; see Installation.h.
#include "app/Installation.h"

#include "storage/Paths.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace lumora {

namespace {

bool holdsTemplates(const fs::path& folder) {
    std::error_code ec;
    return fs::is_directory(folder / "Templates", ec);
}

} // namespace

Installation findInstallation(const std::string& programFolder) {
    fs::path own = fsPath(programFolder);
    if (!own.has_filename())
        own = own.parent_path(); // "/usr/bin/" names the same folder as "/usr/bin"
    if (holdsTemplates(own))
        return {programFolder, false};
    const fs::path shared = (own.parent_path() / "share" / "lumora").lexically_normal();
    if (holdsTemplates(shared))
        return {shared.string(), true};
    return {programFolder, false};
}

std::string chooseWorkspace(const std::string& given, const Installation& installation,
                            const std::string& documentsFolder) {
    if (!given.empty())
        return given;
    if (installation.systemWide && !documentsFolder.empty())
        return joinPath(documentsFolder, "Lumora");
    return "";
}

} // namespace lumora
