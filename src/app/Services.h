// The seams between the core and the machine it runs on: the registry, processes (starting
// programs, and telling whether one still runs) and the spelling engine. Real implementations live
// in src/platform; tests use fakes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

// A raw registry value: type 1 is text, type 4 a 32-bit number (little-endian bytes).
struct RegistryValue {
    int type = 0;
    std::string data;
};

class Registry {
  public:
    virtual ~Registry() = default;
    // Names of the subkeys of HKEY_LOCAL_MACHINE\key; no value when the key cannot be opened.
    virtual std::optional<std::vector<std::string>> subkeyNames(const std::string& key) = 0;
    // A value of HKEY_LOCAL_MACHINE\key; no value when key or value is missing.
    virtual std::optional<RegistryValue> value(const std::string& key, const std::string& name) = 0;
};

class ProcessStarter {
  public:
    virtual ~ProcessStarter() = default;
    // Starts a command line without waiting for it; returns the process id, 0 on failure.
    virtual long start(const std::string& commandLine, bool hidden) = 0;
    // This process and the machine it runs on, as a module's lock file records them.
    virtual long currentProcessId() = 0;
    virtual std::string hostName() = 0;
    // Whether a process of this machine with that id still runs.
    virtual bool isRunning(long pid) = 0;
};

// The spelling engine as start-up prepares it.
class SpellingEngine {
  public:
    virtual ~SpellingEngine() = default;
    virtual void setOption(std::uint32_t option, int value) = 0;
    virtual std::string mainLexPath() = 0;
    virtual void setMainLexPath(const std::string& folder) = 0;
    // Lexicon file names joined with ",".
    virtual void setMainLexFiles(const std::string& names) = 0;
    virtual void setHelpFile(const std::string& path) = 0;
    // Whether preparation left the engine able to check text.
    virtual bool available() const = 0;

    // What a spell check asks once the engine is prepared. Words are UTF-8.
    virtual bool check(const std::string& word) = 0; // true: spelt correctly
    virtual std::vector<std::string> suggest(const std::string& word) = 0;
    // Accepts the word from now on and keeps it in the user dictionary for later runs;
    // throws FileError when the dictionary cannot be written (the word is still accepted).
    virtual void addToUserDictionary(const std::string& word) = 0;
};

// Services that hold nothing: no registry keys, no process started, no engine.
class NullRegistry : public Registry {
  public:
    std::optional<std::vector<std::string>> subkeyNames(const std::string&) override {
        return std::nullopt;
    }
    std::optional<RegistryValue> value(const std::string&, const std::string&) override {
        return std::nullopt;
    }
};

} // namespace lumora
