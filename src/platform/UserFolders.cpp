// The documents folder; see UserFolders.h.
#include "platform/UserFolders.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace lumora {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// A value of user-dirs.dirs, "$HOME/..." or an absolute path, usually in double quotes.
std::string unquote(const std::string& raw) {
    if (raw.size() >= 2 && raw.front() == '"' && raw.back() == '"')
        return raw.substr(1, raw.size() - 2);
    return raw;
}

} // namespace

std::string documentsFolderFrom(const std::string& home, const std::string& userDirs) {
    if (home.empty())
        return "";
    std::istringstream lines(userDirs);
    std::string line;
    while (std::getline(lines, line)) {
        const std::string key = "XDG_DOCUMENTS_DIR=";
        if (line.rfind(key, 0) != 0)
            continue;
        const std::string value = unquote(line.substr(key.size()));
        if (value.rfind("$HOME", 0) == 0)
            return home + value.substr(5);
        if (!value.empty() && value.front() == '/')
            return value;
    }
    return home + "/Documents";
}

std::string documentsFolder() {
    const std::string home = environment("HOME");
    std::string config = environment("XDG_CONFIG_HOME");
    if (config.empty())
        config = home + "/.config";
    std::ifstream in(config + "/user-dirs.dirs", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return documentsFolderFrom(home, text);
}

} // namespace lumora
