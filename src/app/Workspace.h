// The workspace folder and the module folders in it: the workspace check, the folder-name
// prompt, new modules copied from their template, Save As, and the folder chooser's listing.
#pragma once

#include <string>
#include <vector>

namespace lumora {

class Session;

// false: the author refused to create the workspace, or it cannot be created or written (the
// message names it and how to choose another); the program must shut down.
bool EnsureWorkspace(Session& session);
std::string workspaceUnusableText(const std::string& folder, const std::string& reason);
// The accepted folder name, or "" when the author cancelled.
std::string PromptFolderName(Session& session);
// Creates and loads a module of the given type; false when the author cancelled.
bool NewModuleFolder(Session& session, const std::string& type);
// Copies the open module's folder under a new name and points the module at it; false when
// the author cancelled. The caller then saves.
bool SaveModuleAs(Session& session);

// " (L)", " (E)", " (S)" by the frameset file the folder holds, "" for none.
std::string moduleTypeSuffix(const std::string& folderPath);
// The folder chooser's entries ("name (L)" ...), sorted by name.
std::vector<std::string> listModuleFolders(const std::string& workspaceFolder);
// Number of sub-folders of the workspace, module or not.
std::size_t countSubfolders(const std::string& workspaceFolder);
// The folder chooser's OK on a list text: false when the text is empty (the message is shown).
// Otherwise resets the module, sets type and folder from the entry and loads it.
bool OpenModuleEntry(Session& session, const std::string& entry);

// The file work of NewModuleFolder and SaveModuleAs under an accepted name, without prompts.
// Both throw FileError or std::filesystem::filesystem_error and leave no half-made folder
// behind; the module in memory is changed only once the copy succeeded.
void createModuleFolder(Session& session, const std::string& type, const std::string& name);
void copyModuleFolderAs(Session& session, const std::string& name);
// The type word for a folder chooser tag ("(l)", "(e)", "(s)"), "" for anything else.
std::string moduleTypeForTag(const std::string& tag);

} // namespace lumora
