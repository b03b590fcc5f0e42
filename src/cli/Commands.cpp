// The commands of lumora-cli; see Commands.h.
#include "cli/Commands.h"

#include "app/FolderNames.h"
#include "app/Session.h"
#include "app/Workspace.h"
#include "cli/CliPrompt.h"
#include "cli/ModuleJson.h"
#include "cli/PackageCommand.h"
#include "content/Validation.h"
#include "storage/ModuleWriter.h"
#include "storage/Paths.h"

#include <cctype>
#include <ostream>

namespace lumora::cli {

namespace {

std::string lowerAscii(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// "lesson" and "Lesson" both name the type; anything else names none.
std::string moduleTypeWord(const std::string& word) {
    for (const char* type : {kLesson, kEvaluation, kSurvey})
        if (lowerAscii(word) == lowerAscii(type))
            return type;
    return "";
}

// Opens a module folder of the workspace the way the folder chooser does: its type is read
// from the frameset file it holds. false (with a message) when it is no module folder.
bool openModule(Session& session, const std::string& name) {
    const std::string suffix = moduleTypeSuffix(joinPath(session.WorkspaceFolder, name));
    if (name.empty() || suffix.empty()) {
        session.prompt.error(name + " is not a module folder in " + session.WorkspaceFolder);
        return false;
    }
    session.ResetModule();
    session.module.moduleType = moduleTypeForTag(lowerAscii(suffix.substr(suffix.size() - 3)));
    session.module.folderName = name;
    return session.LoadModule();
}

int commandNew(Session& session, CliPrompt& prompt, const CliOptions& o, std::ostream& out) {
    if (o.operands.size() != 2)
        return kUsage;
    const std::string type = moduleTypeWord(o.operands[0]);
    if (type.empty())
        return kUsage;
    // The desktop program reads an empty answer as Cancel; here it can only be a mistake.
    if (folderNameFromAnswer(o.operands[1]).empty()) {
        session.prompt.error("The folder name is empty.");
        return kRefused;
    }
    // The name is the answer to the folder-name box; a refused name is not asked again.
    prompt.queueInput(o.operands[1]);
    session.NewModuleType = type;
    const std::string name = PromptFolderName(session);
    if (name.empty())
        return kRefused;
    createModuleFolder(session, type, name);
    out << name << moduleTypeSuffix(session.module.ModuleFolder) << '\n';
    return kDone;
}

int commandList(Session& session, const CliOptions& o, std::ostream& out) {
    if (!o.operands.empty())
        return kUsage;
    for (const std::string& entry : listModuleFolders(session.WorkspaceFolder))
        out << entry << '\n';
    return kDone;
}

int commandCheck(Session& session, const CliOptions& o, std::ostream&) {
    if (o.operands.size() != 1)
        return kUsage;
    if (!openModule(session, o.operands[0]))
        return kRefused;
    // Page files outside the module were reported by the load; they fail the check as well.
    const bool strayPages = countStrayPageFiles(session.module) > 0;
    const bool invalid = !invalidQuestionsMessage(session.module).empty();
    validateQuestions(session.module, session.prompt);
    return invalid || strayPages ? kRefused : kDone;
}

int commandSave(Session& session, const CliOptions& o, std::ostream&) {
    if (o.operands.size() != 1)
        return kUsage;
    if (!openModule(session, o.operands[0]))
        return kRefused;
    session.saveForScorm(!o.nonScorm);
    return kDone;
}

int commandShow(Session& session, const CliOptions& o, std::ostream& out) {
    if (o.operands.size() != 1)
        return kUsage;
    if (!openModule(session, o.operands[0]))
        return kRefused;
    out << moduleJson(session.module);
    return kDone;
}

int commandPackage(Session& session, const CliOptions& o, std::ostream&) {
    if (o.operands.size() != 1)
        return kUsage;
    return runPackageCommand(session,
                             PackageRequest{o.operands[0], o.outPath, o.format, o.mastery});
}

} // namespace

int runCommand(Session& session, CliPrompt& prompt, const CliOptions& o, std::ostream& out) {
    const std::string& c = o.command;
    if (c == "new")
        return commandNew(session, prompt, o, out);
    if (c == "list")
        return commandList(session, o, out);
    if (c == "check")
        return commandCheck(session, o, out);
    if (c == "save")
        return commandSave(session, o, out);
    if (c == "show")
        return commandShow(session, o, out);
    if (c == "package")
        return commandPackage(session, o, out);
    return kUsage;
}

} // namespace lumora::cli
