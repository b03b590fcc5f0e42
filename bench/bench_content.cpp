// Speed of the three content conversions on large lesson pages: every load, edit and save of a
// page runs one of them over the whole page.
#include "content/ContentForms.h"
#include "content/Normalize.h"
#include "storage/Paths.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

lumora::ContentPaths benchPaths() {
    const std::string root(1, lumora::kSep);
    return {root + "home" + lumora::kSep + "author" + lumora::kSep + "MyContent" + lumora::kSep +
                "Safety_Course",
            root + "opt" + lumora::kSep + "lumora"};
}

// A page as the editing control hands it back: paragraphs with formatting and the odd special
// character, tables, images from the media folder, page links and activity references.
std::string storedPage(std::size_t targetBytes) {
    std::string page;
    page.reserve(targetBytes + 4096);
    int block = 0;
    while (page.size() < targetBytes) {
        ++block;
        const std::string n = std::to_string(block);
        page += "<P>Section " + n + " covers the <STRONG>lock-out procedure</STRONG> for line " +
                n +
                ". Keep the guard closed while the motor runs at 50\xC2\xB0"
                "C \xC2\xB1 2\xC2\xB0 and note that <EM>every</EM> isolation point is tagged "
                "\xE2\x80\x94 no exceptions. Parts cost \xE2\x82\xAC" +
                n + " each; see \xC2\xA7" + n +
                " of the handbook.&nbsp;The operator signs the permit before work starts, and "
                "the supervisor countersigns it when the area is safe again.</P>\r\n";
        if (block % 3 == 0)
            page += "<P><IMG src=\"media/figure" + n + ".png\" width=320 height=200></P>\r\n";
        if (block % 5 == 0)
            page += "<P><TABLE border=1 cellPadding=2 width=\"100%\">\r\n<TBODY>\r\n<TR>\r\n"
                    "<TD>Step</TD><TD>Check</TD></TR>\r\n<TR>\r\n<TD>" +
                    n + "</TD><TD>Isolator off \xC3\x97 2</TD></TR></TBODY></TABLE></P>\r\n";
        if (block % 7 == 0)
            page += "<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(" +
                    std::to_string(block % 12 + 1) + "));</SCRIPT>\r\n";
        if (block % 4 == 0)
            page += "<P>Review <A href=\"page" + std::to_string(block % 9) +
                    ".html\">the previous page</A>.</P>\r\n";
    }
    return page;
}

void setBytes(benchmark::State& state, const std::string& input) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(input.size()));
}

void BM_normalizeHTML(benchmark::State& state) {
    const std::string page = storedPage(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(lumora::normalizeHTML(page));
    setBytes(state, page);
}

void BM_toEditorHTML(benchmark::State& state) {
    const auto paths = benchPaths();
    const std::string page = storedPage(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(lumora::toEditorHTML(page, paths));
    setBytes(state, page);
}

void BM_toStoredHTML(benchmark::State& state) {
    const auto paths = benchPaths();
    const std::string page =
        lumora::toEditorHTML(storedPage(static_cast<std::size_t>(state.range(0))), paths);
    for (auto _ : state)
        benchmark::DoNotOptimize(lumora::toStoredHTML(page, paths));
    setBytes(state, page);
}

} // namespace

// A long page (100 KB) and an extreme one (1 MB); the target is under 10 ms per conversion.
BENCHMARK(BM_normalizeHTML)->Arg(100 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_toEditorHTML)->Arg(100 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_toStoredHTML)->Arg(100 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);
