// The one open module and everything beside it: the default records, the installation paths,
// the changed and loaded flags, the selection indices and the services. The program creates one
// session and hands it to every form by reference; tests create as many as they like.
#pragma once

#include "app/ModuleLock.h"
#include "app/Services.h"
#include "base/Prompt.h"
#include "storage/CourseModule.h"

#include <cstdint>
#include <string>

namespace lumora {

struct ContentPaths; // content/ContentForms.h
struct ListContext;  // content/ListOps.h

class Session {
  public:
    Session(Prompt& prompt, Registry& registry, ProcessStarter& processes,
            SpellingEngine* spelling = nullptr);

    // --- the module and the globals beside it ---
    DefaultRecords defaults;
    CourseModule module;           // the CourseModule
    std::string AppPath;           // installation folder, ends with the separator
    std::string applicationFolder; // AppPath + "app"
    std::string WorkspaceFolder;   // AppPath + "MyContent" unless pointed elsewhere
    std::string TemplatesRoot;     // AppPath + "Templates"
    std::string spellingFolder;    // application folder + separator + "spelling"
    std::string NewModuleType;
    std::string StylesheetPath;
    bool ModuleLoaded = false;
    bool ModuleChanged = false;
    std::int16_t CurrentPage = 0;
    std::int16_t CurrentItem = 0;
    std::int16_t CurrentOption = 0;
    std::int16_t CurrentTerm = 0;
    bool spellingAvailable = false;
    // The open module's folder, held against a second program; released with the session.
    ModuleLock moduleLock;

    Prompt& prompt;
    Registry& registry;
    ProcessStarter& processes;
    SpellingEngine* spelling;

    // Sets AppPath (a separator is appended when missing) and the folders derived from it.
    // A workspace given here (command line or LUMORA_WORKSPACE) replaces AppPath + "MyContent".
    void setInstallation(const std::string& appPath, const std::string& workspace = {});

    // The installation folder without its trailing separator.
    std::string installFolder() const;
    ContentPaths contentPaths() const;
    // The module, positions, defaults and prompt the list operations work on.
    ListContext lists();

    void markChanged() { ModuleChanged = true; }

    // Overwrites the module with the default module.
    void ResetModule();

    // Reads the module named by module.moduleType and module.folderName and takes its folder's
    // lock, giving up the one held before. Returns false when it refused ("No Module is in
    // memory", or the module is open in another program); file errors travel as FileError. A
    // Lesson whose folder holds page files beyond its pages is loaded with a warning.
    bool LoadModule();

    // Drops blank questions, warns about questions with a wrong number of correct options,
    // writes the files of the module's type, clears ModuleChanged, and warns about texts the
    // scripts cannot carry. FileError on failure, with ModuleChanged left as it was; a read-only
    // file fails it before anything is written.
    void SaveModule();

    // Tells the author when a Lesson's folder holds page files that are not its pages (a
    // damaged or older module information file lists fewer pages than the folder holds).
    void warnAboutStrayPageFiles();

    // Tells the author when the learner's progress could outgrow what an LMS keeps.
    void warnIfProgressTooLong();

    // Save (SCORM/AICC) and Save (non-SCORM/AICC): set useSCORM, then SaveModule.
    void saveForScorm(bool scorm);

    // Create on the pages tab: a blank page at the end (or the trailing blank one again),
    // made current, with its page file written from the template's skeleton page so that the
    // folder stays a runnable course. FileError when the file cannot be written; the page
    // stays in the module and the next save writes it.
    void addPage();

    // Content setters used by the editors: convert to editor form and mark the module changed.
    void setPageContent(std::size_t page, const std::string& html);  // toEditorHTML
    void setQuestionText(std::size_t item, const std::string& text); // fromScriptString
};

} // namespace lumora
