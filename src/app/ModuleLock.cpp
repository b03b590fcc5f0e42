// The module folder's lock file; see ModuleLock.h.
#include "app/ModuleLock.h"

#include "app/Services.h"
#include "base/Prompt.h"
#include "storage/Paths.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace fs = std::filesystem;

namespace lumora {

namespace {

std::string readAll(const std::string& path) {
    std::ifstream in(fsPath(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Creates the file only if it does not exist yet ("x"), so two programs starting together
// cannot both believe they made it.
bool createExclusively(const std::string& path, const std::string& text) {
    std::FILE* file = std::fopen(path.c_str(), "wx");
    if (!file)
        return false;
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && written;
}

} // namespace

std::string lockFileText(const LockHolder& holder) {
    return std::to_string(holder.pid) + "\n" + holder.host + "\n";
}

std::optional<LockHolder> parseLockFile(const std::string& text) {
    const std::size_t end = text.find('\n');
    if (end == std::string::npos || end == 0 || end > 18)
        return std::nullopt;
    LockHolder holder;
    for (std::size_t i = 0; i < end; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        holder.pid = holder.pid * 10 + (text[i] - '0');
    }
    if (holder.pid <= 0)
        return std::nullopt;
    const std::size_t hostEnd = text.find('\n', end + 1);
    holder.host =
        text.substr(end + 1, hostEnd == std::string::npos ? std::string::npos : hostEnd - end - 1);
    return holder;
}

std::string moduleOpenElsewhereText(const std::string& folderName, const std::string& folder,
                                    const LockHolder& holder) {
    const std::string where = holder.host.empty() ? "another computer" : holder.host;
    return "The module \"" + folderName + "\" is open elsewhere: in Lumora, process " +
           std::to_string(holder.pid) + " on " + where + "." + kCrLf +
           "Close it there first. If Lumora no longer runs there, delete the file \"" +
           joinPath(folder, kModuleLockFile) + "\" and open the module again.";
}

ModuleLock::ModuleLock(ModuleLock&& other) noexcept
    : folder_(std::move(other.folder_)), stamp_(std::move(other.stamp_)) {
    other.folder_.clear();
    other.stamp_.clear();
}

ModuleLock& ModuleLock::operator=(ModuleLock&& other) noexcept {
    if (this != &other) {
        release();
        folder_ = std::move(other.folder_);
        stamp_ = std::move(other.stamp_);
        other.folder_.clear();
        other.stamp_.clear();
    }
    return *this;
}

ModuleLock::~ModuleLock() {
    release();
}

void ModuleLock::release() {
    if (folder_.empty())
        return;
    const std::string path = joinPath(folder_, kModuleLockFile);
    if (readAll(path) == stamp_) {
        std::error_code ignored;
        fs::remove(fsPath(path), ignored);
    }
    folder_.clear();
    stamp_.clear();
}

ModuleLock::Attempt ModuleLock::take(const std::string& folder, ProcessStarter& processes) {
    const LockHolder self{processes.currentProcessId(), processes.hostName()};
    const std::string text = lockFileText(self);
    const std::string path = joinPath(folder, kModuleLockFile);
    Attempt attempt;
    // A stale or own lock is removed and made again; another program may win that race, so
    // the holder is read again after each failed creation.
    for (int round = 0; round < 3; ++round) {
        if (createExclusively(path, text)) {
            attempt.lock.folder_ = folder;
            attempt.lock.stamp_ = text;
            return attempt;
        }
        std::error_code ec;
        if (!fs::exists(fsPath(path), ec))
            return attempt; // nothing can be created here, so nothing here can be written
        const std::optional<LockHolder> holder = parseLockFile(readAll(path));
        // Unreadable text is a lock whose writer died before finishing it.
        const bool ours = holder && holder->pid == self.pid && holder->host == self.host;
        const bool stale =
            !holder || (holder->host == self.host && !processes.isRunning(holder->pid));
        if (!ours && !stale) {
            attempt.heldBy = holder;
            return attempt;
        }
        fs::remove(fsPath(path), ec);
    }
    return attempt;
}

} // namespace lumora
