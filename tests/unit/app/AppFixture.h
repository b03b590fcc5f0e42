// A throw-away installation for the start-up and workspace tests: an installation folder with
// the staged templates, a workspace, and fakes for the registry and spelling engine.
#pragma once

#include "app/Services.h"
#include "app/Session.h"
#include "storage/Paths.h"
#include "support/ScriptedPrompt.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>

namespace lumora::test {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

// A shown message as one comparable row: its text, title and icon.
using Shown = std::tuple<std::string, std::string, Icon>;
inline Shown shown(const testing::ShownMessage& m) {
    return {m.text, m.title, m.icon};
}

// The bytes of the files under `folder` whose relative paths start with `prefix`; without the
// LMS import files when asked, since they carry the module's own id.
inline std::map<std::string, std::string>
folderFiles(const fs::path& folder, const std::string& prefix = "", bool importFiles = true) {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = fs::relative(entry.path(), folder).string();
        const std::string file = entry.path().filename().string();
        const bool import = file == "imsmanifest.xml" || file.rfind("course.", 0) == 0;
        if (entry.is_regular_file() && name.rfind(prefix, 0) == 0 && (importFiles || !import))
            found[name] = readBytes(entry.path());
    }
    return found;
}

// Loads the open module again from its files, as opening it from the folder chooser does.
inline bool reopen(Session& s) {
    const std::string type = s.module.moduleType, name = s.module.folderName;
    s.ResetModule();
    s.module.moduleType = type;
    s.module.folderName = name;
    return s.LoadModule();
}

// A registry holding the keys a test puts in it.
class FakeRegistry : public Registry {
  public:
    std::map<std::string, std::vector<std::string>> subkeys;
    std::map<std::pair<std::string, std::string>, RegistryValue> values;

    std::optional<std::vector<std::string>> subkeyNames(const std::string& key) override {
        auto it = subkeys.find(key);
        if (it == subkeys.end())
            return std::nullopt;
        return it->second;
    }
    std::optional<RegistryValue> value(const std::string& key, const std::string& name) override {
        auto it = values.find({key, name});
        if (it == values.end())
            return std::nullopt;
        return it->second;
    }
};

// Records every call start-up makes on the engine, in order.
class RecordingSpellingEngine : public SpellingEngine {
  public:
    std::vector<std::string> calls;
    bool ready = true;

    void setOption(std::uint32_t option, int value) override {
        calls.push_back("setOption " + std::to_string(option) + " " + std::to_string(value));
    }
    std::string mainLexPath() override {
        calls.push_back("mainLexPath");
        return "old";
    }
    void setMainLexPath(const std::string& folder) override {
        calls.push_back("setMainLexPath " + folder);
    }
    void setMainLexFiles(const std::string& names) override {
        calls.push_back("setMainLexFiles " + names);
    }
    void setHelpFile(const std::string& path) override { calls.push_back("setHelpFile " + path); }
    bool available() const override { return ready; }
    bool check(const std::string&) override { return true; }
    std::vector<std::string> suggest(const std::string&) override { return {}; }
    void addToUserDictionary(const std::string&) override {}
};

class AppTest : public ::testing::Test {
  protected:
    AppTest() { fs::create_directories(install / "app"); }

    // The staged templates, player and all, as the installation's, and an empty workspace.
    void stageTemplates() {
        fs::copy(fs::path(LUMORA_DIST_DIR) / "Templates", install / "Templates",
                 fs::copy_options::recursive);
        fs::create_directories(workspace);
    }

    // A session installed in the temporary folder, with the default records built.
    Session& session() {
        if (!session_) {
            session_ = std::make_unique<Session>(prompt, registry, processes, &engine);
            session_->defaults = makeDefaultRecords(2024);
            session_->ResetModule();
            session_->setInstallation(install.string());
        }
        return *session_;
    }

    // Ends the program's session, as closing the program does.
    void endSession() { session_.reset(); }

    testing::TempDir root{"app"};
    fs::path install = root / "install";
    fs::path workspace = install / "MyContent";
    testing::ScriptedPrompt prompt;
    FakeRegistry registry;
    testing::FakeProcessStarter processes;
    RecordingSpellingEngine engine;

  private:
    std::unique_ptr<Session> session_;
};

} // namespace lumora::test
