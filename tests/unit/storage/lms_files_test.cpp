// The LMS import files: titles and hrefs, the module identity across saves and copies, our own
// package check, and the templates' import files kept equal to the generator (which pins the
// bytes of every file).
#include "storage/LmsFiles.h"

#include "storage/LmsXmlScan.h"
#include "storage/ModuleLoader.h"
#include "storage/TextFile.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;
using namespace lumora;
using lumora::testing::readBytes;
using lumora::testing::TempDir;

namespace {

void put(const fs::path& file, const std::string& bytes = "x") {
    lumora::testing::writeBytes(file, bytes);
}

// A small Lesson module folder of the given name inside `workspace`.
CourseModule makeLesson(const fs::path& workspace, const std::string& name) {
    const fs::path folder = workspace / name;
    put(folder / "lessonframeset.html");
    put(folder / "page0.html");
    put(folder / "scripts" / "inc_ModuleInfo.js");
    put(folder / "images" / "next.gif");
    CourseModule m;
    m.moduleType = kLesson;
    m.folderName = name;
    m.ModuleFolder = folder.string();
    m.framesetFile = "lessonframeset.html";
    m.modTitle = "Fire Safety";
    return m;
}

std::string idOf(const CourseModule& m) {
    return readManifestIdentity(readBytes(fs::path(m.ModuleFolder) / kManifestFile)).id;
}

bool hasProblem(const std::vector<std::string>& problems, const std::string& text) {
    return std::find(problems.begin(), problems.end(), text) != problems.end();
}

} // namespace

// --- bytes -----------------------------------------------------------------------------------

// The manifests' titles are checked in every format by the package tests; the AICC files keep
// the whole title on one line, and a quoted field cannot hold a double quote any AICC reader
// agrees on.
TEST(LmsFilesBytes, AiccFilesCarryTheWholeTitleOnOneLine) {
    std::string tail;
    for (int i = 0; i < 150; ++i)
        tail += "\xC3\xA9"; // past the manifest's 200 characters
    const LmsModuleInfo info{"LUM-0123456789ABCDEF", "",
                             "Q&A: <Intro> \"Part\" 'one'\r\nnext " + tail, "lessonframeset.html"};
    const AiccFiles f = aiccFiles(info);
    EXPECT_NE(f.crs.find("\r\nCourse_Title=Q&A: <Intro> \"Part\" 'one' next " + tail + "\r\n"),
              std::string::npos);
    EXPECT_NE(f.des.find(",\"Q&A: <Intro> 'Part' 'one' next " + tail + "\","), std::string::npos);
}

TEST(LmsFilesBytes, HrefsEncodeWhatAUriCannotHoldAndDecodeBack) {
    const std::pair<std::string, std::string> cases[] = {
        {"scripts/inc_QAndA.js", "scripts/inc_QAndA.js"},
        {"media/a b#1%.gif", "media/a%20b%231%25.gif"},
        {"media/c:d.gif", "media/c%3Ad.gif"},
        {"media/\xC3\xA9t\xC3\xA9.png", "media/%C3%A9t%C3%A9.png"},
    };
    for (const auto& [path, href] : cases) {
        EXPECT_EQ(hrefForPath(path), href);
        EXPECT_EQ(pathForHref(href), path);
    }
    // A broken escape is kept as it is.
    EXPECT_EQ(pathForHref("bad%2"), "bad%2");
    EXPECT_EQ(pathForHref("bad%zz"), "bad%zz");
}

// --- identity --------------------------------------------------------------------------------

TEST(LmsFilesIdentity, NewIdsAreWellFormedDistinctAndKeptOnlyForTheirFolder) {
    const std::string a = newModuleId();
    EXPECT_TRUE(isModuleId(a)) << a;
    EXPECT_NE(newModuleId(), a);
    for (const char* bad : {kTemplateModuleId, "LUM-0123456789abcdef", "LUM-0123456789ABCDE"})
        EXPECT_FALSE(isModuleId(bad)) << bad;

    // Kept only for the folder it was made in, matched case and all (a copy saved in place is
    // tested below); a missing or unreadable manifest and the templates' identity get new ones.
    LmsModuleInfo info{"LUM-0123456789ABCDEF", "Course1", "T", "lessonframeset.html"};
    EXPECT_NE(chooseModuleId(manifestXml(info, {}), "course1"), "LUM-0123456789ABCDEF");
    EXPECT_TRUE(isModuleId(chooseModuleId("", "Course1")));
    EXPECT_TRUE(isModuleId(chooseModuleId("<manifest", "Course1")));
    LmsModuleInfo templ{kTemplateModuleId, "", "T", "lessonframeset.html"};
    EXPECT_TRUE(isModuleId(chooseModuleId(manifestXml(templ, {}), "Lesson")));
}

