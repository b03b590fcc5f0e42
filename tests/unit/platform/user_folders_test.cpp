// The command line's documents folder, read as the desktop (and QStandardPaths) reads it.
#include "platform/UserFolders.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(UserFolders, DocumentsFromUserDirsElseHomeDocuments) {
    const std::string dirs = "# written by xdg-user-dirs-update\n"
                             "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                             "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n";
    EXPECT_EQ(documentsFolderFrom("/home/a", dirs), "/home/a/Dokumente");
    EXPECT_EQ(documentsFolderFrom("/home/a", "XDG_DOCUMENTS_DIR=\"/srv/docs\"\n"), "/srv/docs");
    EXPECT_EQ(documentsFolderFrom("/home/a", "XDG_DOCUMENTS_DIR=\"$HOME\"\n"), "/home/a");
    EXPECT_EQ(documentsFolderFrom("/home/a", "XDG_DOCUMENTS_DIR=\"docs\"\n"), "/home/a/Documents");
    EXPECT_EQ(documentsFolderFrom("/home/a", ""), "/home/a/Documents");
    EXPECT_EQ(documentsFolderFrom("", dirs), "");
}

} // namespace
} // namespace lumora
