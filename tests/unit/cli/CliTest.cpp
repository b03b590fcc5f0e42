// lumora-cli end to end: the staged program run on a temporary workspace, checked by its exit
// status, its output and the files it leaves.
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using lumora::testing::readBytes;
using lumora::testing::writeBytes;

const fs::path kCli = fs::path(LUMORA_DIST_DIR) / "lumora-cli";

std::string quoted(const std::string& s) {
    std::string out = "'";
    for (char c : s)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

struct CliRun {
    int status = -1;
    std::string out;
    std::string err;
};

class CliTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!fs::exists(fs::path(LUMORA_DIST_DIR) / "Templates" / "Lesson"))
            GTEST_SKIP() << "the templates are not staged";
    }

    // Runs the program with the workspace option unless the arguments bring their own.
    CliRun cli(const std::string& args, const std::string& env = "",
               const fs::path& program = kCli) {
        const std::string command =
            "env -u LUMORA_WORKSPACE " + env + " " + quoted(program.string()) + " " + args + " >" +
            quoted((root / "out").string()) + " 2>" + quoted((root / "err").string());
        const int raw = std::system(command.c_str());
        CliRun r;
        r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
        r.out = readBytes(root / "out");
        r.err = readBytes(root / "err");
        return r;
    }
    CliRun ws(const std::string& args) {
        return cli("--workspace " + quoted(workspace.string()) + " " + args);
    }

    lumora::testing::TempDir root{"cli"};
    fs::path workspace = root / "ws";
};

TEST_F(CliTest, NewCreatesWorkspaceAndModuleFromTemplate) {
    const CliRun r = ws("new Lesson '  My Course  '");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "My_Course (L)\n");
    EXPECT_NE(r.err.find("Create MyContent: The \"MyContent\" folder does not exist."),
              std::string::npos);
    EXPECT_TRUE(fs::is_regular_file(workspace / "My_Course" / "lessonframeset.html"));
    EXPECT_TRUE(fs::is_regular_file(workspace / "My_Course" / "scripts" / "inc_ModuleInfo.js"));
    EXPECT_TRUE(fs::is_directory(workspace / "My_Course" / "media"));
}

TEST_F(CliTest, NewRefusesBadNamesWithTheMessagesAndDoesNotLoop) {
    ASSERT_EQ(ws("new survey S1").status, 0);

    // The core's messages, each line ended the terminal's way.
    CliRun r = ws("new Lesson a/b");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Error: You cannot use the following characters:\n", 0), 0u) << r.err;

    r = ws("new Evaluation S1");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "Error: S1 already exists.\nYou must use a unique name.\n");

    r = ws("new Lesson '   '");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "Error: The folder name is empty.\n");
    EXPECT_EQ(ws("new Course X").status, 2);
    EXPECT_EQ(ws("new Lesson").status, 2);
    EXPECT_EQ(ws("frobnicate").status, 2);
    EXPECT_EQ(ws("--bogus list").status, 2);
}

TEST_F(CliTest, ListNeedsTheWorkspaceOrYes) {
    CliRun r = ws("list");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Error: Cannot continue without \"MyContent\" folder."),
              std::string::npos);
    EXPECT_FALSE(fs::exists(workspace));

    r = ws("--yes list");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "");
    EXPECT_TRUE(fs::is_directory(workspace));
}

TEST_F(CliTest, ListShowsModulesAsTheFolderChooserDoes) {
    ASSERT_EQ(ws("new Survey zeta").status, 0);
    ASSERT_EQ(ws("new Lesson Alpha").status, 0);
    ASSERT_EQ(ws("new Evaluation beta").status, 0);
    fs::create_directories(workspace / "notes");
    const CliRun r = ws("list");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "Alpha (L)\nbeta (E)\nzeta (S)\n");
}

TEST_F(CliTest, WorkspaceFromEnvironment) {
    ASSERT_EQ(cli("new Lesson FromEnv", "LUMORA_WORKSPACE=" + quoted(workspace.string())).status,
              0);
    EXPECT_TRUE(fs::is_directory(workspace / "FromEnv"));
    // The option wins over the environment.
    const fs::path other = root / "other";
    fs::create_directories(other);
    const CliRun r = cli("--workspace " + quoted(other.string()) + " list",
                         "LUMORA_WORKSPACE=" + quoted(workspace.string()));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "");
}

