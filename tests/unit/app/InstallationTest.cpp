// Where the installed folder is found from the program's folder, and where the workspace goes:
// staged beside the program, or system-wide under share/lumora with the workspace in the
// author's documents.
#include "app/Installation.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

namespace fs = std::filesystem;

TEST(Installation, FoundBesideTheProgramElseInShareLumora) {
    testing::TempDir root{"install"};
    const fs::path staged = root / "dist";
    const fs::path prefix = root / "usr";
    fs::create_directories(staged / "Templates");
    fs::create_directories(prefix / "bin");
    fs::create_directories(prefix / "share" / "lumora" / "Templates");

    const Installation own = findInstallation(staged.string());
    EXPECT_EQ(own.appPath, staged.string());
    EXPECT_FALSE(own.systemWide);

    for (const fs::path& bin : {prefix / "bin", prefix / "bin" / ""}) {
        const Installation shared = findInstallation(bin.string());
        EXPECT_EQ(shared.appPath, (prefix / "share" / "lumora").string()) << bin;
        EXPECT_TRUE(shared.systemWide);
    }

    // Neither: the program's own folder, where start-up reports the missing templates.
    const Installation none = findInstallation((root / "elsewhere").string());
    EXPECT_EQ(none.appPath, (root / "elsewhere").string());
    EXPECT_FALSE(none.systemWide);
}

TEST(Installation, WorkspaceGivenFirstThenDocumentsWhenSystemWide) {
    const Installation staged{"/opt/lumora", false};
    const Installation shared{"/usr/share/lumora", true};
    EXPECT_EQ(chooseWorkspace("/given", shared, "/home/a/Documents"), "/given");
    EXPECT_EQ(chooseWorkspace("", shared, "/home/a/Documents"), "/home/a/Documents/Lumora");
    EXPECT_EQ(chooseWorkspace("", staged, "/home/a/Documents"), ""); // MyContent beside it
}

} // namespace
} // namespace lumora
