// Saving and loading a large Lesson against the floor set by the file system: the same bytes
// written with plain fwrite and read back with plain fread. The module has 1,000 pages,
// 500 activities and 500 glossary terms.
#include "content/ContentForms.h"
#include "storage/CourseModule.h"
#include "storage/ModuleLoader.h"
#include "storage/ModuleWriter.h"
#include "storage/PageFiles.h"
#include "storage/Paths.h"
#include "storage/TextFile.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace lumora;

constexpr int kPages = 1000;
constexpr int kActivities = 500;
constexpr int kTerms = 500;

const char* const kSkeleton =
    "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\r\n"
    "<HTML><HEAD><META http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"
    "<LINK rel=stylesheet href=\"css/camstyle.css\">\r\n"
    "<SCRIPT language=JavaScript src=\"scripts/page.js\"></SCRIPT></HEAD>\r\n"
    "<BODY onload=\"pageLoaded()\"><TABLE class=conTable width=\"100%\"><TR><TD>\r\n"
    "<LUMApageContent>\r\n"
    "<P>&nbsp;</P>\r\n"
    "</LUMApageContent>\r\n"
    "</TD></TR></TABLE></BODY></HTML>\r\n";

// One bench installation: a template with its page skeleton, and a module folder.
struct BenchFolder {
    fs::path root;
    ContentPaths paths;
    CourseModule module;
    std::vector<std::string> files; // every file a save writes, relative to the module folder

    BenchFolder() {
        root = fs::temp_directory_path() / ("lumora-bench-storage-" + std::to_string(::getpid()));
        fs::remove_all(root);
        paths.installFolder = (root / "install").string();
        paths.moduleFolder = (root / "MyContent" / "Big").string();
        fs::create_directories(fs::path(paths.moduleFolder) / "scripts");
        fs::create_directories(root / "Templates" / "Lesson");
        writeFileAtomically((root / "Templates" / "Lesson" / "page0.html").string(), kSkeleton);
        module = bigLesson();
        for (int i = 0; i < kPages; ++i)
            files.push_back("page" + std::to_string(i) + ".html");
        for (const char* s : {"inc_ModuleInfo.js", "inc_QAndA.js", "inc_Glossary.js"})
            files.push_back(joinPath("scripts", s));
    }
    ~BenchFolder() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }

    CourseModule emptyLesson() const {
        CourseModule m = makeDefaultRecords(2024).module;
        m.moduleType = kLesson;
        m.folderName = "Big";
        m.ModuleFolder = paths.moduleFolder;
        m.templateFolder = (root / "Templates" / "Lesson").string();
        m.framesetFile = framesetFileFor(kLesson);
        return m;
    }

    CourseModule bigLesson() const {
        CourseModule m = emptyLesson();
        m.modTitle = "A \"large\" lesson";
        const std::string media = joinPath(joinPath(paths.moduleFolder, "media"), "figure.png");
        m.pages.clear();
        for (int i = 0; i < kPages; ++i) {
            std::string content = "<P><b>Section " + std::to_string(i) + "</b></P>\r\n";
            for (int p = 0; p < 4; ++p)
                content += "<P>Body text of a typical page, with a <A href=\"page" +
                           std::to_string((i + 1) % kPages) +
                           ".html\">link</A> and some words to read &mdash; "
                           "enough for a paragraph of ordinary length.</P>\r\n";
            content += "<P><IMG src=\"" + media + "\"></P>\r\n";
            if (i % 2 == 0)
                content += activityPlaceholder(paths, i / 2 + 1) + "\r\n";
            m.pages.push_back(LessonPage{"", "Page " + std::to_string(i), content});
        }
        m.questions.clear();
        for (int i = 0; i < kActivities; ++i) {
            QAndAItem q;
            q.questionType = i % 3 == 0 ? "checkbox" : "radio";
            q.questionText = "<P>Which of these is \"right\" for case " + std::to_string(i) +
                             "?</P>\r\n<P>Think first.</P>";
            q.rationale = "Because the page said so.";
            q.shuffleDistractors = i % 2 == 0 ? "true" : "false";
            for (int o = 0; o < 4; ++o)
                q.options.push_back(QuestionOption{o == 0 ? "true" : "false", "",
                                                   "Answer " + std::to_string(o), ""});
            m.questions.push_back(q);
        }
        m.glossary.clear();
        for (int i = 0; i < kTerms; ++i)
            m.glossary.push_back(GlossaryTerm{"", "Term " + std::to_string(i),
                                              "First line of the definition.\r\nSecond line."});
        return m;
    }

    std::string path(const std::string& relative) const {
        return joinPath(paths.moduleFolder, relative);
    }
};

