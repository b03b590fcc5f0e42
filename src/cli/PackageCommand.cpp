#include "cli/PackageCommand.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "platform/ZipPackage.h"
#include "storage/LmsFiles.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <filesystem>
#include <iostream>
#include <system_error>

namespace lumora {

namespace {

namespace fs = std::filesystem;

std::string typeForSuffix(const std::string& suffix) {
    if (suffix == " (L)")
        return kLesson;
    if (suffix == " (E)")
        return kEvaluation;
    if (suffix == " (S)")
        return kSurvey;
    return {};
}

// Whether `path` lies inside `folder` (after making both absolute and normal).
bool isInside(const fs::path& path, const fs::path& folder) {
    std::error_code ec;
    fs::path p = fs::weakly_canonical(fs::absolute(path, ec), ec);
    fs::path f = fs::weakly_canonical(fs::absolute(folder, ec), ec);
    auto rel = p.lexically_relative(f);
    return !rel.empty() && *rel.begin() != "..";
}

} // namespace

int runPackageCommand(Session& session, const std::string& name, const std::string& outPath) {
    const std::string folder = joinPath(session.WorkspaceFolder, name);
    std::error_code ec;
    if (name.empty() || !fs::is_directory(fsPath(folder), ec)) {
        std::cerr << "No module folder \"" << name << "\" in " << session.WorkspaceFolder << "\n";
        return 1;
    }
    const std::string type = typeForSuffix(moduleTypeSuffix(folder));
    if (type.empty()) {
        std::cerr << "\"" << name << "\" holds no frameset file: it is not a module folder\n";
        return 1;
    }
    const std::string zipPath = outPath.empty() ? name + ".zip" : outPath;
    // The package would otherwise list, and then contain, itself.
    if (isInside(fsPath(zipPath), fsPath(folder))) {
        std::cerr << "The package cannot be written inside the module folder: " << zipPath << "\n";
        return 1;
    }

    try {
        session.ResetModule();
        session.module.moduleType = type;
        session.module.folderName = name;
        if (!session.LoadModule())
            return 1;
        WriteLmsFiles(session.module);
        const std::vector<std::string> problems = checkPackageFolder(session.module.ModuleFolder);
        if (!problems.empty()) {
            std::cerr << "The package of \"" << name << "\" is not sound:\n";
            for (const std::string& problem : problems)
                std::cerr << "     " << problem << "\n";
            return 1;
        }
        writePackage(session.module.ModuleFolder, zipPath);
    } catch (const FileError& e) {
        std::cerr << "Error: " << e.path() << ": " << e.reason() << "\n";
        return 3;
    }
    std::cerr << "Wrote " << zipPath << "\n";
    return 0;
}

} // namespace lumora
