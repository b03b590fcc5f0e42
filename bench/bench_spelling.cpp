// Spell checking while the author waits: finding the first doubtful word of a long page,
// suggestions for a misspelt word, and a whole block of megabytes walked and corrected. The
// engine is the program's, prepared over the staged dictionaries (standard, medical, legal).
#include "app/Startup.h"
#include "content/SpellCheckRun.h"
#include "content/SpellWords.h"
#include "platform/HunspellEngine.h"

#include <benchmark/benchmark.h>
#include <hunspell.hxx>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace lumora;

HunspellEngine& engine() {
    static HunspellEngine prepared;
    static const bool once = [] {
        prepareSpellingEngine(
            prepared, (std::filesystem::path(LUMORA_DIST_DIR) / "app" / "spelling").string());
        return true;
    }();
    (void)once;
    return prepared;
}

SpellCheckRun::Check checker() {
    return [](const std::string& word) { return engine().check(word); };
}

// Paragraphs of a safety lesson as the editor holds them, every word spelt correctly, with
// inline formatting, links, tables and the odd entity; `words` words in all, then `tail`.
std::string page(std::size_t words, const std::string& tail) {
    static const char* const kSentences[] = {
        "The operator signs the permit before work starts, and the supervisor countersigns "
        "it when the area is safe again.",
        "Keep the guard closed while the motor runs, and never reach past it to clear a jam.",
        "Every isolation point is tagged with the name of the person who locked it out.",
        "Wear hearing protection in the press hall; the noise level there exceeds the limit.",
        "Report any damaged cable to your team leader before the end of the shift.",
        "Fire doors must stay clear, and the assembly point is shown on the map beside them.",
        "Chemicals are stored in labeled cabinets, away from heat and direct sunlight.",
        "First aid kits are checked monthly, and the record is kept in the safety office."};
    std::string out;
    std::size_t count = 0;
    for (std::size_t block = 0; count < words; ++block) {
        std::string part = "<P>Section " + std::to_string(block) + ": <STRONG>" +
                           kSentences[block % 8] + "</STRONG>&nbsp;<EM>" +
                           kSentences[(block + 3) % 8] + "</EM></P>\r\n";
        if (block % 5 == 0)
            part += "<TABLE border=1><TBODY><TR><TD>Step</TD><TD>Check the guard</TD></TR>"
                    "</TBODY></TABLE>\r\n";
        if (block % 4 == 0)
            part += "<P>Review <A href=\"page3.html\">the previous page</A>.</P>\r\n";
        for (auto w = nextWord(part, 0, true); w; w = nextWord(part, w->end, true))
            ++count;
        out += part;
    }
    return out + "<P>" + tail + "</P>";
}

// 20,000 different words the engine accepts, from the standard dictionary's own entries,
// in paragraphs of twelve with some formatting.
std::string distinctWordsPage(std::size_t words) {
    std::ifstream dic(std::filesystem::path(LUMORA_DIST_DIR) / "app" / "spelling" / "en_US.dic");
    std::vector<std::string> entries;
    for (std::string line; std::getline(dic, line);) {
        const std::string word = line.substr(0, line.find('/'));
        if (!word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
                return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            }))
            entries.push_back(word);
    }
    std::string out = "<P>";
    std::size_t count = 0;
    const std::size_t stride = std::max<std::size_t>(1, entries.size() / (words + words / 10));
    for (std::size_t i = 0; i < entries.size() && count < words; i += stride) {
        if (!engine().check(entries[i]))
            continue;
        out += (count % 5 == 2) ? "<STRONG>" + entries[i] + "</STRONG> " : entries[i] + " ";
        if (++count % 12 == 0)
            out += ".</P>\r\n<P>";
    }
    return out + "</P>";
}

// The worst case for the first word: a page of 20,000 different correct words with the one
// doubtful word at its very end, so every word is looked up once, from a fresh run.
void BM_FirstDoubtfulWordOf20000(benchmark::State& state) {
    const std::string text = distinctWordsPage(20000) + "<P>The permitt is kept.</P>";
    std::size_t words = 0;
    for (auto w = nextWord(text, 0, true); w; w = nextWord(text, w->end, true))
        ++words;
    state.counters["words"] = static_cast<double>(words);
    for (auto _ : state) {
        SpellCheckRun run(text, true, checker());
        if (!run.next() || run.word() != "permitt")
            state.SkipWithError("the page's one doubtful word was not found");
    }
}

const char* const kMisspellings[] = {"permitt",     "recieve",     "superviser", "proceedure",
                                     "Teh",         "isolaton",    "hazzard",    "electricty",
                                     "maintenence", "accomodation"};

void BM_Suggest(benchmark::State& state) {
    const std::string word = kMisspellings[state.range(0)];
    state.SetLabel(word);
    for (auto _ : state)
        benchmark::DoNotOptimize(engine().suggest(word));
}

// The same with Hunspell's rules as they stand (n-gram pass and compounds on), the search the
// engine's tuned rules leave out.
void BM_SuggestStandardRules(benchmark::State& state) {
    const std::filesystem::path folder =
        std::filesystem::path(LUMORA_DIST_DIR) / "app" / "spelling";
    static Hunspell standard((folder / "en_US.aff").c_str(), (folder / "en_US.dic").c_str());
    static const bool once = [&] {
        standard.add_dic((folder / "en_med_glut.dic").c_str());
        standard.add_dic((folder / "legal.dic").c_str());
        return true;
    }();
    (void)once;
    const std::string word = kMisspellings[state.range(0)];
    state.SetLabel(word);
    for (auto _ : state)
        benchmark::DoNotOptimize(standard.suggest(word));
}

// A 5 MB block walked to its end: with nothing doubtful, and with a word corrected by Change
// All in every paragraph.
void BM_WalkFiveMegabytes(benchmark::State& state) {
    const bool correcting = state.range(0) != 0;
    std::string text;
    while (text.size() < (5u << 20))
        text += page(2000, correcting ? "The permitt is kept." : "The permit is kept.");
    for (auto _ : state) {
        SpellCheckRun run(text, true, checker());
        if (correcting && (!run.next() || run.changeAll("permit")))
            state.SkipWithError("expected one doubtful word, corrected everywhere");
        if (!correcting && run.next())
            state.SkipWithError("expected no doubtful word");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}

} // namespace

BENCHMARK(BM_FirstDoubtfulWordOf20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Suggest)->DenseRange(0, 9)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SuggestStandardRules)->DenseRange(0, 9)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WalkFiveMegabytes)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
