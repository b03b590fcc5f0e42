// lumora-cli end to end: the staged program run on a temporary workspace, checked by its exit
// status, its output and the files it leaves. What the core decides (messages, locks, folder
// names) is tested in the core's suites; here, that the command line reaches it and reports it.
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

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
    fs::path script(const std::string& module, const std::string& name) const {
        return workspace / module / "scripts" / name;
    }

    lumora::testing::TempDir root{"cli"};
    fs::path workspace = root / "ws";
};

// Refusals end with status 1 and the core's message, each line ended the terminal's way;
// usage errors with status 2. None of them asks again.
TEST_F(CliTest, RefusalsAndUsageErrorsHaveTheirStatusAndMessage) {
    ASSERT_EQ(ws("new survey S1").status, 0);
    const struct {
        const char* args;
        int status;
        const char* err; // the start of standard error
    } cases[] = {
        {"new Lesson a/b", 1, "Error: You cannot use the following characters:\n"},
        {"new Evaluation S1", 1, "Error: S1 already exists.\nYou must use a unique name.\n"},
        {"new Lesson '   '", 1, "Error: The folder name is empty.\n"},
        {"show Nothing", 1, "Error: Nothing is not a module folder"},
        {"new Course X", 2, ""},
        {"new Lesson", 2, ""},
        {"frobnicate", 2, ""},
        {"--bogus list", 2, ""},
        {"", 2, "usage: lumora-cli"},
    };
    for (const auto& c : cases) {
        const CliRun r = *c.args ? ws(c.args) : cli("");
        EXPECT_EQ(r.status, c.status) << c.args;
        EXPECT_EQ(r.err.rfind(c.err, 0), 0u) << c.args << ": " << r.err;
    }
    const CliRun help = cli("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("new TYPE NAME"), std::string::npos);
}

// The workspace: list refuses to make it without --yes, new makes it with a note, and the
// environment names it unless the option does. (Making the module folder and listing the
// workspace are WorkspaceTest's.)
TEST_F(CliTest, WorkspaceNewAndList) {
    CliRun r = ws("list");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Error: Cannot continue without \"MyContent\" folder."),
              std::string::npos);
    EXPECT_FALSE(fs::exists(workspace));

    r = ws("new Lesson '  My Course  '");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "My_Course (L)\n");
    EXPECT_NE(r.err.find("Create MyContent: The \"MyContent\" folder does not exist."),
              std::string::npos);

    const std::string env = "LUMORA_WORKSPACE=" + quoted(workspace.string());
    ASSERT_EQ(cli("new Survey Alpha", env).status, 0);
    r = ws("list");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "Alpha (S)\nMy_Course (L)\n");

    const fs::path other = root / "other";
    fs::create_directories(other);
    r = cli("--workspace " + quoted(other.string()) + " list", env);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, "");
}

TEST_F(CliTest, ShowPrintsTheModuleAsEscapedJson) {
    ASSERT_EQ(ws("new Lesson L1").status, 0);
    const fs::path info = script("L1", "inc_ModuleInfo.js");
    writeBytes(info, std::regex_replace(readBytes(info), std::regex("var modTitle = [^\r]*"),
                                        "var modTitle = \"Say \\\"hi\\\"\ta\\b \xC3\xA9\";"));
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
        at = r.out.find("\"" + key + "\":", at);
        ASSERT_NE(at, std::string::npos) << key;
    }
    // When node is there, the whole output must parse as JSON.
    if (std::system("command -v node >/dev/null 2>&1") == 0) {
        writeBytes(root / "show.json", r.out);
        const std::string parse = "node -e 'JSON.parse(require(\"fs\").readFileSync("
                                  "process.argv[1],\"utf8\"))' " +
                                  quoted((root / "show.json").string());
        EXPECT_EQ(std::system(parse.c_str()), 0);
    }
}

TEST_F(CliTest, CheckFailsOnWrongCorrectOptionsAndOnStrayPageFiles) {
    ASSERT_EQ(ws("new Evaluation E1").status, 0);
    ASSERT_EQ(ws("new Lesson L1").status, 0);
    for (const char* module : {"E1", "L1"}) {
        const CliRun r = ws(std::string("check ") + module);
        EXPECT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(r.err, "");
    }

    // A single-answer question with every option correct.
    const fs::path questions = script("E1", "inc_Questions.js");
    std::string text = readBytes(questions);
    const std::size_t second = text.find("objEvalQuestion(thisID, \"checkbox\")");
    ASSERT_NE(second, std::string::npos);
    writeBytes(questions,
               std::regex_replace(text.substr(0, second), std::regex("addDistractor\\(false\\)"),
                                  "addDistractor(true)") +
                   text.substr(second));
    CliRun r = ws("check E1");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Error: ", 0), 0u) << r.err;

    // A module information file cut after its first line lists no page of the folder's three.
    const fs::path info = script("L1", "inc_ModuleInfo.js");
    text = readBytes(info);
    writeBytes(info, text.substr(0, text.find("\r\n") + 2));
    r = ws("check L1");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.rfind("Warning: The module folder holds 3 page files that are not part of the "
                          "module.\n",
                          0),
              0u)
        << r.err;
    EXPECT_TRUE(fs::exists(workspace / "L1" / "page2.html"));
}