BenchFolder& folder() {
    static BenchFolder f;
    return f;
}

std::size_t savedBytes() {
    std::size_t total = 0;
    for (const std::string& f : folder().files)
        total += readFileBytes(folder().path(f)).size();
    return total;
}

// A save of a module whose files are already on disk as they would be written: the usual save
// after an author changed a page or two, here none.
void BM_SaveLesson(benchmark::State& state) {
    BenchFolder& f = folder();
    CourseModule m = f.module;
    for (auto _ : state)
        WriteModuleFiles(m, f.paths);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * savedBytes()));
}

// The worst case: every page and every script differs from what is on disk, so every file is
// written anew (a new file each, renamed over the old one).
void BM_SaveLessonEveryFileChanged(benchmark::State& state) {
    BenchFolder& f = folder();
    CourseModule a = f.module;
    CourseModule b = f.module;
    b.modTitle += " (revised)";
    for (LessonPage& page : b.pages)
        page.content += "<P>Revised.</P>";
    for (QAndAItem& q : b.questions)
        q.rationale += " Revised.";
    b.glossary.front().definition += " Revised.";
    bool flip = false;
    for (auto _ : state) {
        WriteModuleFiles(flip ? b : a, f.paths);
        flip = !flip;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * savedBytes()));
}

// What a save checks before it writes anything: that none of the files it would write is
// read-only, and that no unfinished write was left in the module folder.
void BM_ChecksBeforeSave(benchmark::State& state) {
    BenchFolder& f = folder();
    CourseModule saved = f.module;
    WriteModuleFiles(saved, f.paths);
    for (auto _ : state) {
        for (const std::string& path : moduleFilePaths(saved))
            ensureNotReadOnly(path);
        removeUnfinishedWrites(f.paths.moduleFolder);
    }
}

void BM_LoadLesson(benchmark::State& state) {
    BenchFolder& f = folder();
    CourseModule saved = f.module;
    WriteModuleFiles(saved, f.paths);
    const CourseModule empty = f.emptyLesson();
    for (auto _ : state) {
        CourseModule m = empty;
        LoadModuleFiles(m, f.paths);
        benchmark::DoNotOptimize(m.pages.back().content.data());
        if (m.pages.size() != kPages || m.questions.size() != kActivities)
            state.SkipWithError("the loaded lesson is not the saved one");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * savedBytes()));
}

// The part of a load that is content conversion, not file work: every page's stored content
// to editor form and every script value of the activities and terms out of its literal form.
void BM_LoadLessonConversionsOnly(benchmark::State& state) {
    BenchFolder& f = folder();
    CourseModule saved = f.module;
    WriteModuleFiles(saved, f.paths);
    std::vector<std::string> pages;
    for (int i = 0; i < kPages; ++i) {
        const std::string page = readFileBytes(f.path("page" + std::to_string(i) + ".html"));
        const std::size_t start = page.find(kStartMarker) + std::string(kStartMarker).size() + 2;
        pages.push_back(page.substr(start, page.find(kEndMarker) - start));
    }
    std::vector<std::string> values;
    for (const char* script : {"inc_QAndA.js", "inc_Glossary.js"})
        for (const std::string& line : readTextLines(f.path(joinPath("scripts", script)))) {
            const std::size_t open = line.find(" = \"");
            if (open != std::string::npos && line.size() >= open + 6)
                values.push_back(line.substr(open + 4, line.size() - open - 6));
        }
    for (auto _ : state) {
        for (const std::string& page : pages)
            benchmark::DoNotOptimize(toEditorHTML(page, f.paths).data());
        for (const std::string& value : values)
            benchmark::DoNotOptimize(fromScriptString(value, f.paths).data());
    }
    state.counters["pages"] = static_cast<double>(pages.size());
    state.counters["values"] = static_cast<double>(values.size());
}

