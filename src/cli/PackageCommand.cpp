#include "cli/PackageCommand.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "platform/PackageExport.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"
#include "base/TextUtil.h"

#include <filesystem>
#include <iostream>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

int runPackageCommand(Session& session, const std::string& name, const std::string& outPath) {
    const std::string folder = joinPath(session.WorkspaceFolder, name);
    std::error_code ec;
    if (name.empty() || !fs::is_directory(fsPath(folder), ec)) {
        std::cerr << "No module folder \"" << name << "\" in " << session.WorkspaceFolder << "\n";
        return 1;
    }
    const std::string suffix = moduleTypeSuffix(folder); // " (L)", " (E)", " (S)" or ""
    const std::string type = suffix.empty() ? "" : moduleTypeForTag(toLowerAscii(suffix.substr(1)));
    if (type.empty()) {
        std::cerr << "\"" << name << "\" holds no frameset file: it is not a module folder\n";
        return 1;
    }
    const std::string zipPath = outPath.empty() ? name + ".zip" : outPath;
    // The package would otherwise list, and then contain, itself.
    if (packagePathInsideModule(zipPath, folder)) {
        std::cerr << "The package cannot be written inside the module folder: " << zipPath << "\n";
        return 1;
    }

    try {
        session.ResetModule();
        session.module.moduleType = type;
        session.module.folderName = name;
        if (!session.LoadModule())
            return 1;
        const std::vector<std::string> problems = exportModulePackage(session.module, zipPath);
        if (!problems.empty()) {
            std::cerr << "The package of \"" << name << "\" is not sound:\n";
            for (const std::string& problem : problems)
                std::cerr << "     " << problem << "\n";
            return 1;
        }
    } catch (const FileError& e) {
        std::cerr << "Error: " << e.path() << ": " << e.reason() << "\n";
        return 3;
    }
    std::cerr << "Wrote " << zipPath << "\n";
    return 0;
}

} // namespace lumora
