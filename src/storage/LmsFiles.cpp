// Writing the LMS import files: the manifest, the AICC course structure files and the module's
// identity that both carry.
#include "storage/LmsFiles.h"

#include "storage/LmsXmlScan.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <random>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kIdPrefix = "LUM-";
constexpr std::size_t kIdHexDigits = 16;
constexpr std::string_view kFolderCommentStart = " Lumora module folder: ";
constexpr std::string_view kFolderCommentEnd = " ";
constexpr std::string_view kTempSuffix = ".tmp-lumora";
// The content packaging schema caps a title at 200 characters; longer ones fail validation.
constexpr std::size_t kMaxManifestTitle = 200;
constexpr const char* kLineEnd = "\r\n";

// The first `limit` code points of UTF-8 text.
std::string firstCodePoints(std::string_view text, std::size_t limit) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
            if (count == limit)
                return std::string(text.substr(0, i));
            ++count;
        }
    }
    return std::string(text);
}

char hexDigit(unsigned value) {
    return "0123456789ABCDEF"[value & 0xF];
}

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

void percentEncode(std::string& out, unsigned char c) {
    out += '%';
    out += hexDigit(c >> 4);
    out += hexDigit(c);
}

// The folder name inside an XML comment, where "--" may not appear: '-' and '%' (and control
// characters) are percent-encoded, everything else stays readable.
std::string folderForComment(std::string_view folder) {
    std::string out;
    for (char ch : folder) {
        auto c = static_cast<unsigned char>(ch);
        if (c == '-' || c == '%' || c < 0x20 || c == 0x7F)
            percentEncode(out, c);
        else
            out += ch;
    }
    return out;
}

std::string manifestPath(const std::string& folder) {
    return joinPath(folder, kManifestFile);
}

std::string aiccPath(const std::string& folder, const char* extension) {
    return joinPath(folder, std::string(kAiccBaseName) + extension);
}

// The folder's last component, for a module whose folderName was never set.
std::string lastComponent(const std::string& folder) {
    return fsPath(folder).filename().string();
}

void writeLmsFilesTo(const std::string& folder, const LmsModuleInfo& info) {
    const AiccFiles aicc = aiccFiles(info);
    writeFileAtomically(aiccPath(folder, ".au"), aicc.au);
    writeFileAtomically(aiccPath(folder, ".crs"), aicc.crs);
    writeFileAtomically(aiccPath(folder, ".des"), aicc.des);
    writeFileAtomically(aiccPath(folder, ".cst"), aicc.cst);

    // Listed after the AICC files exist, so a first save lists them too.
    std::vector<std::string> files = listPackageFiles(folder);
    std::erase(files, std::string(kManifestFile));
    writeFileAtomically(manifestPath(folder), manifestXml(info, files));
}

} // namespace

std::vector<std::string> lmsFilePaths(const std::string& folder) {
    return {aiccPath(folder, ".au"), aiccPath(folder, ".crs"), aiccPath(folder, ".des"),
            aiccPath(folder, ".cst"), manifestPath(folder)};
}

// --- text escaping ----------------------------------------------------------------------

std::string escapeXml(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string oneLine(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue; // CR LF is one break, one blank
        out += c < 0x20 || c == 0x7F ? ' ' : text[i];
    }
    return out;
}

// No two AICC readers agree on escaping a double quote inside a quoted field (doubled, with a
// backslash, or not at all), so a quote becomes an apostrophe: every reader splits it right.
std::string aiccQuoted(std::string_view text) {
    std::string field = oneLine(text);
    std::replace(field.begin(), field.end(), '"', '\'');
    return "\"" + field + "\"";
}

// Keeps the characters a relative URI may hold as they are, so ordinary names stay readable; a
// colon is encoded too, lest "c:x.gif" read as a scheme.
std::string hrefForPath(std::string_view path) {
    std::string out;
    for (char ch : path) {
        auto c = static_cast<unsigned char>(ch);
        bool keep = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                    std::string_view("-._~/!$&'()*+,;=@").find(ch) != std::string_view::npos;
        if (keep)
            out += ch;
        else
            percentEncode(out, c);
    }
    return out;
}

