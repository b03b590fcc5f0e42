// Exporting a 50-page Lesson with a picture on every page, in each package format: the folder
// read, the format's import files made and the zip written. Pictures are random bytes, which
// deflate cannot shrink: the slowest case for the zip writer.
#include "platform/PackageExport.h"
#include "storage/LmsFiles.h"
#include "storage/TextFile.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace lumora;

constexpr int kPages = 50;
constexpr std::size_t kPictureBytes = 100 * 1024;

struct PackageFolder {
    fs::path root;
    CourseModule module;

    PackageFolder() {
        root = fs::temp_directory_path() / ("lumora-bench-package-" + std::to_string(::getpid()));
        fs::remove_all(root);
        const fs::path folder = root / "Fifty";
        std::mt19937 random(7);
        auto put = [&](const std::string& name, const std::string& bytes) {
            fs::create_directories((folder / name).parent_path());
            writeFileAtomically((folder / name).string(), bytes);
        };
        put("lessonframeset.html", std::string(1500, 'f'));
        for (const char* script : {"player-core.js", "player-lms.js", "player-scorm2004.js",
                                   "player-cmi5.js", "player-lesson.js", "player-activity.js"})
            put(std::string("scripts/") + script, std::string(9000, 's'));
        for (int i = 0; i < kPages; ++i) {
            const std::string n = std::to_string(i);
            std::string picture(kPictureBytes, '\0');
            for (char& c : picture)
                c = static_cast<char>(random());
            put("media/figure" + n + ".png", picture);
            std::string page = "<HTML><BODY><LUMApageContent>\r\n<H2>Page " + n + "</H2>\r\n";
            for (int p = 0; p < 20; ++p)
                page += "<P>Text of the page, as an author writes it. </P>\r\n";
            put("page" + n + ".html", page + "<IMG src=\"media/figure" + n +
                                          ".png\">\r\n</LUMApageContent></BODY></HTML>\r\n");
        }
        module.moduleType = kLesson;
        module.folderName = "Fifty";
        module.ModuleFolder = folder.string();
        module.framesetFile = framesetFileFor(kLesson);
        module.modTitle = "Fifty pages";
        module.useSCORM = "true";
        WriteLmsFiles(module); // the identity a save gives it
    }
    ~PackageFolder() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }
};

void BM_ExportFiftyPageLesson(benchmark::State& state) {
    static PackageFolder folder;
    const auto format = static_cast<PackageFormat>(state.range(0));
    const std::string zip = (folder.root / "out.zip").string();
    for (auto _ : state) {
        const auto problems = exportModulePackage(folder.module, zip, {format, {}});
        if (!problems.empty())
            state.SkipWithError(problems.front().c_str());
    }
    state.SetLabel(std::string(packageFormatName(format)) + ", " +
                   std::to_string(fs::file_size(zip) / 1024) + " KB zip");
}
BENCHMARK(BM_ExportFiftyPageLesson)
    ->Arg(static_cast<int>(PackageFormat::Scorm12))
    ->Arg(static_cast<int>(PackageFormat::Scorm2004))
    ->Arg(static_cast<int>(PackageFormat::Cmi5))
    ->Unit(benchmark::kMillisecond);

} // namespace
