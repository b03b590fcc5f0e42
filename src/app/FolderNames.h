// Pure text rules for module folder names: the author's answer turned into a folder name, the
// characters a folder name may not hold, and the path rewrite Save As applies to content.
#pragma once

#include <string>

namespace lumora {

// Trims blanks at both ends and turns every inner blank into "_": "  My Course  " -> "My_Course".
std::string folderNameFromAnswer(const std::string& answer);

// True when the name holds any of \ / : * ? " < > |.
bool hasForbiddenFolderCharacter(const std::string& name);

// The message shown for a name with a forbidden character (two lines).
std::string forbiddenCharactersMessage();

// Replaces every sep + oldName + sep by sep + newName + sep (case-sensitive), the name as typed
// and as normalised content holds it (a © as "&copy;").
std::string rewriteFolderReferences(const std::string& text, const std::string& oldName,
                                    const std::string& newName);

} // namespace lumora
