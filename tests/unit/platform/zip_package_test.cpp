// Zip packages: read back with libzip, the entries are exactly the ones planned.
#include "platform/ZipPackage.h"

#include "storage/TextFile.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>

namespace fs = std::filesystem;
using namespace lumora;

namespace {

class ZipPackageTest : public ::testing::Test {
  protected:
    void put(const fs::path& relative, const std::string& bytes) {
        lumora::testing::writeBytes(module / relative, bytes);
    }

    lumora::testing::TempDir root{"zip"};
    fs::path module = root / "Course1";
};

struct Entry {
    std::string name;
    std::string bytes;
    bool operator==(const Entry&) const = default;
};

std::vector<Entry> readZip(const fs::path& zipPath) {
    int err = 0;
    zip_t* z = zip_open(zipPath.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &err);
    EXPECT_NE(z, nullptr) << "libzip error " << err;
    std::vector<Entry> entries;
    if (!z)
        return entries;
    for (zip_int64_t i = 0; i < zip_get_num_entries(z, 0); ++i) {
        zip_stat_t st;
        zip_stat_index(z, i, 0, &st);
        std::string bytes(st.size, '\0');
        zip_file_t* f = zip_fopen_index(z, i, 0);
        EXPECT_NE(f, nullptr);
        if (f) {
            EXPECT_EQ(zip_fread(f, bytes.data(), st.size), static_cast<zip_int64_t>(st.size));
            zip_fclose(f);
        }
        entries.push_back({zip_get_name(z, i, ZIP_FL_ENC_GUESS), bytes});
    }
    zip_close(z);
    return entries;
}

} // namespace

TEST_F(ZipPackageTest, HoldsTheEntriesInOrderFromFilesAndFromBytesAndReplacesAnOlderOneWhole) {
    const std::string page(20000, 'p'); // large enough to be compressed
    put("page0.html", page);
    put("media/\xC3\xA9t\xC3\xA9 1.png", std::string("\x89PNG\0\x01", 6));
    const fs::path zip = root / "Course1.zip";

    writePackage(
        {{"cmi5.xml", "", "<courseStructure/>"},
         {"media/\xC3\xA9t\xC3\xA9 1.png", (module / "media/\xC3\xA9t\xC3\xA9 1.png").string(), ""},
         {"page0.html", (module / "page0.html").string(), ""}},
        zip.string());

    EXPECT_EQ(readZip(zip), (std::vector<Entry>{
                                {"cmi5.xml", "<courseStructure/>"},
                                {"media/\xC3\xA9t\xC3\xA9 1.png", std::string("\x89PNG\0\x01", 6)},
                                {"page0.html", page},
                            }));
    EXPECT_LT(fs::file_size(zip), page.size());
    EXPECT_FALSE(fs::exists(root / "Course1.zip.tmp-lumora"));

    // A second package replaces the first whole.
    put("page0.html", "new");
    writePackage({{"page0.html", (module / "page0.html").string(), ""}}, zip.string());
    EXPECT_EQ(readZip(zip), (std::vector<Entry>{{"page0.html", "new"}}));
}

// Whatever fails, the file is named, an older package survives and no partial zip is left.
TEST_F(ZipPackageTest, FailuresNameTheFileAndLeaveNoPartialPackage) {
    put("page0.html", "page");
    lumora::testing::TempDir elsewhere("zip-secret");
    lumora::testing::writeBytes(elsewhere / "secret.txt", "private");
    fs::create_directories(module / "media");
    fs::create_symlink(elsewhere / "secret.txt", module / "media" / "notes.txt");
    const fs::path zip = root / "out.zip";
    lumora::testing::writeBytes(zip, "previous package");
    const PackageEntry page{"page0.html", (module / "page0.html").string(), ""};

    struct Case {
        const char* what;
        std::vector<PackageEntry> entries;
        fs::path target;
        std::string namedFile;
    };
    const std::vector<Case> cases{
        {"a source gone since it was listed",
         {page, {"page1.html", (module / "page1.html").string(), ""}},
         zip,
         (module / "page1.html").string()},
        {"a source that became a symbolic link",
         {page, {"media/notes.txt", (module / "media" / "notes.txt").string(), ""}},
         zip,
         (module / "media" / "notes.txt").string()},
        {"a folder that does not exist",
         {page},
         root / "no-such-folder" / "out.zip",
         (root / "no-such-folder" / "out.zip").string()},
        {"nothing to package", {}, zip, zip.string()},
    };
    for (const Case& c : cases) {
        try {
            writePackage(c.entries, c.target.string());
            ADD_FAILURE() << c.what << ": no error";
        } catch (const FileError& e) {
            EXPECT_EQ(e.path(), c.namedFile) << c.what;
            EXPECT_FALSE(e.reason().empty()) << c.what;
        }
        EXPECT_EQ(readFileBytes(zip.string()), "previous package") << c.what;
        std::vector<std::string> left;
        for (const auto& entry : fs::directory_iterator(root.path()))
            left.push_back(entry.path().filename().string());
        std::sort(left.begin(), left.end());
        EXPECT_EQ(left, (std::vector<std::string>{"Course1", "out.zip"})) << c.what;
    }
}
