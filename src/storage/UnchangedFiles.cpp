// Skipping the write of a file that already holds the bytes a save would give it.
#include "storage/UnchangedFiles.h"

#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace lumora {

namespace {

// Whether the file holds exactly these bytes. Any doubt (missing, unreadable, another size)
// answers no, and the caller writes.
bool holdsBytes(const std::string& path, const std::string& bytes) {
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(fsPath(path), ec);
    if (ec || size != bytes.size())
        return false;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    char chunk[1 << 16];
    std::size_t compared = 0;
    bool same = true;
    while (same) {
        const std::size_t n = std::fread(chunk, 1, sizeof chunk, f);
        if (n == 0)
            break;
        same = compared + n <= bytes.size() && std::memcmp(chunk, bytes.data() + compared, n) == 0;
        compared += n;
    }
    same = same && !std::ferror(f) && compared == bytes.size();
    std::fclose(f);
    return same;
}

} // namespace

bool writeFileIfChanged(const std::string& path, const std::string& bytes) {
    if (holdsBytes(path, bytes))
        return false;
    writeFileAtomically(path, bytes);
    return true;
}

} // namespace lumora
