// Media insertion; see MediaInsertion.h.
#include "content/MediaInsertion.h"

#include "base/TextUtil.h"
#include "content/ContentForms.h"
#include "content/EditingText.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

std::string mediaTargetName(const std::string& fileName) {
    return replaceAll(fileName, " ", "_");
}

std::string companionFolderName(const std::string& fileName) {
    return fileName.substr(0, fileName.find('.')) + "_files";
}

bool showsAsImage(const std::string& targetPath) {
    return contains(targetPath, ".gi") || contains(targetPath, ".jp") ||
           contains(targetPath, ".png");
}

std::string imageHTML(const std::string& targetPath, const std::string& caption) {
    std::string image = "<img src=\"" + targetPath + "\" alt=\"" + caption + "\" border=0>";
    if (!caption.empty())
        image = "<table border=0 cellpadding=0 cellspacing=0 width=1><tr><td>" + image +
                "</td></tr><tr><td align=center>" + caption + "</td></tr></table>";
    return replaceAll(image, "\r\n", "");
}

namespace {

[[noreturn]] void fail(const fs::path& path, const std::error_code& error) {
    throw FileError(path.string(), error.message());
}

// The file a failed copy is about: the source when it cannot be read, else the target.
fs::path failedSide(const fs::path& from, const fs::path& to) {
    std::ifstream source(from, std::ios::binary);
    return source ? to : from;
}

// The copy goes to a temporary name first and replaces the old media file only when complete,
// so an unreadable source or a full disk never costs the author the picture already there.
void copyFileOver(const fs::path& from, const fs::path& to) {
    std::error_code error;
    if (fs::is_directory(from, error))
        throw FileError(from.string(), "It is a folder, not a file.");
    fs::path partial = to;
    partial += ".tmp-lumora";
    fs::copy_file(from, partial, fs::copy_options::overwrite_existing, error);
    if (!error)
        fs::rename(partial, to, error);
    if (error) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        fail(failedSide(from, to), error);
    }
}

} // namespace

std::string copyIntoMedia(const std::string& chosenPath, const std::string& moduleFolder) {
    const std::string name = getFileName(chosenPath);
    const std::string media = joinPath(moduleFolder, "media");
    const std::string target = joinPath(media, mediaTargetName(name));
    if (target != chosenPath)
        copyFileOver(fsPath(chosenPath), fsPath(target));

    const fs::path companion = fsPath(chosenPath).parent_path() / companionFolderName(name);
    std::error_code error;
    if (fs::is_directory(companion, error)) {
        fs::copy(companion, fsPath(media) / companion.filename(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing, error);
        if (error)
            fail(companion, error);
    }
    return target;
}

std::string makeMediaHTML(const std::string& chosenPath, const std::string& moduleFolder,
                          Prompt& prompt, const std::string& selectionHtml) {
    const std::string target = copyIntoMedia(chosenPath, moduleFolder);
    if (showsAsImage(target)) {
        // Cancelling the caption still inserts the picture, without one.
        const std::string caption =
            prompt.input("Type the caption for the image (if needed).", "Caption", "").value_or("");
        return imageHTML(target, caption);
    }
    return makeLinkHTML(target, selectionHtml.empty() ? getFileName(target) : selectionHtml);
}

} // namespace lumora