std::string pathForHref(std::string_view href) {
    std::string out;
    out.reserve(href.size());
    for (std::size_t i = 0; i < href.size(); ++i) {
        if (href[i] == '%' && i + 2 < href.size()) {
            int hi = hexValue(href[i + 1]);
            int lo = hexValue(href[i + 2]);
            if (hi >= 0 && lo >= 0) {
                out += static_cast<char>(hi * 16 + lo);
                i += 2;
                continue;
            }
        }
        out += href[i];
    }
    return out;
}

// --- identity -----------------------------------------------------------------------------

std::string manifestComment(std::string_view folderName) {
    return "<!--" + std::string(kFolderCommentStart) + folderForComment(folderName) +
           std::string(kFolderCommentEnd) + "-->";
}

bool isModuleId(std::string_view id) {
    if (id.size() != kIdPrefix.size() + kIdHexDigits || !id.starts_with(kIdPrefix))
        return false;
    return std::all_of(id.begin() + kIdPrefix.size(), id.end(),
                       [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); });
}

std::string newModuleId() {
    std::random_device device;
    std::uint64_t bits = (std::uint64_t{device()} << 32) ^ std::uint64_t{device()};
    std::string id(kIdPrefix);
    for (int shift = 60; shift >= 0; shift -= 4)
        id += hexDigit(static_cast<unsigned>(bits >> shift));
    return id;
}

LmsModuleInfo readManifestIdentity(std::string_view manifest) {
    LmsModuleInfo info;
    auto tokens = scanXml(manifest);
    if (!tokens)
        return info;
    for (const XmlToken& t : *tokens) {
        if (t.kind == XmlToken::Kind::Comment && info.folderName.empty()) {
            std::string_view body = t.text;
            if (body.starts_with(kFolderCommentStart) && body.ends_with(kFolderCommentEnd) &&
                body.size() > kFolderCommentStart.size() + kFolderCommentEnd.size()) {
                body.remove_prefix(kFolderCommentStart.size());
                body.remove_suffix(kFolderCommentEnd.size());
                info.folderName = pathForHref(body);
            }
        } else if (t.kind == XmlToken::Kind::Start && localName(t.name) == "manifest" &&
                   info.id.empty()) {
            auto it = t.attributes.find("identifier");
            if (it != t.attributes.end())
                info.id = it->second;
        }
    }
    return info;
}

std::string chooseModuleId(std::string_view currentManifest, const std::string& folderName) {
    LmsModuleInfo current = readManifestIdentity(currentManifest);
    if (isModuleId(current.id) && !folderName.empty() && current.folderName == folderName)
        return current.id;
    return newModuleId();
}

// --- the files ------------------------------------------------------------------------------

std::vector<std::string> listPackageFiles(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code ec;
    const fs::path root = fsPath(folder);
    fs::recursive_directory_iterator it(root, ec), end;
    if (ec)
        throw FileError(folder, ec.message());
    for (; it != end; it.increment(ec)) {
        if (ec)
            throw FileError(folder, ec.message());
        const std::string name = it->path().filename().string();
        if (name.starts_with(".")) {
            if (it->is_directory(ec))
                it.disable_recursion_pending();
            continue;
        }
        // symlink_status: a link is judged as itself, never as what it points at.
        if (name.ends_with(kTempSuffix) || !fs::is_regular_file(it->symlink_status(ec)))
            continue;
        files.push_back(it->path().lexically_relative(root).generic_string());
    }
    if (ec)
        throw FileError(folder, ec.message());
    std::sort(files.begin(), files.end());
    return files;
}

std::string manifestTitle(std::string_view title) {
    return escapeXml(firstCodePoints(oneLine(title), kMaxManifestTitle));
}

