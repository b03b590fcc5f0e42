// The packages of each format: pass marks, what the SCORM 2004 manifest and cmi5.xml say, titles
// that XML must escape, and what a plan takes from the folder (never the folder's own import
// files, never a symbolic link) and refuses.
#include "storage/LmsPackage.h"

#include "storage/LmsXmlScan.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace fs = std::filesystem;
using namespace lumora;
using lumora::testing::readBytes;
using lumora::testing::TempDir;
using lumora::testing::writeBytes;

namespace {

const LmsModuleInfo kInfo{"LUM-0123456789ABCDEF", "Quiz-1", "Fire Safety", "poolframeset.html"};

// The text of every `element`, read back through an XML reader.
std::vector<std::string> textsOf(const std::string& xml, const std::string& element) {
    auto tokens = scanXml(xml);
    EXPECT_TRUE(tokens);
    std::vector<std::string> titles;
    for (std::size_t i = 0; tokens && i + 1 < tokens->size(); ++i) {
        const XmlToken& t = (*tokens)[i];
        if (t.kind == XmlToken::Kind::Start && t.name == element)
            titles.push_back((*tokens)[i + 1].text);
    }
    return titles;
}

const PackageEntry* entry(const PackagePlan& plan, const std::string& name) {
    for (const PackageEntry& e : plan.entries)
        if (e.name == name)
            return &e;
    return nullptr;
}

// A saved Evaluation module folder: its files and a manifest holding its own identity.
struct SavedModule {
    explicit SavedModule(const std::string& type = kEvaluation) {
        m.moduleType = type;
        m.folderName = "Quiz1";
        m.ModuleFolder = (ws.path() / "Quiz1").string();
        m.framesetFile = framesetFileFor(type);
        m.modTitle = "Fire Safety";
        m.useSCORM = "true";
        for (const char* f : {"scripts/inc_Questions.js", "media/a b.png", "course.au",
                              "course.crs", "course.des", "course.cst", "cmi5.xml"})
            writeBytes(folder() / f, std::string("old ") + f);
        writeBytes(folder() / m.framesetFile, "<html></html>");
        writeBytes(folder() / kManifestFile,
                   manifestXml({kInfo.id, "Quiz1", "Old title", m.framesetFile}, {}));
    }
    fs::path folder() const { return m.ModuleFolder; }

    TempDir ws{"package"};
    CourseModule m;
};

} // namespace

TEST(LmsPackagePassMark, ReadsPercentTextAndWritesEachFormsExactly) {
    struct Case {
        const char* text;
        int hundredths;
        const char* percent;
        const char* scaled;
    };
    for (const Case& c : {Case{"80", 8000, "80", "0.8"}, Case{"72.5", 7250, "72.5", "0.725"},
                          Case{"66.67", 6667, "66.67", "0.6667"}, Case{"0", 0, "0", "0"},
                          Case{"100.00", 10000, "100", "1"}, Case{"007", 700, "7", "0.07"}}) {
        const auto mark = parsePassMark(c.text);
        ASSERT_TRUE(mark) << c.text;
        EXPECT_EQ(mark->hundredths, c.hundredths) << c.text;
        EXPECT_EQ(mark->percent(), c.percent) << c.text;
        EXPECT_EQ(mark->scaled(), c.scaled) << c.text;
    }
    for (const char* bad :
         {"", "101", "100.01", "-5", "1e2", "50.", ".5", "50.123", "abc", " 50", "50%", "1000"})
        EXPECT_FALSE(parsePassMark(bad)) << bad;
}

// The files' structure, a pass mark of 80 in each and titles XML must escape are the schema
// check's (tests/player/manifest.test.mjs); these hold what it does not see.
TEST(LmsPackageBytes, IdentitiesAndPassMarksNameTheModuleAndItsMoveOnRule) {
    const std::string scorm2004 = scorm2004ManifestXml(kInfo, {}, PassMark{7250});
    for (const char* part : {"<manifest identifier=\"LUM-0123456789ABCDEF\"",
                             "<item identifier=\"LUM-0123456789ABCDEF-ITEM\" "
                             "identifierref=\"LUM-0123456789ABCDEF-SCO\">",
                             "<imsss:minNormalizedMeasure>0.725</imsss:minNormalizedMeasure>"})
        EXPECT_NE(scorm2004.find(part), std::string::npos) << part;
    // Without a pass mark the LMS's own applies: no sequencing at all.
    EXPECT_EQ(scorm2004ManifestXml(kInfo, {}).find("imsss:sequencing"), std::string::npos);

    const std::string cmi5 = cmi5Xml(kInfo, kEvaluation);
    EXPECT_NE(cmi5.find("<course id=\"urn:lumora:LUM-0123456789ABCDEF\">"), std::string::npos);
    EXPECT_NE(cmi5.find("<url>poolframeset.html</url>"), std::string::npos);
    struct Case {
        const char* type;
        std::optional<PassMark> mark;
        const char* au;
    };
    for (const Case& c :
         {Case{kEvaluation, PassMark{7250},
               "<au id=\"urn:lumora:LUM-0123456789ABCDEF:au\" moveOn=\"Passed\" "
               "masteryScore=\"0.725\" launchMethod"},
          Case{kEvaluation, std::nullopt, "moveOn=\"CompletedOrPassed\" launchMethod"},
          Case{kLesson, std::nullopt, "moveOn=\"Completed\" launchMethod"},
          Case{kSurvey, PassMark{5000}, "moveOn=\"Completed\" launchMethod"}})
        EXPECT_NE(cmi5Xml(kInfo, c.type, c.mark).find(c.au), std::string::npos) << c.type;
}

