// Starting command lines through the shell: the whole line reaches the shell and the process
// id that comes back is the child's.
#include "platform/ProcessStarter.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace lumora {
namespace {

TEST(PosixProcessStarter, RunsTheCommandLineThroughTheShell) {
    const testing::TempDir folder("proc");
    const auto file = folder / "out.txt";
    PosixProcessStarter starter;
    const long pid = starter.start("echo started > '" + file.string() + "'; exit 3", true);
    ASSERT_GT(pid, 0);
    int status = 0;
    ASSERT_EQ(waitpid(static_cast<pid_t>(pid), &status, 0), pid);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(testing::readBytes(file), "started\n");
}

} // namespace
} // namespace lumora
