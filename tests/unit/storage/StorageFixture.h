// A throw-away installation for the storage tests: a template folder with a page skeleton and
// a stylesheet, a module folder copied from nothing but what each test needs, and helpers to
// read and write whole files as bytes.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"
#include "storage/Paths.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace lumora::test {

namespace fs = std::filesystem;

// The page skeleton of the fake template: chrome around the markers and sample content that a
// written page must drop.
inline const std::string kSkeleton = "<HTML><HEAD><TITLE>Page</TITLE></HEAD>\r\n"
                                     "<BODY>\r\n"
                                     "<DIV id=content><LUMApageContent>\r\n"
                                     "<P>Template sample</P>\r\n"
                                     "</LUMApageContent></DIV>\r\n"
                                     "</BODY></HTML>\r\n";

inline std::string readBytes(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

inline void writeBytes(const fs::path& p, const std::string& bytes) {
    fs::create_directories(p.parent_path());
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out << bytes;
}

class StorageTest : public ::testing::Test {
  protected:
    void SetUp() override {
        static std::atomic<int> counter{0};
        root = fs::temp_directory_path() /
               ("lumora-storage-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
        fs::remove_all(root);
        fs::create_directories(root);
        paths.installFolder = (root / "install").string();
        paths.moduleFolder = (root / "MyContent" / "Mod").string();
        fs::create_directories(fs::path(paths.moduleFolder) / "scripts");
        fs::create_directories(fs::path(paths.moduleFolder) / "css");
    }
    void TearDown() override {
        std::error_code ec;
        fs::remove_all(root, ec);
    }

    // A module of the given type as ResetModule and the loader's first steps leave it.
    CourseModule makeModule(const std::string& type) {
        CourseModule m = makeDefaultRecords(2024).module;
        m.moduleType = type;
        m.folderName = "Mod";
        m.ModuleFolder = paths.moduleFolder;
        m.templateFolder = (root / "Templates" / type).string();
        m.framesetFile = framesetFileFor(type);
        writeBytes(fs::path(m.templateFolder) / "page0.html", kSkeleton);
        return m;
    }

    fs::path moduleFile(const std::string& relative) const {
        return fs::path(paths.moduleFolder) / relative;
    }
    fs::path script(const std::string& name) const { return moduleFile("scripts/" + name); }

    fs::path root;
    ContentPaths paths;
};

} // namespace lumora::test