TEST_F(CliTest, SaveWritesTheScormSwitchAndMissingFilesAreFileErrors) {
    ASSERT_EQ(ws("new Survey S1").status, 0);
    const fs::path objectives = script("S1", "inc_Objectives.js");
    ASSERT_EQ(ws("save S1 --non-scorm").status, 0);
    EXPECT_NE(readBytes(objectives).find("var useSCORM = false;\r\n"), std::string::npos);
    ASSERT_EQ(ws("save S1").status, 0);
    EXPECT_NE(readBytes(objectives).find("var useSCORM = true;\r\n"), std::string::npos);

    fs::remove(objectives);
    const CliRun r = ws("show S1");
    EXPECT_EQ(r.status, 3);
    EXPECT_EQ(r.err.rfind("Error: ", 0), 0u);
    EXPECT_NE(r.err.find("inc_Objectives.js: "), std::string::npos) << r.err;
}

TEST_F(CliTest, StartupChecksApplyToTheCommandLine) {
    const fs::path bare = root / "bare";
    fs::create_directories(bare);
    const CliRun r = cli("--app-dir " + quoted(bare.string()) + " --workspace " +
                         quoted(workspace.string()) + " list");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "No Templates: The \"Templates\" folder does not exist.\n"
                     "Please reinstall the Lumora.\n");
}

TEST_F(CliTest, ModuleOpenInAnotherRunningProgramIsNotTouched) {
    ASSERT_EQ(ws("new Lesson C1").status, 0);
    const fs::path lock = workspace / "C1" / ".lumora-lock";
    char host[256] = {};
    ASSERT_EQ(gethostname(host, sizeof host - 1), 0);
    writeBytes(lock, "1\n" + std::string(host) + "\n"); // process 1 runs as long as the machine
    const std::string before = readBytes(script("C1", "inc_ModuleInfo.js"));
    const CliRun r = ws("save C1 --non-scorm");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("The module \"C1\" is open elsewhere: in Lumora, process 1 on " +
                         std::string(host) + "."),
              std::string::npos)
        << r.err;
    EXPECT_EQ(readBytes(script("C1", "inc_ModuleInfo.js")), before);
}

// The package command's arguments are checked before anything is read or written; a target it
// cannot write is a file error naming it, with nothing left behind.
TEST_F(CliTest, PackageRefusesBadArgumentsAndTargetsItCannotWrite) {
    for (const char* setup :
         {"new Evaluation E1", "save E1", "new Lesson L1", "save L1", "new Survey S1"})
        ASSERT_EQ(ws(setup).status, 0) << setup;
    const std::string zip = quoted((root / "x.zip").string());
    const std::string notOne = "--mastery takes a pass mark in percent, a number from 0 to 100: ";
    const struct {
        std::string args;
        int status;
        std::string err; // the start of standard error, or the part after the target's name
    } cases[] = {
        {"E1 --format scorm3 -o " + zip, 2,
         "Unknown package format \"scorm3\": use scorm12, scorm2004 or cmi5\n"},
        {"E1 --mastery 101 -o " + zip, 1, notOne + "\"101\" is not one"},
        {"L1 --mastery 80 -o " + zip, 1,
         "--mastery: a pass mark applies to an Evaluation only, and \"L1\" is a Lesson"},
        // Never saved: no identity of its own yet.
        {"S1 -o " + zip, 1, "save it first"},
        // Inside the module folder the package would contain itself.
        {"E1 -o " + quoted((workspace / "E1" / "x.zip").string()), 1,
         "The package cannot be written inside the module folder"},
        {"E1 -o " + quoted((root / "missing" / "E1.zip").string()), 3,
         "Error: " + (root / "missing" / "E1.zip").string() + ": "},
    };
    for (const auto& c : cases) {
        const CliRun r = ws("package " + c.args);
        EXPECT_EQ(r.status, c.status) << c.args;
        EXPECT_NE(r.err.find(c.err), std::string::npos) << c.args << ": " << r.err;
        if (c.status == 3) {
            EXPECT_GT(r.err.size(), c.err.size() + 1) << "no reason given: " << c.args;
        }
        std::vector<std::string> left;
        for (const auto& e : fs::directory_iterator(root.path()))
            left.push_back(e.path().filename().string());
        std::sort(left.begin(), left.end());
        EXPECT_EQ(left, (std::vector<std::string>{"err", "out", "ws"})) << c.args;
        EXPECT_FALSE(fs::exists(workspace / "E1" / "x.zip")) << c.args;
    }
}

} // namespace
