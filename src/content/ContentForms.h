// The two forms of content: stored (what the module files hold: "media/" paths and activity
// script calls) and editor form (absolute media paths and activity placeholder images).
#pragma once

#include <string>

namespace lumora {

struct ContentPaths {
    std::string moduleFolder;  // no trailing separator
    std::string installFolder; // no trailing separator; its "app" folder holds the gif images
};

// "<IMG src=\"" + installFolder + sep + "app" + sep + "QAndAStart.gif\">" and the end image, as
// editor-form content holds them (normalised: a © in the folder's name is "&copy;" there).
std::string activityStartImage(const ContentPaths& paths);
std::string activityEndImage(const ContentPaths& paths);
// The whole placeholder of activity n (1-based).
std::string activityPlaceholder(const ContentPaths& paths, int n);

std::string toEditorHTML(const std::string& stored, const ContentPaths& paths);
std::string toEditorHTML(std::string&& stored, const ContentPaths& paths); // reuses the buffer
std::string toStoredHTML(const std::string& editor, const ContentPaths& paths);
std::string fromScriptString(const std::string& literal, const ContentPaths& paths);
std::string toScriptString(const std::string& editor, const ContentPaths& paths);
std::string getFileName(const std::string& path);

} // namespace lumora
