// A throw-away installation for the storage tests: a template folder with a page skeleton and
// a module folder holding nothing but what each test writes into it.
#pragma once

#include "content/ContentForms.h"
#include "storage/CourseModule.h"
#include "storage/Paths.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora::test {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

// The page skeleton of the fake template: chrome around the markers and sample content that a
// written page must drop.
inline const std::string kSkeleton = "<HTML><HEAD><TITLE>Page</TITLE></HEAD>\r\n"
                                     "<BODY>\r\n"
                                     "<DIV id=content><LUMApageContent>\r\n"
                                     "<P>Template sample</P>\r\n"
                                     "</LUMApageContent></DIV>\r\n"
                                     "</BODY></HTML>\r\n";

inline QuestionOption option(const std::string& correct, const std::string& display,
                             const std::string& rationale = "") {
    return QuestionOption{correct, "", display, rationale};
}

inline QAndAItem item(const std::string& type, const std::string& text,
                      std::vector<QuestionOption> options, const std::string& rationale = "",
                      const std::string& shuffle = "false") {
    QAndAItem q;
    q.questionType = type;
    q.questionText = text;
    q.options = std::move(options);
    q.rationale = rationale;
    q.shuffleDistractors = shuffle;
    return q;
}

class StorageTest : public ::testing::Test {
  protected:
    StorageTest() {
        paths.installFolder = (root / "install").string();
        paths.moduleFolder = (root / "MyContent" / "Mod").string();
        fs::create_directories(fs::path(paths.moduleFolder) / "scripts");
        fs::create_directories(fs::path(paths.moduleFolder) / "css");
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

    testing::TempDir root{"storage"};
    ContentPaths paths;
};

} // namespace lumora::test