std::string manifestXml(const LmsModuleInfo& info, const std::vector<std::string>& files,
                        std::string_view masteryScore) {
    const std::string id = escapeXml(info.id);
    const std::string title = manifestTitle(info.title);
    std::string x;
    auto line = [&x](const std::string& text) {
        x += text;
        x += kLineEnd;
    };
    line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    if (!info.folderName.empty())
        line(manifestComment(info.folderName));
    line(R"(<manifest identifier=")" + id + R"(" version="1.0")");
    line(R"(          xmlns="http://www.imsproject.org/xsd/imscp_rootv1p1p2")");
    line(R"(          xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_rootv1p2">)");
    line("  <metadata>");
    line("    <schema>ADL SCORM</schema>");
    line("    <schemaversion>1.2</schemaversion>");
    line("  </metadata>");
    line(R"(  <organizations default=")" + id + R"(-ORG">)");
    line(R"(    <organization identifier=")" + id + R"(-ORG">)");
    line("      <title>" + title + "</title>");
    line(R"(      <item identifier=")" + id + R"(-ITEM" identifierref=")" + id + R"(-SCO">)");
    line("        <title>" + title + "</title>");
    if (!masteryScore.empty())
        line("        <adlcp:masteryscore>" + escapeXml(masteryScore) + "</adlcp:masteryscore>");
    line("      </item>");
    line("    </organization>");
    line("  </organizations>");
    line("  <resources>");
    line(R"(    <resource identifier=")" + id +
         R"(-SCO" type="webcontent" adlcp:scormtype="sco" href=")" +
         escapeXml(hrefForPath(info.launchFile)) + R"(">)");
    for (const std::string& file : files)
        line(R"(      <file href=")" + escapeXml(hrefForPath(file)) + R"("/>)");
    line("    </resource>");
    line("  </resources>");
    line("</manifest>");
    return x;
}

AiccFiles aiccFiles(const LmsModuleInfo& info, std::string_view masteryScore) {
    const std::string title = oneLine(info.title);
    auto lines = [](std::initializer_list<std::string> list) {
        std::string text;
        for (const std::string& l : list)
            text += l + kLineEnd;
        return text;
    };
    AiccFiles f;
    f.au = lines({R"("System_ID","Type","Command_Line","File_Name","Max_Score","Mastery_Score",)"
                  R"("Max_Time_Allowed","Time_Limit_Action","System_Vendor","Core_Vendor",)"
                  R"("Web_Launch","AU_Password")",
                  R"("A1","HTML","",)" + aiccQuoted(info.launchFile) + R"(,"100",)" +
                      aiccQuoted(masteryScore) + R"(,"","","","","","")"});
    f.crs = lines({"[Course]", "Course_Creator=Lumora", "Course_ID=" + oneLine(info.id),
                   "Course_System=HTML", "Course_Title=" + title, "Level=1", "Max_Fields_CST=2",
                   "Total_AUs=1", "Total_Blocks=0", "Version=2.2", "[Course_Behavior]",
                   "Max_Normal=1", "[Course_Description]", title});
    f.des = lines(
        {R"("System_ID","Developer_ID","Title","Description")",
         R"("A1",)" + aiccQuoted(info.id) + "," + aiccQuoted(title) + "," + aiccQuoted(title)});
    f.cst = lines({R"("Block","Member")", R"("root","A1")"});
    return f;
}

void WriteLmsFiles(const CourseModule& module) {
    const std::string& folder = module.ModuleFolder;
    std::string current;
    std::error_code ec;
    if (fs::is_regular_file(fsPath(manifestPath(folder)), ec))
        current = readFileBytes(manifestPath(folder));

    LmsModuleInfo info;
    info.folderName = module.folderName.empty() ? lastComponent(folder) : module.folderName;
    info.id = chooseModuleId(current, info.folderName);
    info.title = module.modTitle;
    info.launchFile =
        module.framesetFile.empty() ? framesetFileFor(module.moduleType) : module.framesetFile;
    writeLmsFilesTo(folder, info);
}

void writeTemplateLmsFiles(const std::string& templateFolder, const std::string& moduleType,
                           const std::string& title) {
    LmsModuleInfo info;
    info.id = kTemplateModuleId;
    info.title = title;
    info.launchFile = framesetFileFor(moduleType);
    writeLmsFilesTo(templateFolder, info);
}

} // namespace lumora
