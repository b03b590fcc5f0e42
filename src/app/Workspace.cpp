// The workspace folder and the module folders in it; see Workspace.h.
#include "app/Workspace.h"

#include "app/ErrorReport.h"
#include "app/FolderNames.h"
#include "app/Session.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace lumora {

namespace {

bool isFolder(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(fsPath(path), ec);
}

bool isFile(const fs::path& path) {
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

std::string lowerAscii(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// Copies a whole folder tree to a folder that does not exist yet. On failure the partial copy
// is removed, so a later attempt under the same name is not refused as "already exists".
void copyFolderTree(const std::string& from, const std::string& to) {
    if (!isFolder(from))
        throw FileError(from, "The folder does not exist.");
    const fs::path target = fsPath(to);
    std::error_code ec;
    if (fs::exists(target, ec))
        throw FileError(to, "A file or folder of that name already exists.");
    fs::create_directory(target);
    try {
        fs::copy(fsPath(from), target, fs::copy_options::recursive);
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(target, ignored);
        throw;
    }
}

// Why no file can be made in the folder, "" when one can.
std::string unwritableReason(const std::string& folder) {
    const fs::path probe = fsPath(joinPath(folder, ".lumora-write-test"));
    std::FILE* file = std::fopen(probe.c_str(), "w");
    if (!file)
        return std::error_code(errno, std::generic_category()).message();
    std::fclose(file);
    std::error_code ignored;
    fs::remove(probe, ignored);
    return "";
}

template <typename Operation> bool reportingFileErrors(Session& session, Operation operation) {
    try {
        operation();
        return true;
    } catch (const FileError& e) {
        reportFileError(session.prompt, e);
    } catch (const fs::filesystem_error& e) {
        reportFileError(session.prompt, e);
    }
    return false;
}

} // namespace

std::string workspaceUnusableText(const std::string& folder, const std::string& reason) {
    return "Lumora cannot keep your modules in \"" + folder + "\": " + reason + "." + kCrLf +
           "Choose another folder with --workspace FOLDER (or the environment variable "
           "LUMORA_WORKSPACE) and start again.";
}

bool EnsureWorkspace(Session& session) {
    const std::string& folder = session.WorkspaceFolder;
    if (!isFolder(folder)) {
        if (!session.prompt.ask(std::string("The \"MyContent\" folder does not exist.") + kCrLf +
                                    "Create a \"MyContent\" folder?",
                                "Create MyContent", Icon::Critical)) {
            session.prompt.error("Cannot continue without \"MyContent\" folder.");
            return false;
        }
        // A workspace pointed elsewhere may sit below folders that do not exist yet either.
        std::error_code ec;
        fs::create_directories(fsPath(folder), ec);
        if (ec) {
            session.prompt.error(workspaceUnusableText(folder, ec.message()));
            return false;
        }
    }
    // Every module is created and saved here: a folder that takes no file is found now rather
    // than at the author's first save.
    if (const std::string reason = unwritableReason(folder); !reason.empty()) {
        session.prompt.error(workspaceUnusableText(folder, reason));
        return false;
    }
    return true;
}

std::string PromptFolderName(Session& session) {
    const std::string prompt =
        "Please enter a folder name for the new " + session.NewModuleType + ".";
    const std::string title = "New " + session.NewModuleType + " Folder";
    while (true) {
        const auto answer = session.prompt.input(prompt, title, "");
        if (!answer)
            return "";
        const std::string name = folderNameFromAnswer(*answer);
        if (name.empty())
            return "";
        if (hasForbiddenFolderCharacter(name)) {
            session.prompt.error(forbiddenCharactersMessage());
            continue;
        }
        if (isFolder(joinPath(session.WorkspaceFolder, name))) {
            session.prompt.error(name + " already exists." + kCrLf + "You must use a unique name.");
            continue;
        }
        return name;
    }
}

void createModuleFolder(Session& session, const std::string& type, const std::string& name) {
    const std::string templatePath = joinPath(session.TemplatesRoot, type);
    const std::string modulePath = joinPath(session.WorkspaceFolder, name);
    copyFolderTree(templatePath, modulePath);
    // Templates kept in version control cannot hold an empty media folder; every module has one.
    fs::create_directories(fsPath(joinPath(modulePath, "media")));

    session.NewModuleType = type;
    session.ResetModule();
    session.module.folderName = name;
    session.module.templateFolder = templatePath;
    session.module.moduleType = type;
    session.LoadModule();
}

bool NewModuleFolder(Session& session, const std::string& type) {
    session.NewModuleType = type;
    const std::string name = PromptFolderName(session);
    if (name.empty())
        return false;
    return reportingFileErrors(session, [&] { createModuleFolder(session, type, name); });
}

void copyModuleFolderAs(Session& session, const std::string& name) {
    CourseModule& m = session.module;
    const std::string newFolder = joinPath(session.WorkspaceFolder, name);
    copyFolderTree(m.ModuleFolder, newFolder);

    // The copy is the open module now: it is held, and the old folder is free again.
    session.moduleLock = ModuleLock::take(newFolder, session.processes).lock;

    const std::string oldName = m.folderName;
    m.ModuleFolder = newFolder;
    m.folderName = name;
    // The colour scheme dialog writes to the stylesheet path: it must follow the copy too.
    session.StylesheetPath = joinPath(joinPath(newFolder, "css"), "camstyle.css");
    for (LessonPage& page : m.pages)
        page.content = rewriteFolderReferences(page.content, oldName, name);
    for (QAndAItem& item : m.questions)
        item.questionText = rewriteFolderReferences(item.questionText, oldName, name);
}

bool SaveModuleAs(Session& session) {
    // The prompt names the open module's type, whatever a cancelled New left behind.
    session.NewModuleType = session.module.moduleType;
    const std::string name = PromptFolderName(session);
    if (name.empty())
        return false;
    return reportingFileErrors(session, [&] { copyModuleFolderAs(session, name); });
}

std::string moduleTypeSuffix(const std::string& folderPath) {
    const fs::path folder = fsPath(folderPath);
    if (isFile(folder / "lessonframeset.html"))
        return " (L)";
    if (isFile(folder / "poolframeset.html"))
        return " (E)";
    if (isFile(folder / "surveyframeset.html"))
        return " (S)";
    return "";
}

std::vector<std::string> listModuleFolders(const std::string& workspaceFolder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(fsPath(workspaceFolder), ec), end; !ec && it != end;
         it.increment(ec)) {
        std::error_code typeError;
        if (it->is_directory(typeError))
            names.push_back(it->path().filename().string());
    }
    // Sorted as a sorted list box sorts: ignoring case, then by the bytes for a stable order.
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string la = lowerAscii(a), lb = lowerAscii(b);
        return la != lb ? la < lb : a < b;
    });

    std::vector<std::string> entries;
    for (const std::string& name : names) {
        const std::string suffix = moduleTypeSuffix(joinPath(workspaceFolder, name));
        const std::string entry = suffix.empty() ? std::string() : name + suffix;
        if (!entry.empty() && entry.back() == ')')
            entries.push_back(entry);
    }
    return entries;
}

