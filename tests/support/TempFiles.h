// Whole-file byte helpers and a throw-away folder for the tests that work on real files.
#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace lumora::testing {

namespace fs = std::filesystem;

inline std::string readBytes(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Writes the bytes as they are (no line-end translation), creating the folders on the way.
inline void writeBytes(const fs::path& p, const std::string& bytes) {
    fs::create_directories(p.parent_path());
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out << bytes;
}

// An empty folder under the system's temporary folder, unique to this process and instance,
// removed with everything in it when the object goes.
class TempDir {
  public:
    explicit TempDir(const std::string& tag) {
        static std::atomic<int> counter{0};
        path_ = fs::temp_directory_path() / ("lumora-" + tag + "-" + std::to_string(::getpid()) +
                                             "-" + std::to_string(counter++));
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~TempDir() {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const fs::path& path() const { return path_; }
    fs::path operator/(const fs::path& relative) const { return path_ / relative; }

  private:
    fs::path path_;
};

} // namespace lumora::testing
