#include "app/Session.h"

#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "content/ScriptLiterals.h"
#include "content/Validation.h"
#include "storage/LmsFiles.h"
#include "storage/ModuleLoader.h"
#include "storage/ModuleWriter.h"
#include "storage/PageFiles.h"
#include "storage/Paths.h"
#include "storage/Stylesheet.h"
#include "storage/SuspendData.h"
#include "storage/TextFile.h"

#include <optional>

namespace lumora {

Session::Session(Prompt& p, Registry& r, ProcessStarter& ps, SpellingEngine* s)
    : prompt(p), registry(r), processes(ps), spelling(s) {}

void Session::setInstallation(const std::string& appPath, const std::string& workspace) {
    AppPath = appPath;
    if (AppPath.empty() || AppPath.back() != kSep)
        AppPath += kSep;
    applicationFolder = AppPath + "app";
    WorkspaceFolder = workspace.empty() ? AppPath + "MyContent" : workspace;
    while (WorkspaceFolder.size() > 1 && WorkspaceFolder.back() == kSep)
        WorkspaceFolder.pop_back();
    TemplatesRoot = AppPath + "Templates";
    spellingFolder = joinPath(applicationFolder, "spelling");
}

std::string Session::installFolder() const {
    std::string folder = AppPath;
    if (folder.size() > 1 && folder.back() == kSep)
        folder.pop_back();
    return folder;
}

ContentPaths Session::contentPaths() const {
    return ContentPaths{module.ModuleFolder, installFolder()};
}

ListContext Session::lists() {
    return ListContext{module,      defaults,      contentPaths(), prompt,       CurrentPage,
                       CurrentItem, CurrentOption, CurrentTerm,    ModuleChanged};
}

void Session::ResetModule() {
    module = defaults.module;
}

bool Session::LoadModule() {
    if (module.moduleType.empty() || module.folderName.empty()) {
        prompt.message("No Module is in memory", "Error", Icon::Critical, Buttons::OK);
        return false;
    }
    // The new folder's lock is taken first and the old one kept until the load succeeded, so
    // a refused or failed load leaves the open module held.
    const std::string folder = joinPath(WorkspaceFolder, module.folderName);
    std::optional<ModuleLock> claimed;
    if (moduleLock.folder() != folder) {
        ModuleLock::Attempt attempt = ModuleLock::take(folder, processes);
        if (attempt.heldBy) {
            prompt.error(moduleOpenElsewhereText(module.folderName, folder, *attempt.heldBy));
            return false;
        }
        claimed = std::move(attempt.lock);
    }
    CurrentPage = CurrentItem = CurrentOption = CurrentTerm = 0;
    NewModuleType = module.moduleType;
    module.ModuleFolder = joinPath(WorkspaceFolder, module.folderName);
    StylesheetPath = joinPath(joinPath(module.ModuleFolder, "css"), "camstyle.css");
    module.templateFolder = joinPath(TemplatesRoot, module.moduleType);
    module.framesetFile = framesetFileFor(module.moduleType);

    LoadOutcome outcome = LoadModuleFiles(module, contentPaths());
    if (outcome.questionTextRead)
        markChanged();
    dropBlankQuestions(lists());
    ReadStylesheetColours(module, StylesheetPath);
    if (claimed)
        moduleLock = std::move(*claimed);
    ModuleLoaded = true;
    warnAboutStrayPageFiles();
    return true;
}

void Session::warnAboutStrayPageFiles() {
    const std::size_t stray = countStrayPageFiles(module);
    if (stray == 0)
        return;
    const std::string count = std::to_string(stray);
    prompt.message(stray == 1
                       ? "The module folder holds 1 page file that is not part of the "
                         "module." +
                             std::string(kCrLf) + "It stays on disk: saving does not remove it."
                       : "The module folder holds " + count +
                             " page files that are not part of the module." + kCrLf +
                             "They stay on disk: saving does not remove them.",
                   "Warning", Icon::Exclamation, Buttons::OK);
}

void Session::SaveModule() {
    dropBlankQuestions(lists());
    validateQuestions(module, prompt);
    // A protected file stops the save before anything is written, so the folder keeps the
    // module as it was last saved.
    std::vector<std::string> targets = moduleFilePaths(module);
    for (std::string& path : lmsFilePaths(module.ModuleFolder))
        targets.push_back(std::move(path));
    for (const std::string& path : targets)
        ensureNotReadOnly(path);
    removeUnfinishedWrites(module.ModuleFolder);
    WriteModuleFiles(module, contentPaths());
    RemoveStalePageFiles(module);
    // The import files list the folder's files, so they are written after everything else.
    WriteLmsFiles(module);
    ModuleChanged = false;
    warnIfProgressTooLong();
    warnAboutBreakingTexts(module, contentPaths(), prompt);
}

void Session::warnIfProgressTooLong() {
    if (module.useSCORM != "true")
        return;
    const std::size_t worst = suspendDataWorstCase(module);
    if (worst <= kSuspendDataLimit)
        return;
    prompt.message("This module can record up to " + std::to_string(worst) +
                       " characters of progress, but an LMS keeps only " +
                       std::to_string(kSuspendDataLimit) + "." + kCrLf +
                       "Learners may lose their place: use fewer pages or questions, or save it "
                       "for use without SCORM/AICC.",
                   "Warning", Icon::Exclamation, Buttons::OK);
}

void Session::saveForScorm(bool scorm) {
    module.useSCORM = scorm ? "true" : "false";
    SaveModule();
}

void Session::addPage() {
    addBlankPage(lists());
    WritePageFile(module, static_cast<std::size_t>(CurrentPage), contentPaths());
}

void Session::setPageContent(std::size_t page, const std::string& html) {
    if (page >= module.pages.size())
        return;
    module.pages[page].content = toEditorHTML(html, contentPaths());
    markChanged();
}

void Session::setQuestionText(std::size_t item, const std::string& text) {
    if (item >= module.questions.size())
        return;
    module.questions[item].questionText = fromScriptString(text, contentPaths());
    markChanged();
}

} // namespace lumora
