// Start-up: the templates and version checks with their messages, the office repair over a
// fake registry, the spelling preparation over the files present, and the registry reader.
#include "AppFixture.h"

#include "app/RegistryValues.h"
#include "app/Startup.h"

namespace lumora::test {
namespace {

const std::string kUninstall = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

class StartupTest : public AppTest {
  protected:
    StartupResult start() {
        StartupOptions options;
        options.appPath = install.string();
        options.currentYear = 2031;
        options.showSplash = [this] { splashShown = true; };
        return runStartup(session(), options);
    }
    bool splashShown = false;
};

TEST_F(StartupTest, MissingTemplatesOrVersionMarkersShowMessageAndShutDown) {
    EXPECT_EQ(start(), StartupResult::Shutdown);
    fs::create_directories(install / "Templates");
    EXPECT_EQ(start(), StartupResult::Shutdown);
    ASSERT_EQ(prompt.messages.size(), 2u);
    EXPECT_EQ(shown(prompt.messages[0]),
              (Shown{"The \"Templates\" folder does not exist.\r\nPlease reinstall the Lumora.",
                     "No Templates", Icon::Critical}));
    EXPECT_EQ(shown(prompt.messages[1]),
              (Shown{"Cannot locate template version information\r\nPlease reinstall the Lumora",
                     "Error", Icon::Critical}));
    EXPECT_TRUE(engine.calls.empty());
    EXPECT_FALSE(splashShown);
}

// The office repair runs once: the first product code found in the lookup order (whatever its
// case) is repaired and the templates' version copied as the marker; no product, a repair that
// fails to start or an existing marker leave things as they are.
TEST_F(StartupTest, OfficeRepairRunsOnceForTheFirstProductFound) {
    const char* product2 = "{00020409-78E1-11D2-B60F-006097C998E7}";
    const struct {
        const char* what;
        std::vector<std::string> subkeys;
        long pid;
        bool marker; // app/version there before
        const char* started;
    } cases[] = {
        {"found",
         {"Other", product2, "{00010409-78e1-11d2-b60f-006097c998e7}"},
         100,
         false,
         "msiexec /i {00010409-78E1-11D2-B60F-006097C998E7} /qb- REMOVE=HTMLSourceEditing"},
        {"no product", {"{11111111-78E1-11D2-B60F-006097C998E7}"}, 100, false, ""},
        {"fails to start", {product2}, 0, false, "msiexec"},
        {"already repaired", {product2}, 100, true, ""},
    };
    stageTemplates();
    writeBytes(install / "Templates" / "version", "7.3\r\n");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove(install / "app" / "version");
        if (c.marker)
            writeBytes(install / "app" / "version", "1.0");
        registry.subkeys[kUninstall] = c.subkeys;
        processes.pid = c.pid;
        processes.started.clear();
        EXPECT_EQ(start(), StartupResult::Continue);
        EXPECT_TRUE(prompt.messages.empty());
        if (*c.started) {
            ASSERT_EQ(processes.started.size(), 1u);
            EXPECT_EQ(processes.started[0].rfind(c.started, 0), 0u) << processes.started[0];
        } else {
            EXPECT_TRUE(processes.started.empty());
        }
        EXPECT_EQ(readBytes(install / "app" / "version"),
                  c.marker ? "1.0" : (c.pid != 0 && *c.started ? "7.3\r\n" : ""));
    }
    EXPECT_TRUE(splashShown);
}

// The spelling engine gets the dictionaries present, in its fixed order (not the folder's).
TEST_F(StartupTest, BuildsDefaultsAndPathsAndPreparesSpellingWithThePresentFiles) {
    stageTemplates();
    const fs::path spelling = install / "app" / "spelling";
    for (const char* name : {"legal.dic", "en_med_glut.dic", "userdic.dic", "other.dic"})
        writeBytes(spelling / name, "0\n");
    ASSERT_EQ(start(), StartupResult::Continue);
    const std::string sep(1, kSep);
    EXPECT_EQ(session().AppPath, install.string() + sep);
    EXPECT_EQ(session().WorkspaceFolder, install.string() + sep + "MyContent");
    EXPECT_EQ(session().TemplatesRoot, install.string() + sep + "Templates");
    EXPECT_EQ(session().spellingFolder, spelling.string());
    EXPECT_EQ(session().module.copyright, "\xC2\xA9 2031");
    EXPECT_EQ(session().defaults.module.copyright, "\xC2\xA9 2031");
    const std::vector<std::string> expected = {
        "setOption 2097152 1", "mainLexPath", "setMainLexPath " + spelling.string(),
        "setMainLexFiles userdic.dic,en_med_glut.dic,legal.dic"};
    EXPECT_EQ(engine.calls, expected);
    EXPECT_TRUE(session().spellingAvailable);

    engine.ready = false; // an engine that cannot check is marked unavailable
    ASSERT_EQ(start(), StartupResult::Continue);
    EXPECT_FALSE(session().spellingAvailable);
}

TEST(RegistryValues, TextDropsTrailingNulAndNumbersAreHexDigitsFromLastByteToFirst) {
    const std::pair<RegistryValue, std::optional<std::string>> cases[] = {
        {{1, std::string("C:\\Tools\\msinfo32.exe\0", 22)}, "C:\\Tools\\msinfo32.exe"},
        {{1, "plain"}, "plain"},
        {{4, std::string("\x2A\0\0\0", 4)}, "42"},
        {{4, std::string("\xFF\xFF\xFF\x7F", 4)}, "2147483647"},
        // Bytes 02 01 become the digits "1" and "2": 0x12, not 0x0102.
        {{4, std::string("\x02\x01", 2)}, "18"},
        {{4, std::string("\0\0\0\0", 4)}, "0"},
        {{4, ""}, std::nullopt},
        {{3, "xyz"}, ""},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(registryValueText(value), text) << value.data;

    FakeRegistry registry;
    registry.values[{"K", "N"}] = {4, std::string("\x10\x00\x00\x00", 4)};
    std::string out = "stale";
    EXPECT_TRUE(readRegistryValue(registry, "K", "N", out));
    EXPECT_EQ(out, "16");
    EXPECT_FALSE(readRegistryValue(registry, "K", "Missing", out));
    EXPECT_EQ(out, "");
}

TEST_F(StartupTest, SystemInfoStartsTheRegisteredProgramOrSaysUnavailable) {
    stageTemplates();
    start();
    startSystemInfo(session());
    ASSERT_EQ(prompt.messages.size(), 1u);
    EXPECT_EQ(shown(prompt.messages[0]),
              (Shown{"System Information Is Unavailable At This Time", "", Icon::None}));

    // The second key counts only when the program file is really there.
    const fs::path tools = root / "tools";
    registry.values[{"SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO"}] = {
        1, tools.string() + std::string(1, '\0')};
    startSystemInfo(session());
    EXPECT_EQ(prompt.messages.size(), 2u);
    writeBytes(tools / "MSINFO32.EXE", "");
    startSystemInfo(session());
    ASSERT_EQ(processes.started.size(), 1u);
    EXPECT_EQ(processes.started[0], (tools / "MSINFO32.EXE").string());

    registry.values[{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"}] = {1, "msinfo"};
    startSystemInfo(session());
    EXPECT_EQ(processes.started.back(), "msinfo");
    EXPECT_EQ(prompt.messages.size(), 2u);
}

} // namespace
} // namespace lumora::test
