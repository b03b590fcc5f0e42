// How long each editing command on a 100 KB lesson page takes, from the toolbar or menu
// handler to the command's result being stored in the module (the main form's commandFinished,
// which follows saveEditorContent). The real main form over a Lesson copied from the staged
// installation; each run first selects a word in the middle of the page (not timed).
#include "BenchLesson.h"
#include "app/Session.h"
#include "forms/FormDialogs.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/main/MainForm.h"
#include "platform/ProcessStarter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// Answers every question Yes and every address question with the same address.
class YesPrompt : public lumora::Prompt {
  public:
    using lumora::Prompt::message;
    lumora::Answer message(const std::string&, const std::string&, lumora::Icon, lumora::Buttons,
                           lumora::Answer) override {
        return lumora::Answer::Yes;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return "http://example.org/guide.html";
    }
};

class RedDialogs : public lumora::FormDialogs {
  public:
    QString openFile(QWidget*, const QString&) override { return {}; }
    std::optional<QColor> color(QWidget*, const QColor&) override { return QColor(Qt::red); }
};

QString lessonPage(int bytes) {
    QString page;
    for (int n = 0; page.size() < bytes; ++n) {
        page += QStringLiteral("<P>Paragraph %1 explains the <B>procedure</B> in <I>plain "
                               "words</I>, with a <A href=\"page%2.html\">link to page %2</A>."
                               "&nbsp;More text follows here.</P>\r\n")
                    .arg(n)
                    .arg(n % 12);
        if (n % 10 == 0)
            page += QStringLiteral(
                        "<TABLE border=1><TR><TD>cell</TD><TD>value %1</TD></TR></TABLE>\r\n")
                        .arg(n);
    }
    return page;
}

template <class Sender> bool waitFor(Sender* sender, auto signal, int timeoutMs) {
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

// One Lesson open in the main form, its first page 100 KB long.
struct OpenLesson {
    QTemporaryDir root;
    YesPrompt prompt;
    lumora::NullRegistry registry;
    lumora::PosixProcessStarter processes;
    lumora::Session session{prompt, registry, processes};
    RedDialogs dialogs;
    std::unique_ptr<lumora::MainForm> form;
    lumora::HtmlEditor* page = nullptr;

    bool open() {
        if (!lumora::bench::loadBenchLesson(session, root.path().toStdString()))
            return false;
        session.module.pages[0].content = lessonPage(100 * 1024).toStdString();
        form = std::make_unique<lumora::MainForm>(session);
        form->setDialogs(&dialogs);
        form->resize(1000, 720);
        form->show();
        page = form->findChild<lumora::HtmlEditor*>("dhtmlLessonEdit");
        form->showLoadedModule();
        return page->isLoaded() || waitFor(page, &lumora::HtmlEditor::loaded, 30000);
    }

    // The text of one paragraph, a different one each run, selected as the author would.
    void selectParagraph(int run) {
        bool done = false;
        page->runJavaScript(QStringLiteral("(() => { const ps = document.querySelectorAll('P');"
                                           " const r = document.createRange();"
                                           " r.selectNodeContents(ps[(%1 * 7) % ps.length]);"
                                           " getSelection().removeAllRanges();"
                                           " getSelection().addRange(r); })()")
                                .arg(run),
                            [&](const QVariant&) { done = true; });
        while (!done)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
};

void runCommand(benchmark::State& state, const std::function<void(lumora::MainForm&)>& command) {
    OpenLesson lesson;
    if (!lesson.open()) {
        state.SkipWithError("the lesson did not open");
        return;
    }
    QApplication::clipboard()->setText("pasted words");
    // The Edit menu acts on the page editor, as after a click into it.
    lesson.page->setFocus();
    lesson.form->setActiveEditor("dhtmlLessonEdit");
    std::vector<double> times;
    int run = 0;
    for (auto _ : state) {
        lesson.selectParagraph(run++);
        lesson.session.ModuleChanged = false;
        const auto started = Clock::now();
        QEventLoop loop;
        bool finished = false;
        auto connection =
            QObject::connect(lesson.form.get(), &lumora::MainForm::commandFinished, &loop, [&] {
                finished = true;
                loop.quit();
            });
        command(*lesson.form);
        if (!finished) {
            QTimer::singleShot(5000, &loop, &QEventLoop::quit);
            loop.exec();
        }
        QObject::disconnect(connection);
        const double seconds = std::chrono::duration<double>(Clock::now() - started).count();
        if (!finished || !lesson.session.ModuleChanged) {
            state.SkipWithError("the command did not reach the module");
            return;
        }
        times.push_back(seconds);
        state.SetIterationTime(seconds);
    }
    std::sort(times.begin(), times.end());
    const auto percentile = [&](double p) {
        return 1000.0 * times[static_cast<std::size_t>(p * static_cast<double>(times.size() - 1))];
    };
    state.counters["p50_ms"] = percentile(0.50);
    state.counters["p95_ms"] = percentile(0.95);
    state.counters["max_ms"] = percentile(1.0);
}

#define LUMORA_COMMAND_BENCHMARK(name, body)                                                       \
    void BM_##name(benchmark::State& state) {                                                      \
        runCommand(state, [](lumora::MainForm& form) { body; });                                   \
    }                                                                                              \
    BENCHMARK(BM_##name)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100)

QAbstractButton* buttonOf(lumora::MainForm& form, const char* name) {
    return form.findChild<QAbstractButton*>(name);
}

LUMORA_COMMAND_BENCHMARK(Bold, buttonOf(form, "btnBold")->click());
LUMORA_COMMAND_BENCHMARK(Center, buttonOf(form, "btnCenter")->click());
LUMORA_COMMAND_BENCHMARK(Indent, buttonOf(form, "btnIndentLesson")->click());
LUMORA_COMMAND_BENCHMARK(BulletList, buttonOf(form, "btnUList")->click());
LUMORA_COMMAND_BENCHMARK(FontSizeUp, form.btnFontSizeUp_Click());
LUMORA_COMMAND_BENCHMARK(FontColor, form.btnFontColor_Click());
LUMORA_COMMAND_BENCHMARK(ClearFormat, form.btnUnformatLesson_Click());
LUMORA_COMMAND_BENCHMARK(ExternalLink, form.btnLink_Click());
LUMORA_COMMAND_BENCHMARK(Cut, form.mnuCut_Click());
LUMORA_COMMAND_BENCHMARK(PasteUnformatted, form.mnuPasteUnformatted_Click());

} // namespace
