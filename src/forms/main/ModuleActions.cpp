// Error reporting and the module snapshot behind the guarded form actions.
#include "forms/main/ModuleActions.h"

#include "app/ErrorReport.h"
#include "storage/TextFile.h"

#include <filesystem>
#include <new>

namespace lumora {

bool reportFileErrors(Prompt& prompt, const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const FileError& e) {
        reportFileError(prompt, e);
    } catch (const std::filesystem::filesystem_error& e) {
        reportFileError(prompt, e);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& e) {
        // Anything else that escapes a file operation (a damaged file that the core could not
        // make sense of) is still the author's file problem, not a reason to end the program.
        prompt.error(e.what());
    }
    return false;
}

namespace {

struct SessionSnapshot {
    CourseModule module;
    std::string NewModuleType;
    std::string StylesheetPath;
    bool ModuleLoaded;
    bool ModuleChanged;
    std::int16_t CurrentPage, CurrentItem, CurrentOption, CurrentTerm;

    explicit SessionSnapshot(const Session& s)
        : module(s.module), NewModuleType(s.NewModuleType), StylesheetPath(s.StylesheetPath),
          ModuleLoaded(s.ModuleLoaded), ModuleChanged(s.ModuleChanged), CurrentPage(s.CurrentPage),
          CurrentItem(s.CurrentItem), CurrentOption(s.CurrentOption), CurrentTerm(s.CurrentTerm) {}

    void restore(Session& s) const {
        s.module = module;
        s.NewModuleType = NewModuleType;
        s.StylesheetPath = StylesheetPath;
        s.ModuleLoaded = ModuleLoaded;
        s.ModuleChanged = ModuleChanged;
        s.CurrentPage = CurrentPage;
        s.CurrentItem = CurrentItem;
        s.CurrentOption = CurrentOption;
        s.CurrentTerm = CurrentTerm;
    }
};

} // namespace

bool replaceModuleGuarded(Session& session, const std::function<bool()>& action) {
    SessionSnapshot before(session);
    bool done = false;
    bool ran = reportFileErrors(session.prompt, [&] { done = action(); });
    if (ran && done)
        return true;
    before.restore(session);
    return false;
}

} // namespace lumora
