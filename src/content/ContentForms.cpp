// Conversions between stored content (relative "media/" paths, activity script calls) and the
// editor form (absolute paths, placeholder images), and in and out of script string literals.
#include "content/ContentForms.h"

#include "base/TextUtil.h"
#include "content/Normalize.h"
#include "storage/Paths.h"

#include <string_view>
#include <utility>
#include <vector>

namespace lumora {
namespace {

constexpr std::string_view kStoredActivityStart =
    "<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(";
constexpr std::string_view kStoredActivityEnd = "));</SCRIPT>";
// Older pages, and pages edited by hand, use the lower-case tag with a quoted attribute.
constexpr std::string_view kLowerActivityStart =
    "<script language=\"JavaScript\">document.write(parentRef.writeActivityHTML(";
constexpr std::string_view kLowerActivityEnd = "));</script>";

std::string rawAppImage(const ContentPaths& paths, const char* name) {
    return "<IMG src=\"" + paths.installFolder + kSep + "app" + kSep + name + "\">";
}

// The image as editor-form content holds it: normalised like all content, so a folder name
// holding one of the normalised characters (a © or °) holds its entity there.
std::string appImage(const ContentPaths& paths, const char* name) {
    return normalizeHTML(rawAppImage(paths, name));
}

// The module's media folder as the editor form writes it, separator at the end.
std::string editorMediaFolder(const ContentPaths& paths) {
    return paths.moduleFolder + kSep + "media" + kSep;
}

// The path part of the file URL a browser writes for a local folder: forward slashes and a
// leading slash before a drive letter.
std::string fileUrlPath(const std::string& folder) {
    std::string path = folder;
    for (char& c : path)
        if (c == '\\')
            c = '/';
    if (path.empty() || path.front() != '/')
        path.insert(0, 1, '/');
    return path;
}

// Percent-encodes what a browser escapes in a file URL path: blanks, a few delimiters and
// every byte outside ASCII.
std::string percentEncoded(const std::string& path) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(path.size());
    for (unsigned char c : path) {
        if (c <= 0x20 || c >= 0x7F || c == '"' || c == '%' || c == '<' || c == '>' || c == '`' ||
            c == '{' || c == '}' || c == '#' || c == '?') {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

// The editor-form texts toEditorHTML puts in, made once for the folders they name: loading a
// module converts thousands of texts with the same folders, most of them a few words long.
struct EditorTexts {
    std::string moduleFolder;
    std::string installFolder;
    std::string mediaAttribute; // "=\"" and the editor media folder
    std::string start;
    std::string end;
};

const EditorTexts& editorTexts(const ContentPaths& paths) {
    thread_local EditorTexts texts;
    thread_local bool made = false;
    if (!made || texts.moduleFolder != paths.moduleFolder ||
        texts.installFolder != paths.installFolder) {
        texts.moduleFolder = paths.moduleFolder;
        texts.installFolder = paths.installFolder;
        texts.mediaAttribute = "=\"" + editorMediaFolder(paths);
        texts.start = appImage(paths, "QAndAStart.gif");
        texts.end = appImage(paths, "QAndAEnd.gif");
        made = true;
    }
    return texts;
}

std::string editorFromStored(std::string html, const ContentPaths& paths) {
    const EditorTexts& texts = editorTexts(paths);
    replaceAllIn(html, "=\"media/", texts.mediaAttribute);
    // Start and end texts are converted independently, wherever they occur.
    replaceAllIn(html, kLowerActivityStart, texts.start);
    replaceAllIn(html, kStoredActivityStart, texts.start);
    replaceAllIn(html, kLowerActivityEnd, texts.end);
    replaceAllIn(html, kStoredActivityEnd, texts.end);
    return normalizeHTML(std::move(html));
}

} // namespace

std::string activityStartImage(const ContentPaths& paths) {
    return appImage(paths, "QAndAStart.gif");
}

std::string activityEndImage(const ContentPaths& paths) {
    return appImage(paths, "QAndAEnd.gif");
}

std::string activityPlaceholder(const ContentPaths& paths, int n) {
    return activityStartImage(paths) + std::to_string(n) + activityEndImage(paths);
}

std::string toEditorHTML(const std::string& stored, const ContentPaths& paths) {
    return editorFromStored(stored, paths);
}

std::string toEditorHTML(std::string&& stored, const ContentPaths& paths) {
    return editorFromStored(std::move(stored), paths);
}

namespace {

// The path texts toStoredHTML turns back into their stored form, in the order it replaces
// them, made once for the folders they name. Each comes in two spellings: content that passed
// normalisation holds a © or ° of a folder's name as its entity, content handed over as it
// came holds the character. Recognising both keeps the stored form the same whatever
// characters the folders' names hold.
struct StoredTexts {
    std::string moduleFolder;
    std::string installFolder;
    std::vector<std::pair<std::string, std::string_view>> replacements;
};

const StoredTexts& storedTexts(const ContentPaths& paths) {
    thread_local StoredTexts texts;
    thread_local bool made = false;
    if (made && texts.moduleFolder == paths.moduleFolder &&
        texts.installFolder == paths.installFolder)
        return texts;
    texts.moduleFolder = paths.moduleFolder;
    texts.installFolder = paths.installFolder;
    texts.replacements.clear();
    const auto add = [](const std::string& from, std::string_view to) {
        texts.replacements.emplace_back(from, to);
        std::string normalised = normalizeHTML(from);
        if (normalised != from)
            texts.replacements.emplace_back(std::move(normalised), to);
    };
    const std::string media = editorMediaFolder(paths);
    // The editing control may hand back a media path as a file URL. Those go first: on a
    // drive-letter system removing "file://" alone would leave "/media/".
    const std::string urlPath = fileUrlPath(media);
    add("file://" + urlPath, "media/");
    const std::string encoded = percentEncoded(urlPath);
    if (encoded != urlPath)
        add("file://" + encoded, "media/");
    add(media, "media/");
    add(otherSlashForm(media), "media/");
    add(rawAppImage(paths, "QAndAStart.gif"), kStoredActivityStart);
    add(rawAppImage(paths, "QAndAEnd.gif"), kStoredActivityEnd);
    made = true;
    return texts;
}

} // namespace

std::string toStoredHTML(const std::string& editor, const ContentPaths& paths) {
    std::string html = editor;
    for (const auto& [from, to] : storedTexts(paths).replacements)
        replaceAllIn(html, from, to);
    replaceAllIn(html, "file://", "");
    return normalizeHTML(std::move(html));
}

std::string fromScriptString(const std::string& literal, const ContentPaths& paths) {
    std::string html = replaceAll(literal, "\\\"", "\"");
    replaceAllIn(html, "<br>", "\r\n");
    return blankIfEmpty(editorFromStored(std::move(html), paths));
}

std::string toScriptString(const std::string& editor, const ContentPaths& paths) {
    // Line breaks become "<br>" before normalisation: its table fix-ups expect them.
    std::string text = replaceAll(editor, "\r\n", "<br>");
    text = toStoredHTML(text, paths);
    return replaceAll(std::move(text), "\"", "\\\"");
}

std::string getFileName(const std::string& path) {
    const char sep = path.find('/') != std::string::npos ? '/' : '\\';
    const std::size_t last = path.rfind(sep);
    return last == std::string::npos ? path : path.substr(last + 1);
}

} // namespace lumora
