// The zip's contents per format: which folder files go in, and the import files made for it.
#include "storage/LmsPackage.h"

#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace lumora {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr int kWholePercent = 100;  // hundredths in one percent
constexpr int kMaxPassMark = 10000; // 100 %

// The import files of every format a folder may hold at its root. A package carries only its
// own format's, made afresh, so a stale or foreign one never travels with it.
const std::set<std::string>& importFileNames() {
    static const std::set<std::string> names{kManifestFile, "course.au",  "course.crs",
                                             "course.des",  "course.cst", kCmi5File};
    return names;
}

class XmlLines {
  public:
    void operator()(const std::string& text) {
        text_ += text;
        text_ += kLineEnd;
    }
    std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

std::string digitsTrimmed(int value, int width) {
    std::string digits = std::to_string(value);
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    while (!digits.empty() && digits.back() == '0')
        digits.pop_back();
    return digits;
}

std::string langString(const std::string& indent, const std::string& element,
                       const std::string& text) {
    return indent + "<" + element + ">" + kLineEnd + indent + "  <langstring lang=\"en\">" +
           escapeXml(oneLine(text)) + "</langstring>" + kLineEnd + indent + "</" + element + ">";
}

PackageEntry generated(std::string name, std::string bytes) {
    return PackageEntry{std::move(name), {}, std::move(bytes)};
}

} // namespace

// --- formats and pass marks -------------------------------------------------------------

std::optional<PackageFormat> packageFormatNamed(std::string_view name) {
    if (name == "scorm12")
        return PackageFormat::Scorm12;
    if (name == "scorm2004")
        return PackageFormat::Scorm2004;
    if (name == "cmi5")
        return PackageFormat::Cmi5;
    return std::nullopt;
}

const char* packageFormatName(PackageFormat format) {
    switch (format) {
    case PackageFormat::Scorm2004:
        return "scorm2004";
    case PackageFormat::Cmi5:
        return "cmi5";
    case PackageFormat::Scorm12:
        break;
    }
    return "scorm12";
}

std::string PassMark::percent() const {
    std::string text = std::to_string(hundredths / kWholePercent);
    if (int rest = hundredths % kWholePercent)
        text += "." + digitsTrimmed(rest, 2);
    return text;
}

std::string PassMark::scaled() const {
    if (hundredths >= kMaxPassMark)
        return "1";
    if (hundredths <= 0)
        return "0";
    return "0." + digitsTrimmed(hundredths, 4);
}

std::optional<PassMark> parsePassMark(std::string_view text) {
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    const std::string_view fraction =
        dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    auto allDigits = [](std::string_view s) {
        return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
    };
    if (whole.empty() || whole.size() > 3 || !allDigits(whole) || !allDigits(fraction) ||
        fraction.size() > 2 || (dot != std::string_view::npos && fraction.empty()))
        return std::nullopt;
    int value = 0;
    for (char c : whole)
        value = value * 10 + (c - '0');
    value *= kWholePercent;
    if (!fraction.empty())
        value += (fraction[0] - '0') * 10 + (fraction.size() > 1 ? fraction[1] - '0' : 0);
    if (value > kMaxPassMark)
        return std::nullopt;
    return PassMark{value};
}

// --- the plan ------------------------------------------------------------------------------

std::optional<LmsModuleInfo> packageIdentity(const CourseModule& module) {
    const std::string manifest = joinPath(module.ModuleFolder, kManifestFile);
    std::error_code ec;
    if (!fs::is_regular_file(fs::symlink_status(fsPath(manifest), ec)))
        return std::nullopt;
    LmsModuleInfo info;
    try {
        info = readManifestIdentity(decodeText(readFileBytes(manifest)));
    } catch (const FileError&) {
        return std::nullopt; // unreadable: no identity to go by
    }
    const std::string folderName = module.folderName.empty()
                                       ? fsPath(module.ModuleFolder).filename().string()
                                       : module.folderName;
    if (!isModuleId(info.id) || info.folderName != folderName)
        return std::nullopt;
    info.title = module.modTitle;
    info.launchFile =
        module.framesetFile.empty() ? framesetFileFor(module.moduleType) : module.framesetFile;
    return info;
}

