// Starting command lines through the shell: the whole line reaches the shell and the process
// id that comes back is the child's.
#include "platform/ProcessStarter.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace lumora {
namespace {

namespace fs = std::filesystem;

TEST(PosixProcessStarter, RunsTheCommandLineThroughTheShell) {
    const fs::path file =
        fs::temp_directory_path() / ("lumora-proc-" + std::to_string(::getpid()) + ".txt");
    PosixProcessStarter starter;
    const long pid = starter.start("echo started > '" + file.string() + "'; exit 3", true);
    ASSERT_GT(pid, 0);
    int status = 0;
    ASSERT_EQ(waitpid(static_cast<pid_t>(pid), &status, 0), pid);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    std::ifstream in(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "started\n");
    fs::remove(file);
}

} // namespace
} // namespace lumora
