#include "cli/PackageCommand.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "cli/Commands.h"
#include "platform/PackageExport.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"
#include "base/TextUtil.h"

#include <filesystem>
#include <iostream>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

using namespace cli; // the exit statuses

int runPackageCommand(Session& session, const PackageRequest& request) {
    const std::string& name = request.name;
    PackageOptions options;
    if (request.format) {
        const auto format = packageFormatNamed(*request.format);
        if (!format) {
            std::cerr << "Unknown package format \"" << *request.format << "\": use "
                      << kPackageFormatNames << "\n";
            return kUsage;
        }
        options.format = *format;
    }
    if (request.mastery) {
        options.passMark = parsePassMark(*request.mastery);
        if (!options.passMark) {
            std::cerr << "--mastery takes a pass mark in percent, a number from 0 to 100: \""
                      << *request.mastery << "\" is not one\n";
            return kRefused;
        }
    }

    const std::string folder = joinPath(session.WorkspaceFolder, name);
    std::error_code ec;
    if (name.empty() || !fs::is_directory(fsPath(folder), ec)) {
        std::cerr << "No module folder \"" << name << "\" in " << session.WorkspaceFolder << "\n";
        return kRefused;
    }
    const std::string suffix = moduleTypeSuffix(folder); // " (L)", " (E)", " (S)" or ""
    const std::string type = suffix.empty() ? "" : moduleTypeForTag(toLowerAscii(suffix.substr(1)));
    if (type.empty()) {
        std::cerr << "\"" << name << "\" holds no frameset file: it is not a module folder\n";
        return kRefused;
    }
    if (options.passMark && type != kEvaluation) {
        std::cerr << "--mastery: a pass mark applies to an Evaluation only, and \"" << name
                  << "\" is a " << type << "\n";
        return kRefused;
    }
    const std::string zipPath =
        request.outPath.empty() ? suggestedPackageName(name, options.format) : request.outPath;
    // The package would otherwise list, and then contain, itself.
    if (packagePathInsideModule(zipPath, folder)) {
        std::cerr << "The package cannot be written inside the module folder: " << zipPath << "\n";
        return kRefused;
    }

    try {
        session.ResetModule();
        session.module.moduleType = type;
        session.module.folderName = name;
        if (!session.LoadModule())
            return kRefused;
        const std::vector<std::string> problems =
            exportModulePackage(session.module, zipPath, options);
        if (!problems.empty()) {
            std::cerr << "The package of \"" << name << "\" was not written:\n";
            for (const std::string& problem : problems)
                std::cerr << "     " << problem << "\n";
            return kRefused;
        }
    } catch (const FileError& e) {
        std::cerr << "Error: " << e.path() << ": " << e.reason() << "\n";
        return kFileError;
    }
    std::cerr << "Wrote " << zipPath << "\n";
    return kDone;
}

} // namespace lumora
