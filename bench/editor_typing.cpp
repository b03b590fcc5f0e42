// How fast one keystroke in a 100 KB lesson page is stored: from the browser inserting a
// character, through the serialised body arriving in C++ (contentChanged), to the content
// layer's normalizeHTML and toEditorHTML of that HTML, as saveEditorContent does it. A fast
// typist needs every change stored within one frame (16 ms). Run without and with the
// formatting toolbar's state reported, which the main form's editors have on.
#include "content/ContentForms.h"
#include "content/Normalize.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/web/LumoraScheme.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEngineView>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// A lesson page of about `bytes` bytes in editor form: paragraphs with formatting, page and
// term links, tables and activity placeholders, as authors write them.
QString lessonPage(const QString& folder, int bytes) {
    const QString start = folder + "/app/QAndAStart.gif";
    const QString end = folder + "/app/QAndAEnd.gif";
    QString page;
    for (int n = 0; page.size() < bytes; ++n) {
        page += QStringLiteral(
                    "<P>Paragraph %1 explains the <B>procedure</B> in <I>plain words</I>, with a "
                    "<A href=\"page%2.html\">link to page %2</A> and a <A href=\"#term%2\" "
                    "name=\"term%2\" onClick=\"parentRef.showGlossaryPopup('%2', 240, 180);\" "
                    "border=0>glossary term</A>.&nbsp;More text follows here.</P>\r\n")
                    .arg(n)
                    .arg(n % 12);
        if (n % 10 == 0) {
            page += QStringLiteral("<TABLE border=1><TR><TD>cell</TD><TD>value %1</TD></TR>"
                                   "</TABLE>\r\n<P><IMG src=\"%2\">%3<IMG src=\"%4\"></P>\r\n")
                        .arg(n)
                        .arg(start)
                        .arg(n / 10 + 1)
                        .arg(end);
        }
    }
    return page;
}

bool waitFor(lumora::HtmlEditor* sender, auto signal, int timeoutMs) {
    QEventLoop loop;
    bool arrived = false;
    auto connection = QObject::connect(sender, signal, &loop, [&] {
        arrived = true;
        loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(connection);
    return arrived;
}

void BM_KeystrokeStoredIn100KBPage(benchmark::State& state) {
    QTemporaryDir folder;
    lumora::HtmlEditor editor;
    // With the formatting toolbar's state reported as the caret moves, as the main form has it.
    const bool toolbarState = state.range(0) != 0;
    editor.setReportsFormatState(toolbarState);
    QObject::connect(&editor, &lumora::HtmlEditor::formatStateChanged,
                     [](const QStringList& commands) { benchmark::DoNotOptimize(commands); });
    editor.resize(1024, 768);
    editor.show();
    const QString page = lessonPage(folder.path(), 100 * 1024);
    editor.setContent(page, {}, folder.path());
    if (!waitFor(&editor, &lumora::HtmlEditor::loaded, 30000)) {
        state.SkipWithError("the editor did not load");
        return;
    }
    // The caret in the middle of the page, where an author would be typing.
    editor.runJavaScript(
        "(() => { const ps = document.querySelectorAll('P');"
        " const p = ps[Math.floor(ps.length / 2)]; const r = document.createRange();"
        " r.setStart(p.firstChild, 5); r.collapse(true);"
        " getSelection().removeAllRanges(); getSelection().addRange(r); })()");

    const lumora::ContentPaths paths{folder.path().toStdString(), folder.path().toStdString()};
    QString pushed;
    QObject::connect(&editor, &lumora::HtmlEditor::contentChanged,
                     [&](const QString& html) { pushed = html; });

    double pushTotal = 0, contentTotal = 0;
    std::vector<double> totals;
    for (auto _ : state) {
        const auto typed = Clock::now();
        editor.runJavaScript("document.execCommand('insertText', false, 'x')");
        if (!waitFor(&editor, &lumora::HtmlEditor::contentChanged, 5000)) {
            state.SkipWithError("no contentChanged after a keystroke");
            return;
        }
        const auto arrived = Clock::now();
        std::string stored =
            lumora::toEditorHTML(lumora::normalizeHTML(pushed.toStdString()), paths);
        benchmark::DoNotOptimize(stored);
        const auto done = Clock::now();

        const double push = std::chrono::duration<double>(arrived - typed).count();
        const double content = std::chrono::duration<double>(done - arrived).count();
        pushTotal += push;
        contentTotal += content;
        totals.push_back(push + content);
        state.SetIterationTime(push + content);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["page_KB"] = static_cast<double>(pushed.toUtf8().size()) / 1024.0;
    state.counters["push_ms"] = 1000.0 * pushTotal / n;
    state.counters["content_ms"] = 1000.0 * contentTotal / n;
    // The first keystroke after loading pays for the engine's first layout of the page.
    state.counters["first_ms"] = 1000.0 * totals.front();
    // The tail matters to a typist more than the mean.
    std::sort(totals.begin(), totals.end());
    const auto percentile = [&](double p) {
        return 1000.0 *
               totals[static_cast<std::size_t>(p * static_cast<double>(totals.size() - 1))];
    };
    state.counters["p50_ms"] = percentile(0.50);
    state.counters["p95_ms"] = percentile(0.95);
    state.counters["max_ms"] = percentile(1.0);
    state.counters["over_16ms"] = static_cast<double>(
        std::count_if(totals.begin(), totals.end(), [](double t) { return t > 0.016; }));
}
BENCHMARK(BM_KeystrokeStoredIn100KBPage)
    ->ArgName("toolbar_state")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200);

} // namespace

int main(int argc, char** argv) {
    // Runs headless unless told otherwise, like the GUI tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (qEnvironmentVariableIsEmpty("QTWEBENGINE_CHROMIUM_FLAGS")) {
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox --disable-gpu");
    }
    lumora::registerLumoraSchemes();
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