TEST_F(CliTest, ShowPrintsTheModuleAsEscapedJson) {
    ASSERT_EQ(ws("new Lesson L1").status, 0);
    const fs::path info = workspace / "L1" / "scripts" / "inc_ModuleInfo.js";
    std::string text = readBytes(info);
    const std::size_t line = text.find("var modTitle = ");
    ASSERT_NE(line, std::string::npos);
    const std::size_t lineEnd = text.find("\r\n", line);
    text.replace(line, lineEnd - line,
                 R"(var modTitle = "Say \"hi\")" + std::string("\t") + R"(a\b )" + "\xC3\xA9\";");
    writeBytes(info, text);

    const CliRun r = ws("show L1");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("\"modTitle\": \"Say \\\"hi\\\"\\u0009a\\\\b \xC3\xA9\""),
              std::string::npos)
        << r.out.substr(0, 200);
    // Keys in their fixed order, each present.
    std::size_t at = 0;
    std::istringstream keys(
        "modTitle moduleType folderName copyright useSCORM shuffleEvalQuestions intNumQuestions "
        "pages fileName title content glossary questions id questionType questionText rationale "
        "shuffleDistractors options correct txtValue txtDisplay incorrectRationale colors aLink "
        "aVisited contentBackground titleColor titleBackground pageNumberBackground "
        "pageNameBackground pageNumberColor pageNameColor copyRightColor");
    for (std::string key; keys >> key;) {
        const std::size_t found = r.out.find("\"" + key + "\":", at);
        ASSERT_NE(found, std::string::npos) << key;
        at = found;
    }
    EXPECT_NE(r.out.find("\"folderName\": \"L1\""), std::string::npos);
    EXPECT_NE(r.out.find("\"moduleType\": \"Lesson\""), std::string::npos);
    // No raw control character may remain inside the document.
    for (char c : r.out)
        EXPECT_TRUE(static_cast<unsigned char>(c) >= 0x20 || c == '\n') << int(c);

    // When node is there, the whole output must parse as JSON.
    if (std::system("command -v node >/dev/null 2>&1") == 0) {
        writeBytes(root / "show.json", r.out);
        const std::string parse =
            "node -e 'JSON.parse(require(\"fs\").readFileSync(process.argv[1],"
            "\"utf8\"))' " +
            quoted((root / "show.json").string());
        EXPECT_EQ(std::system(parse.c_str()), 0);
    }
}

TEST_F(CliTest, CheckReportsQuestionsWithWrongCorrectOptions) {
    ASSERT_EQ(ws("new Evaluation E1").status, 0);
    CliRun r = ws("check E1");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");

    // A single-answer question with every option correct.
    const fs::path questions = workspace / "E1" / "scripts" / "inc_Questions.js";
    std::string text = readBytes(questions);
    const std::size_t second = text.find("objEvalQuestion(thisID, \"checkbox\")");
    ASSERT_NE(second, std::string::npos);
    text = std::regex_replace(text.substr(0, second), std::regex("addDistractor\\(false\\)"),
                              "addDistractor(true)") +
           text.substr(second);
    writeBytes(questions, text);
    r = ws("check E1");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Error: ", 0), 0u) << r.err;
}

// A module information file cut after its first line lists no page of the folder's three.
TEST_F(CliTest, CheckReportsPageFilesOutsideTheModule) {
    ASSERT_EQ(ws("new Lesson L1").status, 0);
    EXPECT_EQ(ws("check L1").status, 0);
    const fs::path info = workspace / "L1" / "scripts" / "inc_ModuleInfo.js";
    const std::string text = readBytes(info);
    writeBytes(info, text.substr(0, text.find("\r\n") + 2));
    const CliRun r = ws("check L1");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Warning: The module folder holds 3 page files that are not part of the "
                          "module.\n",
                          0),
              0u)
        << r.err;
    EXPECT_TRUE(fs::exists(workspace / "L1" / "page2.html"));
}

