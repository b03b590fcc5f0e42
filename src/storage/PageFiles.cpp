// Lesson page files: the template's first page as a skeleton, the page's content spliced in
// between the marker lines. The HTML is never parsed; only marker lines are looked for.
#include "storage/PageFiles.h"

#include "base/TextUtil.h"
#include "storage/Paths.h"
#include "storage/ScriptText.h"
#include "storage/TextFile.h"
#include "storage/UnchangedFiles.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace lumora {

std::string pageSkeletonPath(const CourseModule& module) {
    return joinPath(module.templateFolder, "page0.html");
}

std::string buildPageFile(const std::vector<std::string>& skeleton, const std::string& stored) {
    std::string out;
    const auto writeLine = [&out](const std::string& text) {
        out += text;
        out += "\r\n";
    };
    bool copying = true;
    // The order of the three tests matters: a line holding both markers is written, the
    // content follows it, and copying stays off until a later line holds an end marker.
    for (const std::string& line : skeleton) {
        if (contains(line, kEndMarker))
            copying = true;
        if (copying)
            writeLine(line);
        if (contains(line, kStartMarker)) {
            // Content read from a page ends with the line break of its last line; that break
            // is the one this line ends with, so saving what was read leaves the file as it
            // was instead of adding an empty line at every save.
            std::string_view body = stored;
            if (body.size() >= 2 && body.substr(body.size() - 2) == "\r\n")
                body.remove_suffix(2);
            out += body;
            out += "\r\n";
            copying = false;
        }
    }
    return out;
}

namespace {

// Where the line holding `pos` starts and where the line after it starts (text.size() when it
// is the last line).
std::size_t lineStart(std::string_view text, std::size_t pos) {
    const std::size_t lf = pos == 0 ? std::string_view::npos : text.rfind('\n', pos - 1);
    return lf == std::string_view::npos ? 0 : lf + 1;
}

std::size_t nextLineStart(std::string_view text, std::size_t pos) {
    const std::size_t lf = text.find('\n', pos);
    return lf == std::string_view::npos ? text.size() : lf + 1;
}

// True when every line of the block already ends in CR LF, so the block is its own content.
bool endsEveryLineWithCrLf(std::string_view block) {
    if (block.empty())
        return true;
    if (block.back() != '\n')
        return false;
    for (std::size_t lf = block.find('\n'); lf != std::string_view::npos;
         lf = block.find('\n', lf + 1))
        if (lf == 0 || block[lf - 1] != '\r')
            return false;
    return true;
}

std::string contentLineByLine(std::string_view text) {
    std::string content;
    bool reading = false;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t lf = text.find('\n', pos);
        const std::size_t next = lf == std::string_view::npos ? text.size() : lf + 1;
        std::size_t end = lf == std::string_view::npos ? text.size() : lf;
        if (lf != std::string_view::npos && end > pos && text[end - 1] == '\r')
            --end;
        const std::string_view line = text.substr(pos, end - pos);
        pos = next;
        if (contains(line, kEndMarker))
            break;
        if (reading) {
            content += line;
            content += "\r\n";
        }
        if (contains(line, kStartMarker))
            reading = true;
    }
    return content;
}

} // namespace

std::string contentBetweenMarkers(std::string_view text) {
    // The lines after the first line holding the start marker, up to the first line holding the
    // end marker, which ends the reading even before a start marker. Markers hold no line
    // break, so those lines are found by searching the whole text; a page saved by this
    // program has CR LF lines and its content is then that block of the text as it stands.
    const std::size_t start = text.find(kStartMarker);
    if (start == std::string_view::npos)
        return {};
    const std::size_t endMarker = text.find(kEndMarker);
    const std::size_t from = nextLineStart(text, start);
    const std::size_t to =
        endMarker == std::string_view::npos ? text.size() : lineStart(text, endMarker);
    if (endMarker != std::string_view::npos && to <= start)
        return {}; // the end marker's line comes first or is the start marker's own
    const std::string_view block = text.substr(from, to > from ? to - from : 0);
    if (endsEveryLineWithCrLf(block))
        return std::string(block);
    // Lines ended by LF alone, or a last line without an end: each line gets its CR LF.
    return contentLineByLine(text);
}

void writePageFileFrom(const CourseModule& module, std::size_t i,
                       const std::vector<std::string>& skeleton, const ContentPaths& paths) {
    const std::string stored = toStoredHTML(module.pages.at(i).content, paths);
    writeFileIfChanged(joinPath(module.ModuleFolder, pageFileName(i)),
                       buildPageFile(skeleton, stored));
}

void WritePageFile(const CourseModule& module, std::size_t i, const ContentPaths& paths) {
    writePageFileFrom(module, i, readTextLines(pageSkeletonPath(module)), paths);
}

std::string ReadPageContent(const CourseModule& module, std::size_t i, const ContentPaths& paths) {
    const std::string path = joinPath(module.ModuleFolder, module.pages.at(i).fileName);
    // Opening a module reads a thousand pages: one buffer serves them all.
    thread_local std::string bytes;
    readFileInto(path, bytes);
    std::string content = contentBetweenMarkers(decodedView(bytes));
    if (bytes.capacity() > (1u << 20))
        std::string().swap(bytes); // a huge page does not keep its memory
    return toEditorHTML(std::move(content), paths);
}

void LoadPageContent(CourseModule& module, std::size_t i, const ContentPaths& paths) {
    try {
        module.pages.at(i).content = ReadPageContent(module, i, paths);
        return;
    } catch (const FileError&) {
        // Asked only after a failed read: opening a module reads a thousand pages that exist.
        std::error_code ec;
        const std::string path = joinPath(module.ModuleFolder, module.pages[i].fileName);
        if (std::filesystem::exists(fsPath(path), ec) || ec)
            throw;
    }
    // A page listed in the module but deleted by hand comes back as an empty page: the skeleton
    // without the template's sample content, as the writer writes a page without content.
    writeFileAtomically(joinPath(module.ModuleFolder, module.pages[i].fileName),
                        buildPageFile(readTextLines(pageSkeletonPath(module)), ""));
    module.pages[i].content = ReadPageContent(module, i, paths);
}

} // namespace lumora
