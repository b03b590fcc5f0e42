// Zip packages: read back with libzip, the entries are exactly the module's files.
#include "platform/ZipPackage.h"

#include "storage/TextFile.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>
#include <zip.h>

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

TEST_F(ZipPackageTest, HoldsEveryModuleFileWithTheManifestAtTheRootAndNothingElse) {
    const std::string page(20000, 'p'); // large enough to be compressed
    put("imsmanifest.xml", "<manifest/>");
    put("lessonframeset.html", "<html></html>\r\n");
    put("page0.html", page);
    put("scripts/inc_ModuleInfo.js", "var modTitle = \"T\";\r\n");
    put("media/\xC3\xA9t\xC3\xA9 1.png", std::string("\x89PNG\0\x01", 6));
    put("scripts/inc_Glossary.js.tmp-lumora", "half written");
    put(".DS_Store", "finder");
    put(".svn/entries", "vcs");
    const fs::path zip = root / "Course1.zip";

    writePackage(module.string(), zip.string());

    EXPECT_EQ(readZip(zip), (std::vector<Entry>{
                                {"imsmanifest.xml", "<manifest/>"},
                                {"lessonframeset.html", "<html></html>\r\n"},
                                {"media/\xC3\xA9t\xC3\xA9 1.png", std::string("\x89PNG\0\x01", 6)},
                                {"page0.html", page},
                                {"scripts/inc_ModuleInfo.js", "var modTitle = \"T\";\r\n"},
                            }));
    EXPECT_LT(fs::file_size(zip), page.size());
    EXPECT_FALSE(fs::exists(root / "Course1.zip.tmp-lumora"));
}

TEST_F(ZipPackageTest, ReplacesAnOlderPackageWhole) {
    put("imsmanifest.xml", "<manifest/>");
    put("page0.html", "old");
    put("page1.html", "gone later");
    const fs::path zip = root / "out.zip";
    writePackage(module.string(), zip.string());
    fs::remove(module / "page1.html");
    put("page0.html", "new");
    writePackage(module.string(), zip.string());
    EXPECT_EQ(readZip(zip),
              (std::vector<Entry>{{"imsmanifest.xml", "<manifest/>"}, {"page0.html", "new"}}));
}

TEST_F(ZipPackageTest, FailuresNameTheFileAndLeaveNoPartialPackage) {
    put("imsmanifest.xml", "<manifest/>");
    const fs::path zip = root / "out.zip";
    lumora::testing::writeBytes(zip, "previous package");

    try {
        writePackage((root / "Missing").string(), zip.string());
        FAIL() << "no error for a missing module folder";
    } catch (const FileError& e) {
        EXPECT_EQ(e.path(), (root / "Missing").string());
    }
    EXPECT_EQ(readFileBytes(zip.string()), "previous package");

    const fs::path nowhere = root / "no-such-folder" / "out.zip";
    EXPECT_THROW(writePackage(module.string(), nowhere.string()), FileError);
    EXPECT_FALSE(fs::exists(nowhere.parent_path()));

    fs::create_directories(root / "Empty" / ".hidden");
    EXPECT_THROW(writePackage((root / "Empty").string(), zip.string()), FileError);
    EXPECT_EQ(readFileBytes(zip.string()), "previous package");
}
