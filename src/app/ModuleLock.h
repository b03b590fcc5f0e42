// The lock file in the open module's folder. Two programs writing one module at once (a second
// Lumora, lumora-cli, another machine on a shared folder) would interleave its files, so the
// program that loads a module first holds it and the others are told where it is open.
//
// The file names the holding process and its machine. A lock left by a process of this machine
// that no longer runs (a crash, a killed session) is stale and taken over; one from another
// machine cannot be checked and counts as held. Its name starts with a dot, so it is never one
// of a module's files: the import files do not list it and no package carries it.
#pragma once

#include <optional>
#include <string>

namespace lumora {

class ProcessStarter;

inline constexpr const char* kModuleLockFile = ".lumora-lock";

struct LockHolder {
    long pid = 0;
    std::string host;
};

class ModuleLock {
  public:
    ModuleLock() = default;
    ModuleLock(ModuleLock&& other) noexcept;
    ModuleLock& operator=(ModuleLock&& other) noexcept;
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
    // Removes the file, unless it no longer names this process (someone took it over).
    ~ModuleLock();

    struct Attempt;
    // Takes the lock of a module folder for this process. A folder where no file can be
    // created (read-only media) gives no lock and no holder: nothing there can be written.
    static Attempt take(const std::string& folder, ProcessStarter& processes);

    // The folder held; empty when nothing is held.
    const std::string& folder() const { return folder_; }
    void release();

  private:
    std::string folder_;
    std::string stamp_; // the file's text as this process wrote it
};

struct ModuleLock::Attempt {
    ModuleLock lock;
    std::optional<LockHolder> heldBy; // set when another running program holds the module
};

// The text of a lock file, and back; no value for text that names no holder.
std::string lockFileText(const LockHolder& holder);
std::optional<LockHolder> parseLockFile(const std::string& text);

// What the author is told when the module is held elsewhere.
std::string moduleOpenElsewhereText(const std::string& folderName, const std::string& folder,
                                    const LockHolder& holder);

} // namespace lumora