PackagePlan planPackage(const CourseModule& module, const PackageOptions& options) {
    PackagePlan plan;
    if (module.useSCORM != "true")
        plan.problems.push_back(
            "the module is saved for use without SCORM/AICC: save it for SCORM/AICC first");
    if (options.passMark && module.moduleType != kEvaluation)
        plan.problems.push_back("a pass mark applies to an Evaluation only");
    const std::optional<LmsModuleInfo> info = packageIdentity(module);
    if (!info)
        plan.problems.push_back("the module has not been saved for SCORM/AICC in this folder yet: "
                                "save it first, so that every package of it keeps one identity");

    std::vector<std::string> files = listPackageFiles(module.ModuleFolder);
    std::erase_if(files, [](const std::string& f) { return importFileNames().count(f) != 0; });
    const std::string launch =
        module.framesetFile.empty() ? framesetFileFor(module.moduleType) : module.framesetFile;
    if (!std::binary_search(files.begin(), files.end(), launch))
        plan.problems.push_back("launch file missing: " + launch);
    if (!plan.problems.empty())
        return plan;

    const std::optional<PassMark> mark = options.passMark;
    std::vector<PackageEntry> made;
    switch (options.format) {
    case PackageFormat::Scorm12: {
        const std::string percent = mark ? mark->percent() : std::string();
        const AiccFiles aicc = aiccFiles(*info, percent);
        for (auto [extension, bytes] : {std::pair{".au", &aicc.au}, std::pair{".crs", &aicc.crs},
                                        std::pair{".des", &aicc.des}, std::pair{".cst", &aicc.cst}})
            made.push_back(generated(std::string(kAiccBaseName) + extension, *bytes));
        std::vector<std::string> listed = files;
        for (const PackageEntry& e : made)
            listed.push_back(e.name);
        std::sort(listed.begin(), listed.end());
        made.insert(made.begin(), generated(kManifestFile, manifestXml(*info, listed, percent)));
        break;
    }
    case PackageFormat::Scorm2004:
        made.push_back(generated(kManifestFile, scorm2004ManifestXml(*info, files, mark)));
        break;
    case PackageFormat::Cmi5:
        made.push_back(generated(kCmi5File, cmi5Xml(*info, module.moduleType, mark)));
        break;
    }

    // The import file first, then every file in byte order, as an LMS lists them.
    plan.entries.push_back(std::move(made.front()));
    std::vector<PackageEntry> rest(std::make_move_iterator(made.begin() + 1),
                                   std::make_move_iterator(made.end()));
    for (const std::string& file : files)
        rest.push_back(
            PackageEntry{file, (fsPath(module.ModuleFolder) / fsPath(file)).string(), {}});
    std::sort(rest.begin(), rest.end(),
              [](const PackageEntry& a, const PackageEntry& b) { return a.name < b.name; });
    for (PackageEntry& e : rest)
        plan.entries.push_back(std::move(e));
    return plan;
}

// --- SCORM 2004 4th Edition ----------------------------------------------------------------