// The floor: the saved module's bytes, held in memory, written over a copy of the module with
// plain fwrite (no temporary file, no rename) and read back with plain fread.
struct PlainCopy {
    std::vector<std::string> paths;
    std::vector<std::string> bytes;

    PlainCopy() {
        BenchFolder& f = folder();
        CourseModule saved = f.module;
        WriteModuleFiles(saved, f.paths);
        const fs::path copy = f.root / "PlainCopy";
        fs::create_directories(copy / "scripts");
        for (const std::string& rel : f.files) {
            paths.push_back((copy / rel).string());
            bytes.push_back(readFileBytes(f.path(rel)));
            // The copy exists from the start, so reading it needs no write benchmark first.
            writeFileAtomically(paths.back(), bytes.back());
        }
    }
};

PlainCopy& plain() {
    static PlainCopy p;
    return p;
}

void BM_PlainWrite(benchmark::State& state) {
    PlainCopy& p = plain();
    std::size_t total = 0;
    for (auto _ : state) {
        total = 0;
        for (std::size_t i = 0; i < p.paths.size(); ++i) {
            std::FILE* out = std::fopen(p.paths[i].c_str(), "wb");
            if (!out) {
                state.SkipWithError("cannot write the plain copy");
                break;
            }
            total += std::fwrite(p.bytes[i].data(), 1, p.bytes[i].size(), out);
            std::fclose(out);
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * total));
}

// A plain file copy as `cp` makes one: the same bytes written into new files of a new folder.
// Every file of a safe save is a new file too (written beside the old one, then renamed), so
// this is the floor for a save in which every file changed.
void BM_PlainCopyToNewFiles(benchmark::State& state) {
    PlainCopy& p = plain();
    const fs::path target = folder().root / "FreshCopy";
    std::size_t total = 0;
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove_all(target);
        fs::create_directories(target / "scripts");
        state.ResumeTiming();
        total = 0;
        for (std::size_t i = 0; i < p.paths.size(); ++i) {
            const fs::path to = target / fs::relative(p.paths[i], folder().root / "PlainCopy");
            std::FILE* out = std::fopen(to.c_str(), "wb");
            if (!out) {
                state.SkipWithError("cannot write the fresh copy");
                break;
            }
            total += std::fwrite(p.bytes[i].data(), 1, p.bytes[i].size(), out);
            std::fclose(out);
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * total));
}

void BM_PlainRead(benchmark::State& state) {
    PlainCopy& p = plain();
    std::string buffer;
    std::size_t total = 0;
    for (auto _ : state) {
        total = 0;
        for (std::size_t i = 0; i < p.paths.size(); ++i) {
            std::FILE* in = std::fopen(p.paths[i].c_str(), "rb");
            if (!in) {
                state.SkipWithError("cannot read the plain copy");
                break;
            }
            char chunk[1 << 16];
            std::size_t n;
            buffer.clear();
            while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0)
                buffer.append(chunk, n);
            std::fclose(in);
            total += buffer.size();
        }
        benchmark::DoNotOptimize(buffer.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * total));
}

} // namespace

BENCHMARK(BM_SaveLesson)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveLessonEveryFileChanged)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ChecksBeforeSave)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainCopyToNewFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadLesson)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainRead)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadLessonConversionsOnly)->Unit(benchmark::kMillisecond);