TEST_F(CliTest, SaveWritesTheScormSwitch) {
    ASSERT_EQ(ws("new Survey S1").status, 0);
    const fs::path objectives = workspace / "S1" / "scripts" / "inc_Objectives.js";
    ASSERT_EQ(ws("save S1 --non-scorm").status, 0);
    EXPECT_NE(readBytes(objectives).find("var useSCORM = false;\r\n"), std::string::npos);
    ASSERT_EQ(ws("save S1").status, 0);
    EXPECT_NE(readBytes(objectives).find("var useSCORM = true;\r\n"), std::string::npos);
    const CliRun r = ws("show S1");
    EXPECT_NE(r.out.find("\"useSCORM\": \"true\""), std::string::npos);
}

TEST_F(CliTest, UnknownModuleIsRefusedAndMissingFilesAreFileErrors) {
    ASSERT_EQ(ws("new Lesson L1").status, 0);
    CliRun r = ws("show Nothing");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Nothing is not a module folder"), std::string::npos);

    fs::remove(workspace / "L1" / "scripts" / "inc_Glossary.js");
    r = ws("show L1");
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(r.err.rfind("Error: ", 0), 0u);
    EXPECT_NE(r.err.find("inc_Glossary.js: "), std::string::npos) << r.err;
}

TEST_F(CliTest, StartupChecksApplyToTheCommandLine) {
    const fs::path bare = root / "bare";
    fs::create_directories(bare);
    CliRun r = cli("--app-dir " + quoted(bare.string()) + " --workspace " +
                   quoted(workspace.string()) + " list");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No Templates: The \"Templates\" folder does not exist.\n"
                     "Please reinstall the Lumora.\n");

    fs::create_directories(bare / "Templates");
    r = cli("--app-dir " + quoted(bare.string()) + " --workspace " + quoted(workspace.string()) +
            " list");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Error: Cannot locate template version information\n", 0), 0u) << r.err;
}

TEST_F(CliTest, InstalledSystemWideTheWorkspaceIsLumoraInTheDocumentsFolder) {
    // The layout the package installs: the program in bin/, its folder in share/lumora.
    const fs::path prefix = root / "usr";
    const fs::path program = prefix / "bin" / "lumora-cli";
    fs::create_directories(prefix / "bin");
    fs::create_directories(prefix / "share");
    fs::copy_file(kCli, program);
    fs::create_directory_symlink(fs::path(LUMORA_DIST_DIR), prefix / "share" / "lumora");
    const fs::path home = root / "home";
    const std::string env =
        "HOME=" + quoted(home.string()) + " XDG_CONFIG_HOME=" + quoted((home / ".config").string());

    CliRun r = cli("new Lesson C1", env, program);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(fs::is_regular_file(home / "Documents" / "Lumora" / "C1" / "lessonframeset.html"));
    writeBytes(home / ".config" / "user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    ASSERT_EQ(cli("new Survey S1", env, program).status, 0);
    EXPECT_TRUE(fs::is_directory(home / "Papers" / "Lumora" / "S1"));

    // A documents folder that cannot be made: the message names it and the way out.
    writeBytes(root / "not-a-folder", "");
    r = cli("new Lesson C2", "HOME=" + quoted((root / "not-a-folder").string()), program);
    EXPECT_EQ(r.status, 1);
    const std::string folder = (root / "not-a-folder" / "Documents" / "Lumora").string();
    EXPECT_NE(r.err.find("Lumora cannot keep your modules in \"" + folder +
                         "\": Not a directory.\nChoose another folder with --workspace FOLDER"),
              std::string::npos)
        << r.err;
}

TEST_F(CliTest, ModuleOpenInAnotherRunningProgramIsNotTouched) {
    ASSERT_EQ(ws("new Lesson C1").status, 0);
    const fs::path lock = workspace / "C1" / ".lumora-lock";
    EXPECT_FALSE(fs::exists(lock)); // the command held it only while it ran

    char host[256] = {};
    ASSERT_EQ(gethostname(host, sizeof host - 1), 0);
    writeBytes(lock, "1\n" + std::string(host) + "\n"); // process 1 runs as long as the machine
    const std::string before = readBytes(workspace / "C1" / "scripts" / "inc_ModuleInfo.js");
    CliRun r = ws("save C1 --non-scorm");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("The module \"C1\" is open elsewhere: in Lumora, process 1 on " +
                         std::string(host) + "."),
              std::string::npos)
        << r.err;
    EXPECT_EQ(readBytes(workspace / "C1" / "scripts" / "inc_ModuleInfo.js"), before);

    // A process id that no machine hands out: a crashed program's lock, taken over.
    writeBytes(lock, "999999999\n" + std::string(host) + "\n");
    r = ws("save C1 --non-scorm");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_NE(readBytes(workspace / "C1" / "scripts" / "inc_ModuleInfo.js"), before);
    EXPECT_FALSE(fs::exists(lock));
}

