// Reading module files: the bytes as they are, UTF-8 or the old single-byte code page, and the
// reason a file cannot be read.
#include "StorageFixture.h"

#include "storage/TextFile.h"

namespace lumora::test {
namespace {

TEST(TextDecoding, Utf8PassesAndOldCodePageIsConverted) {
    EXPECT_EQ(decodeText(std::string("\xEF\xBB\xBF"
                                     "caf\xC3\xA9")),
              "caf\xC3\xA9");
    // One stray byte after a long ASCII run makes the whole file Windows-1252.
    EXPECT_EQ(decodeText(std::string("0123456789abcdef\x80") + "\xC3\xA9"),
              "0123456789abcdef\xE2\x82\xAC\xC3\x83\xC2\xA9");
    // A sequence cut short at the end of the file is not UTF-8 either.
    EXPECT_EQ(decodeText(std::string("01234567\xE2\x82")), "01234567\xC3\xA2\xE2\x80\x9A");
}

TEST_F(StorageTest, ReadingNamesWhyAFileCannotBeRead) {
    const fs::path file = root / "big.txt";
    std::string big(200000, 'x');
    big += "\r\nend";
    writeBytes(file, big);
    EXPECT_EQ(readFileBytes(file.string()), big);
    ASSERT_EQ(readTextLines(file.string()).size(), 2u);

    try {
        readFileBytes(root.path().string());
        FAIL() << "a folder was read";
    } catch (const FileError& e) {
        EXPECT_EQ(e.reason(), "is a folder, not a file");
    }
    try {
        readFileBytes((root / "missing.txt").string());
        FAIL() << "a missing file was read";
    } catch (const FileError& e) {
        EXPECT_EQ(e.reason(), "No such file or directory");
        EXPECT_EQ(e.path(), (root / "missing.txt").string());
    }
}

} // namespace
} // namespace lumora::test
