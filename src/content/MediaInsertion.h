// Putting a file the author chose into a page or question: the copy into the module's media
// folder and the HTML that shows it (a picture, with a caption if the author gives one) or links
// to it (any other file). The HTML holds the editor form of the path, the absolute path inside
// the module folder; saving turns it into "media/...".
#pragma once

#include "base/Prompt.h"

#include <string>

namespace lumora {

// The name the file gets in the media folder: every space becomes "_", nothing else changes.
std::string mediaTargetName(const std::string& fileName);

// The folder a browser saves beside a web page: the name before its first "." + "_files".
std::string companionFolderName(const std::string& fileName);

// Whether the target is shown as a picture: ".gi", ".jp" or ".png" anywhere in the path, case
// and all, so "a.GIF" is linked and a module folder named "x.jpg" shows everything.
bool showsAsImage(const std::string& targetPath);

// "<img src=\"path\" alt=\"caption\" border=0>", inside the one-pixel caption table when there
// is a caption, with every CR LF removed. Nothing is escaped.
std::string imageHTML(const std::string& targetPath, const std::string& caption);

// Copies the chosen file to moduleFolder/media/<target name> (replacing a file of that name
// without asking; nothing is copied when the file is already there under that name) and the
// companion "_files" folder beside it, when there is one, into the media folder. Returns the
// target path. Throws FileError naming the file and the reason; a failed copy leaves an
// existing media file as it was.
std::string copyIntoMedia(const std::string& chosenPath, const std::string& moduleFolder);

// The whole insertion after the file was chosen: copy it, then build the picture (asking for
// its caption: "Caption") or the link, whose text is the selection's HTML (trimmed by the
// caller) or else the target's name. Throws FileError before asking anything.
std::string makeMediaHTML(const std::string& chosenPath, const std::string& moduleFolder,
                          Prompt& prompt, const std::string& selectionHtml);

} // namespace lumora
