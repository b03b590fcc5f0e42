// Zip packages through libzip.
#include "platform/ZipPackage.h"

#include "storage/LmsFiles.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <zip.h>

#include <algorithm>
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

void writePackage(const std::string& moduleFolder, const std::string& zipPath) {
    std::error_code ec;
    if (!fs::is_directory(fsPath(moduleFolder), ec))
        throw FileError(moduleFolder, "folder not found");
    std::vector<std::string> files = listPackageFiles(moduleFolder);
    if (files.empty())
        throw FileError(moduleFolder, "the folder holds no files to package");
    // The manifest first: readers that peek at the start of a package find it at once.
    auto manifest = std::find(files.begin(), files.end(), std::string(kManifestFile));
    if (manifest != files.end())
        std::rotate(files.begin(), manifest, manifest + 1);

    const std::string tmp = zipPath + ".tmp-lumora";
    fs::remove(fsPath(tmp), ec);
    int code = 0;
    zip_t* archive = zip_open(tmp.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive)
        throw FileError(zipPath, libzipError(code));

    for (const std::string& file : files) {
        const std::string source = (fsPath(moduleFolder) / fsPath(file)).string();
        zip_source_t* data = zip_source_file(archive, source.c_str(), 0, -1);
        if (!data) {
            std::string reason = zip_strerror(archive);
            abandon(archive, tmp);
            throw FileError(source, reason);
        }
        if (zip_file_add(archive, file.c_str(), data, ZIP_FL_ENC_UTF_8) < 0) {
            std::string reason = zip_strerror(archive);
            zip_source_free(data);
            abandon(archive, tmp);
            throw FileError(zipPath, "cannot add " + file + ": " + reason);
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
