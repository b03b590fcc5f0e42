#include "platform/PackageExport.h"

#include "platform/ZipPackage.h"
#include "storage/LmsFiles.h"

#include <filesystem>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

std::vector<std::string> exportModulePackage(const CourseModule& module,
                                             const std::string& zipPath) {
    WriteLmsFiles(module);
    std::vector<std::string> problems = checkPackageFolder(module.ModuleFolder);
    if (problems.empty())
        writePackage(module.ModuleFolder, zipPath);
    return problems;
}

bool packagePathInsideModule(const std::string& zipPath, const std::string& moduleFolder) {
    std::error_code ec;
    const fs::path p = fs::weakly_canonical(fs::absolute(zipPath, ec), ec);
    const fs::path f = fs::weakly_canonical(fs::absolute(moduleFolder, ec), ec);
    const fs::path rel = p.lexically_relative(f);
    return !rel.empty() && *rel.begin() != "..";
}

} // namespace lumora
