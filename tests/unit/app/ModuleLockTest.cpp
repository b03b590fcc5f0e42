// The open module's lock: a second program is told where the module is open and changes
// nothing; a stale lock is taken over; the lock follows the open module and ends with the
// session. (Being a dotfile, it is never one of the module's package files.)
#include "AppFixture.h"

#include "app/ModuleLock.h"
#include "app/Workspace.h"

namespace lumora::test {
namespace {

class ModuleLockTest : public AppTest {
  protected:
    void SetUp() override { stageTemplates(); }

    void newLesson(const std::string& name) {
        prompt.type(name);
        ASSERT_TRUE(NewModuleFolder(session(), kLesson));
    }
    fs::path lockOf(const std::string& module) const { return workspace / module / ".lumora-lock"; }

    // Another program on the same computer, over the same installation.
    struct OtherProgram {
        testing::ScriptedPrompt prompt;
        testing::FakeProcessStarter processes;
        FakeRegistry registry;
        Session session{prompt, registry, processes};

        OtherProgram(const fs::path& install, long pid) {
            processes.self = pid;
            session.defaults = makeDefaultRecords(2024);
            session.setInstallation(install.string());
        }
        bool open(const std::string& name) {
            session.ResetModule();
            session.module.moduleType = kLesson;
            session.module.folderName = name;
            return session.LoadModule();
        }
    };
};

TEST_F(ModuleLockTest, SecondProgramIsToldWhereTheModuleIsOpenUntilTheFirstCloses) {
    newLesson("Course1");
    EXPECT_EQ(readBytes(lockOf("Course1")), "100\nthis-computer\n");

    OtherProgram other(install, 200);
    other.processes.running = {100};
    EXPECT_FALSE(other.open("Course1"));
    ASSERT_EQ(other.prompt.messages.size(), 1u);
    EXPECT_EQ(shown(other.prompt.messages[0]),
              (Shown{"The module \"Course1\" is open elsewhere: in Lumora, process 100 on "
                     "this-computer.\r\nClose it there first. If Lumora no longer runs there, "
                     "delete the file \"" +
                         lockOf("Course1").string() + "\" and open the module again.",
                     "Error", Icon::Critical}));
    EXPECT_FALSE(other.session.ModuleLoaded);
    EXPECT_EQ(readBytes(lockOf("Course1")), "100\nthis-computer\n");

    // The lock goes with the first program's session; then the module is free.
    endSession();
    EXPECT_FALSE(fs::exists(lockOf("Course1")));
    EXPECT_TRUE(other.open("Course1"));
    EXPECT_EQ(readBytes(lockOf("Course1")), "200\nthis-computer\n");
}

TEST_F(ModuleLockTest, StaleLocksAreTakenOverButOtherComputersAreTrusted) {
    newLesson("Course1");
    session().moduleLock.release();
    OtherProgram other(install, 200);

    const std::pair<std::string, bool> locks[] = {
        {"555\nthis-computer\n", true},  // a crashed program of this computer
        {"", true},                      // a lock whose writer died before writing it
        {"garbage\x01\x02", true},       // damaged
        {"555\nother-computer\n", false} // another machine on a shared folder: cannot be checked
    };
    for (const auto& [text, takenOver] : locks) {
        SCOPED_TRACE(text);
        other.session.moduleLock.release();
        writeBytes(lockOf("Course1"), text);
        EXPECT_EQ(other.open("Course1"), takenOver);
        EXPECT_EQ(readBytes(lockOf("Course1")), takenOver ? "200\nthis-computer\n" : text);
    }
    EXPECT_EQ(other.prompt.messages.size(), 1u);
}

TEST_F(ModuleLockTest, LockFollowsTheOpenModuleAndARefusedOpenKeepsIt) {
    newLesson("A");
    newLesson("B");
    EXPECT_FALSE(fs::exists(lockOf("A")));
    EXPECT_TRUE(fs::exists(lockOf("B")));

    writeBytes(lockOf("A"), "300\nthis-computer\n");
    processes.running = {300};
    ASSERT_TRUE(OpenModuleEntry(session(), "B (L)")); // reopening the open module keeps its lock
    EXPECT_FALSE(OpenModuleEntry(session(), "A (L)"));
    EXPECT_EQ(readBytes(lockOf("A")), "300\nthis-computer\n");
    EXPECT_EQ(readBytes(lockOf("B")), "100\nthis-computer\n");

    ASSERT_TRUE(OpenModuleEntry(session(), "B (L)"));
    prompt.type("C");
    ASSERT_TRUE(SaveModuleAs(session()));
    EXPECT_FALSE(fs::exists(lockOf("B")));
    EXPECT_EQ(readBytes(lockOf("C")), "100\nthis-computer\n");
}

} // namespace
} // namespace lumora::test