TEST(LmsFilesIdentity, FolderNameSurvivesTheCommentItIsRecordedIn) {
    for (std::string folder : {"Course-1", "a--b-", "50%_off", "\xC3\xA9t\xC3\xA9"}) {
        LmsModuleInfo info{"LUM-0123456789ABCDEF", folder, "T", "lessonframeset.html"};
        const std::string xml = manifestXml(info, {});
        EXPECT_EQ(xml.find("--", xml.find("<!--") + 4), xml.find("-->")) << folder;
        LmsModuleInfo back = readManifestIdentity(xml);
        EXPECT_EQ(back.id, "LUM-0123456789ABCDEF");
        EXPECT_EQ(back.folderName, folder);
    }
}

TEST(LmsFilesIdentity, StableAcrossSavesDistinctBetweenModulesAndAfterACopy) {
    TempDir ws("lms");
    CourseModule one = makeLesson(ws.path(), "Course1");
    CourseModule two = makeLesson(ws.path(), "Course2");
    WriteLmsFiles(one);
    WriteLmsFiles(two);
    const std::string id1 = idOf(one);
    EXPECT_TRUE(isModuleId(id1)) << id1;
    EXPECT_NE(idOf(two), id1);

    one.modTitle = "Fire Safety, second edition";
    WriteLmsFiles(one);
    EXPECT_EQ(idOf(one), id1);
    EXPECT_NE(readBytes(fs::path(one.ModuleFolder) / "course.crs").find("Course_ID=" + id1),
              std::string::npos);

    // Save As: the files are copied, then the module saves into the new folder.
    fs::copy(one.ModuleFolder, ws.path() / "Copy1", fs::copy_options::recursive);
    CourseModule copy = one;
    copy.folderName = "Copy1";
    copy.ModuleFolder = (ws.path() / "Copy1").string();
    WriteLmsFiles(copy);
    const std::string copyId = idOf(copy);
    EXPECT_NE(copyId, id1);
    WriteLmsFiles(copy);
    EXPECT_EQ(idOf(copy), copyId);
}

// --- the folder ------------------------------------------------------------------------------

TEST(LmsFilesFolder, PackageFilesSkipDotfilesAndUnfinishedWrites) {
    TempDir t("lms");
    put(t.path() / "b.html");
    put(t.path() / "A.html");
    put(t.path() / "scripts" / "inc_Glossary.js");
    put(t.path() / "scripts" / "inc_Glossary.js.tmp-lumora");
    put(t.path() / ".DS_Store");
    put(t.path() / ".git" / "config");
    put(t.path() / "media" / ".keep");
    fs::create_directories(t.path() / "empty");
    EXPECT_EQ(listPackageFiles(t.path().string()),
              (std::vector<std::string>{"A.html", "b.html", "scripts/inc_Glossary.js"}));
    EXPECT_THROW(listPackageFiles((t.path() / "none").string()), FileError);
}

TEST(LmsFilesFolder, CheckFindsFilesMissingAndNotListed) {
    TempDir ws("lms");
    CourseModule m = makeLesson(ws.path(), "Course1");
    const fs::path folder = m.ModuleFolder;
    // That the manifest lists exactly the folder's files is checked on real packages
    // (tests/player/manifest.test.mjs); here, that the check sees when it no longer does.
    WriteLmsFiles(m);
    EXPECT_EQ(checkPackageFolder(m.ModuleFolder), std::vector<std::string>{});

    fs::remove(folder / "images" / "next.gif");
    put(folder / "page1.html");
    EXPECT_EQ(checkPackageFolder(m.ModuleFolder),
              (std::vector<std::string>{"listed file missing: images/next.gif",
                                        "file not listed: page1.html"}));
    fs::remove(folder / "lessonframeset.html");
    const auto problems = checkPackageFolder(m.ModuleFolder);
    EXPECT_TRUE(hasProblem(problems, "launch file missing: lessonframeset.html"));
    EXPECT_TRUE(hasProblem(problems, "course.au launches a missing file: lessonframeset.html"));

    // A save brings the list back in line with the folder (the launch file must exist).
    put(folder / "lessonframeset.html");
    WriteLmsFiles(m);
    EXPECT_EQ(checkPackageFolder(m.ModuleFolder), std::vector<std::string>{});
}