std::string scorm2004ManifestXml(const LmsModuleInfo& info, const std::vector<std::string>& files,
                                 std::optional<PassMark> passMark) {
    const std::string id = escapeXml(info.id);
    const std::string title = manifestTitle(info.title);
    XmlLines line;
    line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    // The same record of the folder as the 1.2 manifest's, so a module folder unpacked from
    // this package keeps its identity when it is saved.
    if (!info.folderName.empty())
        line(manifestComment(info.folderName));
    line(R"(<manifest identifier=")" + id + R"(" version="1.0")");
    line(R"(          xmlns="http://www.imsglobal.org/xsd/imscp_v1p1")");
    line(R"(          xmlns:adlcp="http://www.adlnet.org/xsd/adlcp_v1p3")");
    line(R"(          xmlns:adlseq="http://www.adlnet.org/xsd/adlseq_v1p3")");
    line(R"(          xmlns:adlnav="http://www.adlnet.org/xsd/adlnav_v1p3")");
    line(R"(          xmlns:imsss="http://www.imsglobal.org/xsd/imsss">)");
    line("  <metadata>");
    line("    <schema>ADL SCORM</schema>");
    line("    <schemaversion>2004 4th Edition</schemaversion>");
    line("  </metadata>");
    line(R"(  <organizations default=")" + id + R"(-ORG">)");
    line(R"(    <organization identifier=")" + id + R"(-ORG">)");
    line("      <title>" + title + "</title>");
    line(R"(      <item identifier=")" + id + R"(-ITEM" identifierref=")" + id + R"(-SCO">)");
    line("        <title>" + title + "</title>");
    if (passMark) {
        line("        <imsss:sequencing>");
        line("          <imsss:objectives>");
        line(R"(            <imsss:primaryObjective objectiveID=")" + id +
             R"(-PASS" satisfiedByMeasure="true">)");
        line("              <imsss:minNormalizedMeasure>" + passMark->scaled() +
             "</imsss:minNormalizedMeasure>");
        line("            </imsss:primaryObjective>");
        line("          </imsss:objectives>");
        line("        </imsss:sequencing>");
    }
    line("      </item>");
    line("    </organization>");
    line("  </organizations>");
    line("  <resources>");
    line(R"(    <resource identifier=")" + id +
         R"(-SCO" type="webcontent" adlcp:scormType="sco" href=")" +
         escapeXml(hrefForPath(info.launchFile)) + R"(">)");
    for (const std::string& file : files)
        line(R"(      <file href=")" + escapeXml(hrefForPath(file)) + R"("/>)");
    line("    </resource>");
    line("  </resources>");
    line("</manifest>");
    return line.take();
}

// --- cmi5 ------------------------------------------------------------------------------------

// URNs of our own namespace: stable for the life of the module, as its id is, and never the
// LMS's own activity ids (those it generates at launch).
std::string cmi5CourseIri(std::string_view moduleId) {
    return "urn:lumora:" + std::string(moduleId);
}

std::string cmi5AuIri(std::string_view moduleId) {
    return cmi5CourseIri(moduleId) + ":au";
}

std::string cmi5Xml(const LmsModuleInfo& info, const std::string& moduleType,
                    std::optional<PassMark> passMark) {
    std::string moveOn = "Completed";
    if (moduleType == kEvaluation)
        moveOn = passMark ? "Passed" : "CompletedOrPassed";
    else
        passMark.reset(); // only an Evaluation is judged
    XmlLines line;
    line(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    line(R"(<courseStructure xmlns="https://w3id.org/xapi/profiles/cmi5/v1/CourseStructure.xsd">)");
    line(R"(  <course id=")" + escapeXml(cmi5CourseIri(info.id)) + R"(">)");
    // The module has one text that describes it, its title; the AICC files use it alike.
    line(langString("    ", "title", info.title));
    line(langString("    ", "description", info.title));
    line("  </course>");
    line(R"(  <au id=")" + escapeXml(cmi5AuIri(info.id)) + R"(" moveOn=")" + moveOn + "\"" +
         (passMark ? R"( masteryScore=")" + passMark->scaled() + "\"" : std::string()) +
         R"( launchMethod="AnyWindow">)");
    line(langString("    ", "title", info.title));
    line(langString("    ", "description", info.title));
    line("    <url>" + escapeXml(hrefForPath(info.launchFile)) + "</url>");
    line("  </au>");
    line("</courseStructure>");
    return line.take();
}

} // namespace lumora