std::size_t countSubfolders(const std::string& workspaceFolder) {
    std::size_t count = 0;
    std::error_code ec;
    for (fs::directory_iterator it(fsPath(workspaceFolder), ec), end; !ec && it != end;
         it.increment(ec)) {
        std::error_code typeError;
        if (it->is_directory(typeError))
            ++count;
    }
    return count;
}

std::string moduleTypeForTag(const std::string& tag) {
    if (tag == "(l)")
        return kLesson;
    if (tag == "(e)")
        return kEvaluation;
    if (tag == "(s)")
        return kSurvey;
    return "";
}

bool OpenModuleEntry(Session& session, const std::string& entry) {
    if (entry.empty()) {
        session.prompt.error("You must choose a folder or click \"Cancel\"");
        return false;
    }
    const std::string tag = lowerAscii(entry.size() >= 3 ? entry.substr(entry.size() - 3) : entry);
    const std::string name = entry.size() >= 4 ? entry.substr(0, entry.size() - 4) : "";
    session.ResetModule();
    session.module.moduleType = moduleTypeForTag(tag);
    session.module.folderName = name;
    bool loaded = false;
    const bool noFileError = reportingFileErrors(session, [&] { loaded = session.LoadModule(); });
    return noFileError && loaded;
}

} // namespace lumora