TEST_F(CliTest, HelpAndUsage) {
    CliRun r = cli("--help");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("new TYPE NAME"), std::string::npos);
    r = cli("");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("usage: lumora-cli"), std::string::npos);
}

// The package command's arguments are checked before anything is read or written.
TEST_F(CliTest, PackageRefusesAnUnknownFormatAndAPassMarkItCannotUse) {
    for (const char* setup : {"new Evaluation E1", "save E1", "new Lesson L1", "save L1"})
        ASSERT_EQ(ws(setup).status, 0) << setup;
    struct Case {
        const char* args;
        int status;
        const char* says;
    };
    const std::string notOne = "--mastery takes a pass mark in percent, a number from 0 to 100: ";
    for (const Case& c :
         {Case{"E1 --format scorm3", 2,
               "Unknown package format \"scorm3\": use scorm12, "
               "scorm2004 or cmi5\n"},
          Case{"E1 --format SCORM12", 2, "use scorm12, scorm2004 or cmi5"},
          Case{"E1 --mastery abc", 1, "\"abc\" is not one"},
          Case{"E1 --mastery 101", 1, "\"101\" is not one"},
          Case{"E1 --mastery -5", 1, "\"-5\" is not one"},
          Case{"E1 --mastery ''", 1, "\"\" is not one"},
          Case{"L1 --mastery 80", 1,
               "--mastery: a pass mark applies to an Evaluation only, and \"L1\" is a Lesson"}}) {
        const CliRun r =
            ws(std::string("package ") + c.args + " -o " + quoted((root / "x.zip").string()));
        EXPECT_EQ(r.status, c.status) << c.args;
        EXPECT_NE(r.err.find(c.says), std::string::npos) << c.args << ": " << r.err;
        if (std::string(c.says).ends_with(" is not one")) {
            EXPECT_EQ(r.err.rfind(notOne, 0), 0u) << r.err;
        }
        EXPECT_FALSE(fs::exists(root / "x.zip")) << c.args;
    }
}

// Whether a file can be made in `dir` by this process (a superuser writes into read-only
// folders).
bool canCreateIn(const fs::path& dir) {
    const fs::path probe = dir / "lumora-probe";
    std::ofstream out(probe);
    const bool made = out.good();
    out.close();
    std::error_code ec;
    fs::remove(probe, ec);
    return made;
}

TEST_F(CliTest, PackageIntoAFolderItCannotWriteNamesTheFileAndLeavesNothing) {
    ASSERT_EQ(ws("new Survey S1").status, 0);
    ASSERT_EQ(ws("save S1").status, 0);
    writeBytes(root / "plain-file", "not a folder");
    const fs::path readOnly = root / "read-only";
    fs::create_directories(readOnly);
    fs::permissions(readOnly, fs::perms::owner_read | fs::perms::owner_exec);
    // A superuser writes into any folder whose mode forbids it; a read-only file system stops
    // everyone.
    fs::path locked = canCreateIn(readOnly) ? fs::path("/sys") : readOnly;
    std::vector<fs::path> targets{root / "missing" / "S1.zip", root / "plain-file" / "S1.zip"};
    if (!canCreateIn(locked))
        targets.push_back(locked / "S1.zip");
    for (const fs::path& target : targets) {
        const CliRun r = ws("package S1 -o " + quoted(target.string()));
        EXPECT_EQ(r.status, 3) << target;
        EXPECT_EQ(r.err.rfind("Error: " + target.string() + ": ", 0), 0u) << r.err;
        EXPECT_GT(r.err.size(), ("Error: " + target.string() + ": \n").size()) << "no reason given";
        std::error_code ec;
        for (const auto& e : fs::directory_iterator(target.parent_path(), ec))
            EXPECT_EQ(e.path().filename().string().find("S1.zip"), std::string::npos) << e.path();
    }
    EXPECT_EQ(targets.size(), 3u) << "no folder that refuses writing was found to try";
    fs::permissions(readOnly, fs::perms::owner_all);
}

} // namespace
