// Our own check of a package folder: what the SCORM 1.2 schemas cannot see, because it lies
// between the manifest and the folder (files listed and present) or inside the manifest's
// references (identifiers that name nothing, a schema version the schema takes as any text).
#include "storage/LmsFiles.h"

#include "storage/LmsXmlScan.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <filesystem>
#include <set>
#include <system_error>

namespace lumora {

namespace {

namespace fs = std::filesystem;

struct ManifestFacts {
    bool hasManifestRoot = false;
    std::optional<std::string> schema;
    std::optional<std::string> schemaversion;
    std::optional<std::string> defaultOrganization;
    std::set<std::string> organizations;
    std::vector<std::pair<std::string, std::string>> itemRefs; // item id, identifierref
    std::set<std::string> resources;
    std::vector<std::string> launchHrefs;
    std::vector<std::string> fileHrefs;
};

std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string attribute(const XmlToken& t, const std::string& name) {
    auto it = t.attributes.find(name);
    return it == t.attributes.end() ? std::string() : it->second;
}

ManifestFacts readFacts(const std::vector<XmlToken>& tokens) {
    ManifestFacts facts;
    std::vector<std::string> open; // local names of the open elements
    std::string text;
    for (const XmlToken& t : tokens) {
        if (t.kind == XmlToken::Kind::Text) {
            text += t.text;
            continue;
        }
        if (t.kind == XmlToken::Kind::Comment)
            continue;
        const std::string name(localName(t.name));
        if (t.kind == XmlToken::Kind::End) {
            // The package's own schema and version are the ones directly in manifest/metadata.
            const bool inPackageMetadata =
                open.size() == 3 && open[0] == "manifest" && open[1] == "metadata";
            if (inPackageMetadata && name == "schema")
                facts.schema = trimmed(text);
            if (inPackageMetadata && name == "schemaversion")
                facts.schemaversion = trimmed(text);
            if (!open.empty())
                open.pop_back();
            continue;
        }
        text.clear();
        if (name == "manifest" && open.empty())
            facts.hasManifestRoot = true;
        else if (name == "organizations" && t.attributes.count("default"))
            facts.defaultOrganization = attribute(t, "default");
        else if (name == "organization")
            facts.organizations.insert(attribute(t, "identifier"));
        else if (name == "item" && t.attributes.count("identifierref"))
            facts.itemRefs.emplace_back(attribute(t, "identifier"), attribute(t, "identifierref"));
        else if (name == "resource") {
            facts.resources.insert(attribute(t, "identifier"));
            if (t.attributes.count("href"))
                facts.launchHrefs.push_back(attribute(t, "href"));
        } else if (name == "file" && !open.empty() && open.back() == "resource")
            facts.fileHrefs.push_back(attribute(t, "href"));
        if (!t.selfClosing)
            open.push_back(name);
    }
    return facts;
}

// A symbolic link is never a package file (listPackageFiles), so it does not count here either.
bool fileExists(const std::string& folder, const std::string& relative) {
    std::error_code ec;
    return fs::is_regular_file(fs::symlink_status(fsPath(folder) / fsPath(relative), ec));
}

// The AICC unit's launch file: the fourth field of course.au's second line.
std::optional<std::string> aiccLaunchFile(const std::string& folder) {
    const std::string path = joinPath(folder, std::string(kAiccBaseName) + ".au");
    std::error_code ec;
    if (!fs::is_regular_file(fsPath(path), ec))
        return std::nullopt;
    std::vector<std::string> lines = readTextLines(path);
    if (lines.size() < 2)
        return std::string();
    std::vector<std::string> fields;
    std::string field;
    bool quoted = false;
    for (char c : lines[1]) {
        if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted) {
            fields.push_back(field);
            field.clear();
        } else
            field += c;
    }
    fields.push_back(field);
    return fields.size() >= 4 ? trimmed(fields[3]) : std::string();
}

} // namespace

std::vector<std::string> checkPackageFolder(const std::string& folder) {
    std::vector<std::string> problems;
    const std::string path = joinPath(folder, kManifestFile);
    std::error_code ec;
    if (!fs::is_regular_file(fsPath(path), ec)) {
        problems.push_back("imsmanifest.xml is missing");
        return problems;
    }
    auto tokens = scanXml(decodeText(readFileBytes(path)));
    if (!tokens) {
        problems.push_back("imsmanifest.xml cannot be read as XML");
        return problems;
    }
    const ManifestFacts facts = readFacts(*tokens);
    if (!facts.hasManifestRoot) {
        problems.push_back("imsmanifest.xml has no manifest element");
        return problems;
    }

    // The schemas take any short text here; an LMS takes only these.
    if (facts.schema && *facts.schema != "ADL SCORM")
        problems.push_back("schema is \"" + *facts.schema + "\", not \"ADL SCORM\"");
    if (!facts.schemaversion)
        problems.push_back("schemaversion is missing");
    else if (*facts.schemaversion != "1.2")
        problems.push_back("schemaversion is \"" + *facts.schemaversion + "\", not \"1.2\"");

    if (!facts.defaultOrganization)
        problems.push_back("organizations names no default organization");
    else if (!facts.organizations.count(*facts.defaultOrganization))
        problems.push_back("default organization \"" + *facts.defaultOrganization +
                           "\" does not exist");

    if (facts.itemRefs.empty())
        problems.push_back("no item launches a resource");
    for (const auto& [item, ref] : facts.itemRefs)
        if (!facts.resources.count(ref))
            problems.push_back("item \"" + item + "\" refers to missing resource \"" + ref + "\"");

    std::set<std::string> listed;
    for (const std::string& href : facts.fileHrefs) {
        const std::string file = pathForHref(href);
        listed.insert(file);
        if (!fileExists(folder, file))
            problems.push_back("listed file missing: " + file);
    }
    for (const std::string& href : facts.launchHrefs) {
        const std::string file = pathForHref(href);
        if (!fileExists(folder, file))
            problems.push_back("launch file missing: " + file);
        else if (!listed.count(file))
            problems.push_back("launch file not listed: " + file);
    }
    for (const std::string& file : listPackageFiles(folder))
        if (file != kManifestFile && !listed.count(file))
            problems.push_back("file not listed: " + file);

    if (auto launch = aiccLaunchFile(folder); launch && !fileExists(folder, *launch))
        problems.push_back("course.au launches a missing file: " + *launch);
    return problems;
}

} // namespace lumora
