// The start-up routine: default records, installation paths, the templates check, the template
// version check with the office repair, the splash, and the spelling engine preparation.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace lumora {

class Session;
class Registry;
class ProcessStarter;
class SpellingEngine;

enum class StartupResult { Continue, Shutdown };

struct StartupOptions {
    std::string appPath;              // the program's own folder
    std::string workspace;            // empty: AppPath + "MyContent"
    int currentYear = 0;              // 0: taken from the clock
    std::function<void()> showSplash; // step 7; may be empty (command line)
};

StartupResult runStartup(Session& session, const StartupOptions& options);

// Pieces of start-up, exposed for the forms and tests.
// Frames of the main form's hidden animation (sixteen; frames 2 to 11 hold "Pfffffft").
const std::vector<std::string>& animationFrames();
// Runs the office repair; true when it reports that it started.
bool runOfficeRepair(Registry& registry, ProcessStarter& processes);
// Prepares the spelling engine over the spelling folder; returns the lexicon list passed.
std::string prepareSpellingEngine(SpellingEngine& engine, const std::string& spellingFolder);
// The registry value reader: text as read, a 32-bit number as decimal text.
bool readRegistryValue(Registry& registry, const std::string& key, const std::string& name,
                       std::string& out);
// Starts the system information tool or says it is unavailable.
void startSystemInfo(Session& session);

} // namespace lumora
