// lumora-cli: creates, lists, checks, saves, shows and packages modules without a window,
// over the same start-up and core as the desktop program.
#include "app/Installation.h"
#include "app/Services.h"
#include "app/Session.h"
#include "app/Startup.h"
#include "app/Workspace.h"
#include "cli/CliOptions.h"
#include "cli/CliPrompt.h"
#include "cli/Commands.h"
#include "platform/ProcessStarter.h"
#include "platform/UserFolders.h"
#include "storage/TextFile.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace fs = std::filesystem;
using namespace lumora;
using namespace lumora::cli;

namespace {

std::string executableFolder(const char* argv0) {
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec)
        exe = fs::absolute(argv0, ec);
    return exe.parent_path().string();
}

bool isKnownCommand(const std::string& c) {
    for (const char* known : {"new", "list", "check", "save", "show", "package"})
        if (c == known)
            return true;
    return false;
}

int run(int argc, char** argv) {
    std::string error;
    const auto options = parseArguments(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) {
        std::cerr << "lumora-cli: " << error << '\n' << kUsageText;
        return kUsage;
    }
    if (options->help) {
        std::cout << kUsageText;
        return kDone;
    }
    if (!isKnownCommand(options->command)) {
        if (!options->command.empty())
            std::cerr << "lumora-cli: unknown command " << options->command << '\n';
        std::cerr << kUsageText;
        return kUsage;
    }

    std::string workspace = options->workspace;
    if (workspace.empty()) {
        if (const char* env = std::getenv("LUMORA_WORKSPACE"))
            workspace = env;
    }

    CliPrompt prompt(std::cerr, options->yes);
    NullRegistry registry;
    PosixProcessStarter processes;
    Session session(prompt, registry, processes);

    // --app-dir names the installed folder itself; otherwise it is found from the program's.
    const Installation installation = options->appDir.empty()
                                          ? findInstallation(executableFolder(argv[0]))
                                          : Installation{options->appDir, false};
    StartupOptions startup;
    startup.appPath = installation.appPath;
    startup.workspace = chooseWorkspace(workspace, installation, documentsFolder());
    if (runStartup(session, startup) == StartupResult::Shutdown)
        return kRefused;

    // Only "new" creates a missing workspace unasked: it is about to put something in it.
    prompt.setYes(options->yes || options->command == "new");
    const bool workspaceReady = EnsureWorkspace(session);
    prompt.setYes(options->yes);
    if (!workspaceReady)
        return kRefused;

    const int status = runCommand(session, prompt, *options, std::cout);
    if (status == kUsage)
        std::cerr << kUsageText;
    return status;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const FileError& e) {
        std::cerr << "Error: " << e.path() << ": " << e.reason() << '\n';
    } catch (const fs::filesystem_error& e) {
        std::cerr << "Error: " << e.path1().string() << ": " << e.code().message() << '\n';
    }
    return kFileError;
}