TEST(LmsPackageBytes, AnyTitleGivesWellFormedXmlInEveryFormat) {
    std::string title = "Q&A <b>\"quoted\" 'single' \xF0\x9F\x94\xA5 &amp; ]]> --> ";
    const std::string oneLine = title;
    while (title.size() < 2000)
        title += "x";
    LmsModuleInfo info = kInfo;
    info.title = title + "\r\n\x01tail";
    const std::string expected = title + "  tail";       // line break and control character blanked
    const std::string cut = expected.substr(0, 200 + 3); // 200 characters: the emoji is 4 bytes
    EXPECT_EQ(textsOf(manifestXml(info, {}, "80"), "title"), (std::vector<std::string>{cut, cut}));
    EXPECT_EQ(textsOf(scorm2004ManifestXml(info, {}, PassMark{8000}), "title"),
              (std::vector<std::string>{cut, cut}));
    EXPECT_EQ(textsOf(cmi5Xml(info, kEvaluation), "langstring"),
              std::vector<std::string>(4, expected));
    EXPECT_EQ(cut.substr(0, oneLine.size()), oneLine);
}

// Which files each format carries is checked on real packages (tests/player/manifest.test.mjs);
// here, that the import files are made from the module, never taken from the folder, where an
// older save or another format may have left its own.
TEST(LmsPackagePlan, ImportFilesAreMadeAfreshNeverTakenFromTheFolder) {
    SavedModule saved;
    for (PackageFormat format :
         {PackageFormat::Scorm12, PackageFormat::Scorm2004, PackageFormat::Cmi5}) {
        const PackagePlan plan = planPackage(saved.m, {format, PassMark{7250}});
        EXPECT_EQ(plan.problems, std::vector<std::string>{}) << packageFormatName(format);
        for (const PackageEntry& e : plan.entries)
            EXPECT_EQ(e.sourcePath.empty(), e.name == kManifestFile || e.name == "cmi5.xml" ||
                                                e.name.starts_with("course."))
                << packageFormatName(format) << ": " << e.name;
        EXPECT_NE(plan.entries[0].bytes.find("Fire Safety"), std::string::npos);
    }
    const PackagePlan scorm12 = planPackage(saved.m, {PackageFormat::Scorm12, PassMark{7250}});
    EXPECT_NE(scorm12.entries[0].bytes.find("<adlcp:masteryscore>72.5</adlcp:masteryscore>"),
              std::string::npos);
    EXPECT_NE(entry(scorm12, "course.au")->bytes.find("\"100\",\"72.5\","), std::string::npos);
    EXPECT_EQ(readBytes(saved.folder() / "course.au"), "old course.au");
}

TEST(LmsPackagePlan, NeverCarriesOrListsAFileReachedThroughASymbolicLink) {
    SavedModule saved;
    TempDir elsewhere("package-secret");
    writeBytes(elsewhere / "secret.txt", "private");
    fs::create_symlink(elsewhere / "secret.txt", saved.folder() / "media" / "notes.txt");
    fs::create_directory_symlink(elsewhere.path(), saved.folder() / "media" / "linked");

    const std::vector<std::string> files = listPackageFiles(saved.m.ModuleFolder);
    EXPECT_EQ(std::count(files.begin(), files.end(), "media/notes.txt"), 0);
    for (PackageFormat format :
         {PackageFormat::Scorm12, PackageFormat::Scorm2004, PackageFormat::Cmi5}) {
        const PackagePlan plan = planPackage(saved.m, {format, {}});
        for (const PackageEntry& e : plan.entries) {
            EXPECT_FALSE(e.name.starts_with("media/notes") || e.name.starts_with("media/linked"))
                << e.name;
            EXPECT_EQ(e.bytes.find("notes.txt"), std::string::npos) << e.name;
            EXPECT_EQ(e.bytes.find("secret"), std::string::npos) << e.name;
        }
    }
}

TEST(LmsPackagePlan, RefusesWhatWouldMakeABadOrUnstablePackage) {
    struct Case {
        const char* what;
        std::function<void(SavedModule&)> change;
        PackageOptions options;
        std::string problem;
    };
    const std::string noIdentity = "the module has not been saved for SCORM/AICC in this folder "
                                   "yet: save it first, so that every package of it keeps one "
                                   "identity";
    const std::vector<Case> cases{
        {"saved without SCORM",
         [](SavedModule& s) { s.m.useSCORM = "false"; },
         {},
         "the module is saved for use without SCORM/AICC: save it for SCORM/AICC first"},
        {"a template's identity",
         [](SavedModule& s) {
             writeBytes(s.folder() / kManifestFile,
                        manifestXml({kTemplateModuleId, "", "T", "poolframeset.html"}, {}));
         },
         {},
         noIdentity},
        {"a copy's identity", [](SavedModule& s) { s.m.folderName = "Copy1"; }, {}, noIdentity},
        {"no manifest",
         [](SavedModule& s) { fs::remove(s.folder() / kManifestFile); },
         {},
         noIdentity},
        {"a pass mark for a Lesson",
         [](SavedModule& s) { s.m.moduleType = kLesson; },
         {PackageFormat::Cmi5, PassMark{5000}},
         "a pass mark applies to an Evaluation only"},
        {"no launch file",
         [](SavedModule& s) { fs::remove(s.folder() / "poolframeset.html"); },
         {},
         "launch file missing: poolframeset.html"},
    };
    for (const Case& c : cases) {
        SavedModule saved;
        c.change(saved);
        const PackagePlan plan = planPackage(saved.m, c.options);
        EXPECT_TRUE(plan.entries.empty()) << c.what;
        EXPECT_NE(std::find(plan.problems.begin(), plan.problems.end(), c.problem),
                  plan.problems.end())
            << c.what;
    }
}
