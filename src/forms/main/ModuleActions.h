// Guards for the form actions that read or write module folders (open, new, save, save as):
// a file-system failure is reported as an "Error" naming the file and the reason, and the
// module the author was working on is never lost to it.
#pragma once

#include "base/Prompt.h"
#include "app/Session.h"

#include <functional>
#include <string>

namespace lumora {

// Runs an action; on a file-system failure shows the error and returns false.
bool reportFileErrors(Prompt& prompt, const std::function<void()>& action);

// Runs an action that replaces the open module (open, new, save as). When it fails with a
// file error, or answers false, the session gets back the module, positions and flags it had
// before, so a damaged folder or a full disk leaves the author where they were.
bool replaceModuleGuarded(Session& session, const std::function<bool()>& action);

} // namespace lumora
