#include "platform/PackageExport.h"

#include "platform/ZipPackage.h"

#include <filesystem>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

std::vector<std::string> exportModulePackage(const CourseModule& module, const std::string& zipPath,
                                             const PackageOptions& options) {
    const PackagePlan plan = planPackage(module, options);
    if (plan.problems.empty())
        writePackage(plan.entries, zipPath);
    return plan.problems;
}

bool packagePathInsideModule(const std::string& zipPath, const std::string& moduleFolder) {
    std::error_code ec;
    const fs::path p = fs::weakly_canonical(fs::absolute(zipPath, ec), ec);
    const fs::path f = fs::weakly_canonical(fs::absolute(moduleFolder, ec), ec);
    const fs::path rel = p.lexically_relative(f);
    return !rel.empty() && *rel.begin() != "..";
}

std::string suggestedPackageName(const std::string& folderName, PackageFormat format) {
    return folderName + "-" + packageFormatName(format) + ".zip";
}

} // namespace lumora
