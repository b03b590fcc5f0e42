// Folder-name rules and the Save As path rewrite; see FolderNames.h.
#include "app/FolderNames.h"

#include "base/Prompt.h"
#include "content/Normalize.h"
#include "storage/Paths.h"

#include <algorithm>

namespace lumora {

std::string folderNameFromAnswer(const std::string& answer) {
    const auto first = answer.find_first_not_of(' ');
    if (first == std::string::npos)
        return "";
    const auto last = answer.find_last_not_of(' ');
    std::string name = answer.substr(first, last - first + 1);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

bool hasForbiddenFolderCharacter(const std::string& name) {
    return name.find_first_of("\\/:*?\"<>|") != std::string::npos;
}

std::string forbiddenCharactersMessage() {
    return std::string("You cannot use the following characters:") + kCrLf + std::string(19, ' ') +
           "/ \\ : * ? \" < > |";
}

namespace {

std::string replaceFolderName(const std::string& text, const std::string& oldName,
                              const std::string& newName) {
    const std::string from = kSep + oldName + kSep;
    const std::string to = kSep + newName + kSep;
    std::string out;
    std::size_t pos = 0;
    while (true) {
        const std::size_t hit = text.find(from, pos);
        if (hit == std::string::npos)
            break;
        out.append(text, pos, hit - pos);
        out += to;
        pos = hit + from.size();
    }
    out.append(text, pos, std::string::npos);
    return out;
}

} // namespace

std::string rewriteFolderReferences(const std::string& text, const std::string& oldName,
                                    const std::string& newName) {
    std::string out = replaceFolderName(text, oldName, newName);
    // Content that passed normalisation holds a © or ° of the name as its entity.
    const std::string normalisedOld = normalizeHTML(oldName);
    if (normalisedOld != oldName)
        out = replaceFolderName(out, normalisedOld, normalizeHTML(newName));
    return out;
}

} // namespace lumora
