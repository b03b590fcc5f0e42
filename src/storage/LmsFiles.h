// The files an LMS imports a module by: imsmanifest.xml (a SCORM 1.2 content package with one
// SCO launching the frameset file) and the AICC course structure files course.au, .crs, .des and
// .cst. They are rewritten from the module at every save, so their title, launch file and file
// list always match the folder.
//
// Identity. An LMS keys its learners' records by the package's identifiers, so a module keeps
// one id ("LUM-" and sixteen hexadecimal digits from std::random_device) for life. The id lives
// in the manifest itself, the one file that travels with every copy of the module, beside a
// comment recording the folder it was made for. A copy (Save As, or a new module made from a
// template) carries the files of its source, so the id is kept only while the recorded folder
// name equals the module's folder name; otherwise, and while the manifest still holds the
// templates' placeholder id or no id of ours at all, a fresh one is drawn. Renaming a folder by
// hand therefore gives the module a new identity, which is the safe side: two modules never
// share one.
#pragma once

#include "storage/CourseModule.h"

#include <string>
#include <string_view>
#include <vector>

namespace lumora {

inline constexpr const char* kManifestFile = "imsmanifest.xml";
inline constexpr const char* kAiccBaseName = "course";
// The id the templates carry; a module never keeps it.
inline constexpr const char* kTemplateModuleId = "LUM-TEMPLATE";

// What the import files say about a module.
struct LmsModuleInfo {
    std::string id;         // kTemplateModuleId or "LUM-" + 16 hex digits
    std::string folderName; // recorded in the manifest; empty for a template
    std::string title;      // modTitle
    std::string launchFile; // the frameset file
};

// The four AICC course structure files, CR LF lines.
struct AiccFiles {
    std::string au;
    std::string crs;
    std::string des;
    std::string cst;
};

// Rewrites ModuleFolder/imsmanifest.xml and the AICC files from the module: title modTitle,
// launch file framesetFile, the file list every file of the folder. Throws FileError.
void WriteLmsFiles(const CourseModule& module);

// The import files WriteLmsFiles writes into a module folder.
std::vector<std::string> lmsFilePaths(const std::string& folder);

// Rewrites a template folder's import files with the placeholder id (no folder recorded).
void writeTemplateLmsFiles(const std::string& templateFolder, const std::string& moduleType,
                           const std::string& title);

// The problems an LMS would trip over that the SCORM schemas do not catch: a wrong schema
// version, a default organization or identifierref naming nothing, a listed file that is
// missing, a file of the folder that is not listed. Empty when the package is sound.
std::vector<std::string> checkPackageFolder(const std::string& folder);

// --- the pieces, pure functions over text -------------------------------------------------

// Every file a package of this folder holds: regular files under it, relative, '/'
// separators, byte-wise sorted. Dotfiles and dot-folders and the safe writer's unfinished
// "*.tmp-lumora" files are not part of a module, and neither is a symbolic link: it may reach
// outside the folder, and a package must never carry a file the author did not put in it.
// Throws FileError when the folder is unreadable.
std::vector<std::string> listPackageFiles(const std::string& folder);

// The manifest's bytes; `files` are the package files without the manifest itself. A pass mark
// (percent text, "80") becomes the item's adlcp:masteryscore; the folder's files carry none.
std::string manifestXml(const LmsModuleInfo& info, const std::vector<std::string>& files,
                        std::string_view masteryScore = {});
AiccFiles aiccFiles(const LmsModuleInfo& info, std::string_view masteryScore = {});

// The comment that records the folder a manifest was made for.
std::string manifestComment(std::string_view folderName);
// The id and recorded folder of a manifest's text; empty fields when it holds none.
LmsModuleInfo readManifestIdentity(std::string_view manifest);
// The id a module saved in `folderName` keeps, given its current manifest (or "").
std::string chooseModuleId(std::string_view currentManifest, const std::string& folderName);
std::string newModuleId();
bool isModuleId(std::string_view id);

// A manifest's title text: one line, cut to the 200 characters the packaging schemas allow,
// escaped for XML.
std::string manifestTitle(std::string_view title);

// Text escaping for the three places a title goes.
std::string escapeXml(std::string_view text);
std::string oneLine(std::string_view text);     // line breaks and tabs become blanks
std::string aiccQuoted(std::string_view text);  // one double-quoted field of .au/.des/.cst
std::string hrefForPath(std::string_view path); // percent-encodes what a URI may not hold
std::string pathForHref(std::string_view href); // the reverse

} // namespace lumora
