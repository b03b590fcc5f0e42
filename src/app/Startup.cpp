// The start-up routine: default records, installation paths, the templates and version checks
// with the office repair, the splash and the spelling engine. Nothing here shows a window: the
// splash is a callback and shutting down is a result the caller acts on.
#include "app/Startup.h"

#include "app/ErrorReport.h"
#include "app/RegistryValues.h"
#include "app/Session.h"
#include "storage/Paths.h"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace lumora {

namespace {

constexpr std::uint32_t kSkipMarkupOption = 0x200000;

// Lexicon files in the order the engine is given them; the standard set first, because the
// first dictionary found carries the affix rules the others are read with.
const char* const kLexiconFiles[] = {
    "en_US.dic",       // standard set
    "userdic.dic",     //
    "en_med_glut.dic", // medical set
    "legal.dic",       // legal set
};

int yearFromClock() {
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    return static_cast<int>(std::chrono::year_month_day{today}.year());
}

bool isFolder(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(fsPath(path), ec);
}

bool isFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(fsPath(path), ec);
}

// The template version check; false when the program must shut down.
bool checkTemplateVersion(Session& session) {
    const std::string marker = joinPath(session.applicationFolder, "version");
    if (isFile(marker))
        return true;
    const std::string templateMarker = joinPath(session.TemplatesRoot, "version");
    if (!isFile(templateMarker)) {
        session.prompt.message(std::string("Cannot locate template version information") + kCrLf +
                                   "Please reinstall the Lumora",
                               "Error", Icon::Critical, Buttons::OK);
        return false;
    }
    if (runOfficeRepair(session.registry, session.processes)) {
        // The marker records that the repair ran. Failing to write it only means the repair
        // is offered again at the next start, so it is reported and start-up goes on.
        try {
            fs::copy_file(fsPath(templateMarker), fsPath(marker),
                          fs::copy_options::overwrite_existing);
        } catch (const fs::filesystem_error& e) {
            reportFileError(session.prompt, e);
        }
    }
    return true;
}

} // namespace

const std::vector<std::string>& animationFrames() {
    // A balloon let go: it swells, flies off hissing and comes down limp.
    static const std::vector<std::string> frames = [] {
        const std::string nl = kCrLf;
        std::vector<std::string> f;
        f.push_back("   .   " + nl + "   |   " + nl + "   |   ");
        f.push_back("  (_)  " + nl + "   |   " + nl + "   |   ");
        const char* const flight[] = {"( )",      " ( )",    "  ( )",  "   ( )", "    ( )",
                                      "     ( )", "    ( )", "   ( )", "  ( )",  " ( )"};
        const char* const tails[] = {"~", " ~", "~ ", " ~", "~ ", " ~", "~ ", " ~", "~ ", " ~"};
        for (int i = 0; i < 10; ++i)
            f.push_back(std::string(flight[i]) + nl + tails[i] + nl + "Pfffffft");
        f.push_back("   ~   " + nl + "  ( )  " + nl + "       ");
        f.push_back("       " + nl + "   ~   " + nl + "  (_)  ");
        f.push_back("       " + nl + "       " + nl + "  _~_  ");
        f.push_back("       " + nl + "       " + nl + "  ___  ");
        return f;
    }();
    return frames;
}

bool runOfficeRepair(Registry& registry, ProcessStarter& processes) {
    static const char* const kProductCodes[] = {
        "{00000409-78E1-11D2-B60F-006097C998E7}", "{00010409-78E1-11D2-B60F-006097C998E7}",
        "{00020409-78E1-11D2-B60F-006097C998E7}", "{00030409-78E1-11D2-B60F-006097C998E7}"};
    const auto names =
        registry.subkeyNames("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
    if (!names)
        return false;
    const InstalledProducts installed(*names);
    for (const char* code : kProductCodes) {
        if (!installed.contains(code))
            continue;
        const long pid = processes.start(
            std::string("msiexec /i ") + code + " /qb- REMOVE=HTMLSourceEditing", true);
        return pid != 0;
    }
    return false;
}

std::string prepareSpellingEngine(SpellingEngine& engine, const std::string& spellingFolder) {
    engine.setOption(kSkipMarkupOption, 1);
    (void)engine.mainLexPath(); // asked for, as the engine expects, but not needed
    engine.setMainLexPath(spellingFolder);

    std::string list;
    for (const char* name : kLexiconFiles) {
        if (!isFile(spellingFolder + "/" + name))
            continue;
        if (!list.empty())
            list += ',';
        list += name;
    }
    engine.setMainLexFiles(list);
    // No help file ships for the spelling dialog on this platform; the dialog is our own.
    return list;
}

bool readRegistryValue(Registry& registry, const std::string& key, const std::string& name,
                       std::string& out) {
    out.clear();
    const auto value = registry.value(key, name);
    if (!value)
        return false;
    const auto text = registryValueText(*value);
    if (!text)
        return false;
    out = *text;
    return true;
}

void startSystemInfo(Session& session) {
    std::string program;
    if (!readRegistryValue(session.registry, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH",
                           program)) {
        std::string folder;
        if (readRegistryValue(session.registry, "SOFTWARE\\Microsoft\\Shared Tools Location",
                              "MSINFO", folder) &&
            isFile(joinPath(folder, "MSINFO32.EXE")))
            program = joinPath(folder, "MSINFO32.EXE");
    }
    if (!program.empty() && session.processes.start(program, false) != 0)
        return;
    session.prompt.message("System Information Is Unavailable At This Time", "", Icon::None,
                           Buttons::OK);
}

StartupResult runStartup(Session& session, const StartupOptions& options) {
    animationFrames();

    const int year = options.currentYear != 0 ? options.currentYear : yearFromClock();
    session.defaults = makeDefaultRecords(year);
    session.ResetModule();

    session.setInstallation(options.appPath, options.workspace);

    if (!isFolder(session.TemplatesRoot)) {
        session.prompt.message(std::string("The \"Templates\" folder does not exist.") + kCrLf +
                                   "Please reinstall the Lumora.",
                               "No Templates", Icon::Critical, Buttons::OK);
        return StartupResult::Shutdown;
    }
    if (!checkTemplateVersion(session))
        return StartupResult::Shutdown;

    if (options.showSplash)
        options.showSplash();

    if (session.spelling) {
        prepareSpellingEngine(*session.spelling, session.spellingFolder);
        session.spellingAvailable = session.spelling->available();
    }
    return StartupResult::Continue;
}

} // namespace lumora
