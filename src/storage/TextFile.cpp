#include "storage/TextFile.h"

#include "storage/Paths.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace lumora {

namespace {

// Windows-1252 bytes 0x80..0x9F as Unicode code points (0 where the code page has none; such
// bytes are kept as the C1 control with the same number).
constexpr char32_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

bool isValidUtf8(const std::string& s) {
    const auto* p = reinterpret_cast<const unsigned char*>(s.data());
    const std::size_t n = s.size();
    std::size_t i = 0;
    while (i < n) {
        // Runs of ASCII, the bulk of every module file, are checked eight bytes at a time.
        while (i + 8 <= n) {
            std::uint64_t word;
            std::memcpy(&word, p + i, 8);
            if (word & 0x8080808080808080ULL)
                break;
            i += 8;
        }
        if (i >= n)
            break;
        unsigned char c = p[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        std::size_t len;
        char32_t cp;
        if ((c & 0xE0) == 0xC0) {
            len = 2;
            cp = c & 0x1F;
        } else if ((c & 0xF0) == 0xE0) {
            len = 3;
            cp = c & 0x0F;
        } else if ((c & 0xF8) == 0xF0) {
            len = 4;
            cp = c & 0x07;
        } else {
            return false;
        }
        if (i + len > n)
            return false;
        for (std::size_t k = 1; k < len; ++k) {
            if ((p[i + k] & 0xC0) != 0x80)
                return false;
            cp = (cp << 6) | (p[i + k] & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not UTF-8.
        if ((len == 2 && cp < 0x80) || (len == 3 && cp < 0x800) || (len == 4 && cp < 0x10000) ||
            cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
            return false;
        i += len;
    }
    return true;
}

std::string errnoReason(int err) {
    return std::strerror(err);
}

} // namespace

FileError::FileError(std::string path, std::string reason)
    : std::runtime_error(path + ": " + reason), path_(std::move(path)), reason_(std::move(reason)) {
}

std::string decodeText(const std::string& bytes) {
    return decodeText(std::string(bytes));
}

std::string decodeText(std::string&& bytes) {
    if (isValidUtf8(bytes)) {
        if (bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0)
            bytes.erase(0, 3);
        return std::move(bytes);
    }
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 4);
    for (unsigned char c : bytes) {
        if (c < 0x80)
            out += static_cast<char>(c);
        else if (c < 0xA0)
            appendUtf8(out, kCp1252High[c - 0x80]);
        else
            appendUtf8(out, c);
    }
    return out;
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    const std::size_t n = text.size();
    while (pos < n) {
        std::size_t lf = text.find('\n', pos);
        if (lf == std::string::npos) {
            lines.emplace_back(text, pos, n - pos);
            break;
        }
        std::size_t end = lf;
        if (end > pos && text[end - 1] == '\r')
            --end;
        lines.emplace_back(text, pos, end - pos);
        pos = lf + 1;
    }
    return lines;
}

void readFileInto(const std::string& path, std::string& bytes) {
    // The folder test is made only when opening or reading fails: a module opens a thousand
    // page files, and each test is one more call into the file system.
    const auto failure = [&path](const char* fallback, int err) {
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec))
            return FileError(path, "is a folder, not a file");
        return FileError(path, err ? errnoReason(err) : fallback);
    };
    errno = 0;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        throw failure("cannot be opened", errno);
    // Unbuffered: every read goes straight into the chunk below, without the stream's own
    // buffer to allocate and copy through.
    std::setvbuf(f, nullptr, _IONBF, 0);
    bytes.clear();
    char chunk[1 << 16];
    std::size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, f)) > 0)
        bytes.append(chunk, n);
    const bool bad = std::ferror(f) != 0;
    const int err = errno;
    std::fclose(f);
    if (bad)
        throw failure("cannot be read", err);
}

std::string readFileBytes(const std::string& path) {
    std::string bytes;
    readFileInto(path, bytes);
    return bytes;
}

std::string_view decodedView(std::string& bytes) {
    if (!isValidUtf8(bytes)) {
        bytes = decodeText(std::move(bytes));
        return bytes;
    }
    std::string_view text = bytes;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    return text;
}

std::vector<std::string> readTextLines(const std::string& path) {
    return splitLines(decodeText(readFileBytes(path)));
}

SafeTextWriter::SafeTextWriter(std::string path) : path_(std::move(path)) {}

void SafeTextWriter::WriteLine(const std::string& text) {
    buffer_ += text;
    buffer_ += "\r\n";
}

void SafeTextWriter::write(const std::string& raw) {
    buffer_ += raw;
}

void SafeTextWriter::commit() {
    writeFileAtomically(path_, buffer_);
}

void SafeTextWriter::commitExisting() {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path_, ec))
        throw FileError(path_, "file not found");
    writeFileAtomically(path_, buffer_);
}

void ensureNotReadOnly(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::file_status status = fs::status(fsPath(path), ec);
    if (ec || !fs::exists(status))
        return;
    constexpr fs::perms anyWrite =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((status.permissions() & anyWrite) == fs::perms::none)
        throw FileError(path, errnoReason(EACCES));
}

void removeUnfinishedWrites(const std::string& folder) {
    namespace fs = std::filesystem;
    std::error_code ec;
    std::vector<fs::path> unfinished;
    for (fs::recursive_directory_iterator it(fsPath(folder), ec), end; !ec && it != end;
         it.increment(ec)) {
        std::error_code typeError;
        if (it->path().filename().string().ends_with(kUnfinishedWriteSuffix) &&
            it->is_regular_file(typeError))
            unfinished.push_back(it->path());
    }
    // Removed once the walk is over: removing while iterating may skip entries.
    for (const fs::path& file : unfinished) {
        fs::remove(file, ec);
        if (ec)
            throw FileError(file.string(), ec.message());
    }
}

void writeFileAtomically(const std::string& path, const std::string& bytes) {
    namespace fs = std::filesystem;
    ensureNotReadOnly(path);
    const std::string tmp = path + std::string(kUnfinishedWriteSuffix);
    {
        errno = 0;
        std::FILE* f = std::fopen(tmp.c_str(), "wb");
        if (!f)
            throw FileError(path, errnoReason(errno ? errno : EIO));
        bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
        int err = ok ? 0 : errno;
        if (std::fflush(f) != 0 && ok) {
            ok = false;
            err = errno;
        }
        if (std::fclose(f) != 0 && ok) {
            ok = false;
            err = errno;
        }
        if (!ok) {
            std::error_code ignore;
            fs::remove(tmp, ignore);
            throw FileError(path, errnoReason(err ? err : EIO));
        }
    }
    std::error_code ec;
    fs::rename(tmp, path, ec);
    if (ec) {
        std::error_code ignore;
        fs::remove(tmp, ignore);
        throw FileError(path, ec.message());
    }
}

} // namespace lumora
