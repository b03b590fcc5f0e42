// The main form's item lists on large modules: refilling the page, Q&A and glossary lists of a
// Lesson with 500 entries each, and the page list's Up button on a 1,000-page Lesson, from the
// handler's call to its return with the lists refilled (the page editor then loads the page on
// its own, as after any click in the list).
#include "BenchLesson.h"
#include "app/Session.h"
#include "content/ContentForms.h"
#include "forms/main/MainForm.h"
#include "platform/ProcessStarter.h"

#include <QApplication>
#include <QListWidget>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

class YesPrompt : public lumora::Prompt {
  public:
    lumora::Answer message(const std::string&, const std::string&, lumora::Icon, lumora::Buttons,
                           lumora::Answer) override {
        return lumora::Answer::Yes;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return std::nullopt;
    }
};

// A Lesson copied from the staged installation, grown to `pages` pages (each linking to the
// next, every other one holding an activity), pages / 2 activities and `terms` terms.
struct BigLesson {
    QTemporaryDir root;
    YesPrompt prompt;
    lumora::NullRegistry registry;
    lumora::PosixProcessStarter processes;
    lumora::Session session{prompt, registry, processes};
    std::unique_ptr<lumora::MainForm> form;

    bool open(int pages, int terms) {
        if (!lumora::bench::loadBenchLesson(session, root.path().toStdString()))
            return false;
        grow(pages, terms);
        form = std::make_unique<lumora::MainForm>(session);
        form->resize(1000, 720);
        form->show();
        form->showLoadedModule();
        QApplication::processEvents();
        return true;
    }

    void grow(int pages, int terms) {
        lumora::CourseModule& m = session.module;
        const lumora::ContentPaths paths = session.contentPaths();
        const lumora::QAndAItem item = m.questions.front();
        m.pages.resize(pages);
        m.questions.resize(pages / 2, item);
        for (int i = 0; i < pages; ++i) {
            std::string content;
            for (int p = 0; p < 4; ++p)
                content += "<P>Body text with a <A href=\"page" + std::to_string((i + 1) % pages) +
                           ".html\">link</A> and words enough for a paragraph.</P>\r\n";
            if (i % 2 == 0) {
                content += activityPlaceholder(paths, i / 2 + 1) + "\r\n";
                m.questions[i / 2].questionText =
                    "<P>Activity " + std::to_string(i / 2 + 1) + " asks this</P>";
            }
            m.pages[i] = {"page" + std::to_string(i) + ".html", "Page " + std::to_string(i),
                          content};
        }
        m.glossary.resize(terms);
        for (int i = 0; i < terms; ++i)
            m.glossary[i] = {std::to_string(i), "Term " + std::to_string(i), "A definition."};
    }
};

// Times one call per run; reports the median and the slowest.
void timeCalls(benchmark::State& state, int pages, int terms,
               const std::function<void(lumora::MainForm&)>& call) {
    BigLesson lesson;
    if (!lesson.open(pages, terms)) {
        state.SkipWithError("the lesson did not open");
        return;
    }
    std::vector<double> times;
    for (auto _ : state) {
        const auto started = Clock::now();
        call(*lesson.form);
        const double seconds = std::chrono::duration<double>(Clock::now() - started).count();
        state.SetIterationTime(seconds);
        times.push_back(seconds);
        // What the call left for the event loop (the editor's load) is not timed.
        QApplication::processEvents();
    }
    std::sort(times.begin(), times.end());
    state.counters["p50_ms"] = 1000.0 * times[times.size() / 2];
    state.counters["max_ms"] = 1000.0 * times.back();
}

void BM_RefillPageList500(benchmark::State& state) {
    timeCalls(state, 500, 500, [](lumora::MainForm& form) { form.setPageList(); });
}

void BM_RefillQAndAList500(benchmark::State& state) {
    timeCalls(state, 1000, 500, [](lumora::MainForm& form) { form.setQAndAList(); });
}

void BM_RefillTermList500(benchmark::State& state) {
    timeCalls(state, 500, 500, [](lumora::MainForm& form) { form.setTermList(); });
}

// Up on page 500 of 1,000: the links of every page renumbered, then the page list refilled.
void BM_PageUpIn1000PageLesson(benchmark::State& state) {
    timeCalls(state, 1000, 10, [](lumora::MainForm& form) {
        form.findChild<QListWidget*>("lstPages")->setCurrentRow(500);
        form.btnUpPage_Click();
    });
}

BENCHMARK(BM_RefillPageList500)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(BM_RefillQAndAList500)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(BM_RefillTermList500)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(BM_PageUpIn1000PageLesson)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(50);

} // namespace