// The check runs over the templates (below), whose manifests no schema check sees: it must
// catch references that lead nowhere, which a schema cannot.
TEST(LmsFilesFolder, CheckFindsReferencesInsideTheManifestThatLeadNowhere) {
    TempDir ws("lms");
    CourseModule m = makeLesson(ws.path(), "Course1");
    WriteLmsFiles(m);
    const fs::path manifest = fs::path(m.ModuleFolder) / kManifestFile;
    const std::string good = readBytes(manifest);
    const std::string id = readManifestIdentity(good).id;
    const struct {
        std::string from, to, problem;
    } cases[] = {
        {"default=\"" + id + "-ORG\"", "default=\"ORG9\"",
         "default organization \"ORG9\" does not exist"},
        {"identifierref=\"" + id + "-SCO\"", "identifierref=\"SCO9\"",
         "item \"" + id + "-ITEM\" refers to missing resource \"SCO9\""},
    };
    for (const auto& c : cases) {
        std::string text = good;
        const std::size_t at = text.find(c.from);
        ASSERT_NE(at, std::string::npos) << c.from;
        text.replace(at, c.from.size(), c.to);
        put(manifest, text);
        EXPECT_EQ(checkPackageFolder(m.ModuleFolder), std::vector<std::string>{c.problem}) << c.to;
    }
}

// --- reading manifests back ----------------------------------------------------------------

TEST(LmsXmlScan, DecodesEntitiesAndKeepsWhatItDoesNotKnow) {
    EXPECT_EQ(decodeXmlEntities("a&amp;b&lt;&gt;&quot;&apos;"), "a&b<>\"'");
    EXPECT_EQ(decodeXmlEntities("&#233;&#xE9;&#x1F600;"), "\xC3\xA9\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(decodeXmlEntities("&nbsp; &#0; &#xD800; &#12a; & &amp"),
              "&nbsp; &#0; &#xD800; &#12a; & &amp");
}

TEST(LmsXmlScan, ATruncatedManifestNeverYieldsAGarbledIdentity) {
    LmsModuleInfo info{"LUM-0123456789ABCDEF", "Course1", "T", "lessonframeset.html"};
    const std::string xml = manifestXml(info, {"a.html", "b.html"});
    for (std::size_t n = 0; n <= xml.size(); ++n) {
        LmsModuleInfo back = readManifestIdentity(std::string_view(xml).substr(0, n));
        EXPECT_TRUE(back.id.empty() || back.id == info.id) << n << ": " << back.id;
        EXPECT_TRUE(back.folderName.empty() || back.folderName == "Course1") << n;
    }
    EXPECT_FALSE(scanXml("<a b=\"1>"));
    EXPECT_FALSE(scanXml("<!-- open"));
    EXPECT_FALSE(scanXml("< >"));
    EXPECT_TRUE(scanXml("plain text, no tags"));
}

// --- the templates ---------------------------------------------------------------------------

// The templates' import files are generator output over the staged template (the template's
// own files with the player's beside them, as a new module gets them). With
// LUMORA_REFRESH_TEMPLATES set (see tools/refresh-templates.sh) this writes the generated files
// back into the source tree instead of comparing.
TEST(LmsFilesTemplates, TemplatesHoldWhatTheGeneratorWrites) {
    const fs::path staged = fs::path(LUMORA_DIST_DIR) / "Templates";
    const fs::path source = fs::path(LUMORA_SOURCE_DIR) / "share" / "Templates";
    const bool refresh = std::getenv("LUMORA_REFRESH_TEMPLATES") != nullptr;
    const char* importFiles[] = {"imsmanifest.xml", "course.au", "course.crs", "course.des",
                                 "course.cst"};
    int checked = 0;
    for (const char* type : {kLesson, kEvaluation, kSurvey}) {
        const fs::path folder = staged / type;
        if (!fs::exists(folder / framesetFileFor(type)))
            continue; // a template still being written
        ++checked;
        CourseModule m;
        m.moduleType = type;
        m.ModuleFolder = m.templateFolder = folder.string();
        m.framesetFile = framesetFileFor(type);
        m.folderName = type;
        LoadModuleFiles(m, ContentPaths{m.ModuleFolder, staged.parent_path().string()});
        TempDir t("lms");
        const fs::path copy = t.path() / type;
        fs::copy(folder, copy, fs::copy_options::recursive);
        for (const char* file : importFiles)
            fs::remove(copy / file);
        writeTemplateLmsFiles(copy.string(), type, m.modTitle);
        for (const char* file : importFiles) {
            if (refresh) {
                fs::copy_file(copy / file, source / type / file,
                              fs::copy_options::overwrite_existing);
                continue;
            }
            ASSERT_TRUE(fs::exists(source / type / file))
                << type << "/" << file << " is missing: run tools/refresh-templates.sh";
            EXPECT_EQ(readBytes(source / type / file), readBytes(copy / file))
                << type << "/" << file << " is stale: run tools/refresh-templates.sh";
        }
        if (!refresh) {
            EXPECT_EQ(checkPackageFolder(folder.string()), std::vector<std::string>{}) << type;
        }
    }
    if (checked == 0)
        GTEST_SKIP() << "no staged template holds its frameset file yet";
}
