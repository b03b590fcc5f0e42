// Zip packages through libzip.
#include "platform/ZipPackage.h"

#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <zip.h>

#include <filesystem>
#include <system_error>

namespace lumora {

namespace {

namespace fs = std::filesystem;

std::string libzipError(int code) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    return text;
}

// Discards the archive (nothing is written) and removes any temporary file left behind.
void abandon(zip_t* archive, const std::string& tmp) {
    if (archive)
        zip_discard(archive);
    std::error_code ignore;
    fs::remove(fsPath(tmp), ignore);
}

} // namespace

void writePackage(const std::vector<PackageEntry>& entries, const std::string& zipPath) {
    if (entries.empty())
        throw FileError(zipPath, "there are no files to package");
    const std::string tmp = zipPath + ".tmp-lumora";
    std::error_code ec;
    fs::remove(fsPath(tmp), ec);
    int code = 0;
    zip_t* archive = zip_open(tmp.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive)
        throw FileError(zipPath, libzipError(code));

    for (const PackageEntry& entry : entries) {
        zip_source_t* data = nullptr;
        if (entry.sourcePath.empty()) {
            // The plan outlives the archive's close, when libzip reads the buffer.
            data = zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
        } else {
            if (!fs::is_regular_file(fs::symlink_status(fsPath(entry.sourcePath), ec))) {
                abandon(archive, tmp);
                throw FileError(entry.sourcePath, "not a regular file of the module folder");
            }
            data = zip_source_file(archive, entry.sourcePath.c_str(), 0, -1);
        }
        if (!data) {
            std::string reason = zip_strerror(archive);
            abandon(archive, tmp);
            throw FileError(entry.sourcePath.empty() ? zipPath : entry.sourcePath, reason);
        }
        if (zip_file_add(archive, entry.name.c_str(), data, ZIP_FL_ENC_UTF_8) < 0) {
            std::string reason = zip_strerror(archive);
            zip_source_free(data);
            abandon(archive, tmp);
            throw FileError(zipPath, "cannot add " + entry.name + ": " + reason);
        }
    }
    // The files are read only now, when the archive is written.
    if (zip_close(archive) != 0) {
        std::string reason = zip_strerror(archive);
        abandon(archive, tmp);
        throw FileError(zipPath, reason);
    }
    fs::rename(fsPath(tmp), fsPath(zipPath), ec);
    if (ec) {
        abandon(nullptr, tmp);
        throw FileError(zipPath, ec.message());
    }
}

} // namespace lumora
