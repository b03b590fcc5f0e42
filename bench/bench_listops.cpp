// The list operations of the main form on a 1,000-page Lesson: each renumbers or searches the
// links and activity placeholders of every page. Every page links to the next one and every
// other page holds an activity; 500 activities, 500 terms. Each run starts from a fresh copy of
// the lesson (the copy is not timed).
#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "storage/CourseModule.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace {

using namespace lumora;

constexpr int kPages = 1000;
constexpr int kActivities = 500;
constexpr int kTerms = 500;

class YesPrompt : public Prompt {
  public:
    Answer message(const std::string&, const std::string&, Icon, Buttons, Answer) override {
        return Answer::Yes;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return std::nullopt;
    }
};

struct BigLesson {
    ContentPaths paths{"/ws/MyContent/Big", "/opt/lumora"};
    DefaultRecords defaults = makeDefaultRecords(2024);
    CourseModule module;

    BigLesson() {
        module = defaults.module;
        module.moduleType = kLesson;
        module.pages.clear();
        for (int i = 0; i < kPages; ++i) {
            std::string content = "<P><B>Section " + std::to_string(i) + "</B></P>\r\n";
            for (int p = 0; p < 4; ++p)
                content += "<P>Body text of a typical page, with a <A href=\"page" +
                           std::to_string((i + 1) % kPages) +
                           ".html\">link</A> and some words to read, enough for a paragraph of "
                           "ordinary length.</P>\r\n";
            if (i % 2 == 0)
                content += activityPlaceholder(paths, i / 2 + 1) + "\r\n";
            module.pages.push_back(LessonPage{"page" + std::to_string(i) + ".html",
                                              "Page " + std::to_string(i), content});
        }
        module.questions.assign(kActivities, defaults.item);
        for (int i = 0; i < kActivities; ++i)
            module.questions[i].questionText = "<P>Activity " + std::to_string(i + 1) + "</P>";
        module.glossary.clear();
        for (int i = 0; i < kTerms; ++i)
            module.glossary.push_back(
                GlossaryTerm{std::to_string(i), "Term " + std::to_string(i), "Its definition."});
    }
};

const BigLesson& lesson() {
    static const BigLesson l;
    return l;
}

// One operation on a fresh copy of the lesson per run.
template <class Operation> void runOnCopy(benchmark::State& state, Operation operation) {
    YesPrompt prompt;
    std::int16_t page = 0, item = 0, option = 0, term = 0;
    bool changed = false;
    for (auto _ : state) {
        state.PauseTiming();
        CourseModule module = lesson().module;
        const ListContext ctx{
            module, lesson().defaults, lesson().paths, prompt, page, item, option, term, changed};
        state.ResumeTiming();
        operation(ctx);
        benchmark::DoNotOptimize(module.pages.data());
        state.PauseTiming();
        { CourseModule gone = std::move(module); } // the copy's release is not timed either
        state.ResumeTiming();
    }
}

// Adding a page: a record at the end; nothing is renumbered.
void BM_AddPage(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { addBlankPage(ctx); });
}

// Removing a page no other page links to: every other page is searched for a link to it.
void BM_RemoveUnlinkedPage(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) {
        ctx.module.pages[0].content = "<P>Nothing links here.</P>";
        deleteListItem(ctx, "lstPages", 1); // page 0 held the only link to page 1
    });
}

// Moving page 500 up and down: three passes over every page each way.
void BM_MovePageUp(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { moveListItemUp(ctx, "lstPages", 500); });
}

void BM_MovePageDown(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { moveListItemDown(ctx, "lstPages", 500); });
}

// Deleting activity 2 of 500: its placeholders go and 3..500 are renumbered in every page.
void BM_RemoveActivity(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { deleteListItem(ctx, "lstQAndA", 1); });
}

// Moving activity 250 up: its placeholders and those of 249 exchanged in every page.
void BM_MoveActivityUp(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { moveListItemUp(ctx, "lstQAndA", 249); });
}

// Removing a term no page uses: every page is searched for a link to it.
void BM_RemoveUnusedTerm(benchmark::State& state) {
    runOnCopy(state, [](const ListContext& ctx) { deleteListItem(ctx, "lstTerms", 250); });
}

BENCHMARK(BM_AddPage)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveUnlinkedPage)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MovePageUp)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MovePageDown)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveActivity)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveActivityUp)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveUnusedTerm)->Unit(benchmark::kMillisecond);

} // namespace
