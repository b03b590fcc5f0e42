// lumora-help-shots: the help's pictures, taken from the real forms. It starts the program over
// the staged installation with a workspace of its own, opens the sample modules and grabs each
// form as the table below describes. Run it under a virtual screen through
// tools/help-screenshots.sh, which also makes the files small.
//   lumora-help-shots DIST OUT_DIR
// A shot whose trigger or form does not exist (yet) is skipped with a note, so the table may
// name forms before they are built; a missing picture is never written.
#include "app/Session.h"
#include "forms/main/MainForm.h"
#include "forms/main/Program.h"
#include "forms/web/LumoraScheme.h"
#include "platform/ProcessStarter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>

namespace fs = std::filesystem;
using namespace lumora;

namespace {

// One picture: the module open in the main form (none: the start choosers), the main form's tab
// shown, what is pressed (an action or a button of the main form, by objectName; or the folder
// chooser) and the top-level form grabbed once it is on screen.
struct Shot {
    const char* file;
    const char* moduleType; // nullptr: before any module is open
    int tab;                // tabMain's tab, -1 to leave it
    const char* trigger;    // nullptr: nothing pressed
    const char* form;
    int settleMs; // time for web views to draw their pages
};

// To add a picture: add a row, then name the file in docs/help/help.txt.
// frmColors (Color Scheme), frmTermChoose, frmQAndAChoose and frmPageLink are grabbed as soon
// as the program has them.
const Shot kShots[] = {
    {"start-chooser.png", nullptr, -1, nullptr, "frmOpenChoose", 300},
    {"folder-chooser.png", nullptr, -1, "folderChooser", "frmChooseFolder", 300},
    {"main-form-pages.png", "Lesson", 0, nullptr, "frmMain", 3000},
    {"main-form-qanda.png", "Lesson", 1, nullptr, "frmMain", 2500},
    {"main-form-glossary.png", "Lesson", 2, nullptr, "frmMain", 500},
    {"color-scheme.png", "Lesson", 0, "mnuColors", "frmColors", 500},
    {"term-chooser.png", "Lesson", 0, "btnInsertTerm", "frmTermChoose", 500},
    {"page-link.png", "Lesson", 0, "Command1", "frmPageLink", 500},
    {"find-replace.png", "Lesson", 0, "mnuFind", "frmFind", 500},
    {"preview.png", "Lesson", 0, "btnPreview", "frmPreview", 4000},
    {"export-package.png", "Lesson", 0, "mnuExportPackage", "frmExportPackage", 300},
    {"main-form-evaluation.png", "Evaluation", 1, nullptr, "frmMain", 2500},
    {"main-form-survey.png", "Survey", 1, nullptr, "frmMain", 2500},
};

// Every message is answered No or Cancel (nothing is changed by a shot) and shown on stderr,
// since a message in the middle of a shot means the shot is wrong.
class ShotPrompt : public Prompt {
  public:
    Answer message(const std::string& text, const std::string& title, Icon, Buttons buttons,
                   Answer) override {
        std::cerr << "message \"" << title << "\": " << text << '\n';
        return buttons == Buttons::YesNo ? Answer::No : Answer::OK;
    }
    std::optional<std::string> input(const std::string& prompt, const std::string&,
                                     const std::string&) override {
        std::cerr << "question: " << prompt << '\n';
        return std::nullopt;
    }
};

void wait(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QWidget* visibleForm(const QString& name) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == name && w->isVisible())
            return w;
    return nullptr;
}

// What the screen shows of the form (web views included); the widget's own rendering where
// the platform has no screen to read.
QImage capture(QWidget* form) {
    QPixmap shot;
    if (QScreen* screen = form->screen(); screen && QGuiApplication::platformName() == "xcb")
        shot = screen->grabWindow(form->winId());
    if (shot.isNull())
        shot = form->grab();
    return shot.toImage();
}

// Presses `press` (may run a dialog's own event loop) and grabs `formName` once it has been on
// screen for `settleMs`; a form that the press opened is closed again after the grab.
QImage grabAfter(const QString& formName, const std::function<void()>& press, int settleMs,
                 bool closeAfter) {
    QImage image;
    bool done = false;
    int waited = 0, shownFor = -1;
    QTimer poll;
    poll.setInterval(100);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        waited += 100;
        QWidget* form = visibleForm(formName);
        if (form && shownFor < 0)
            shownFor = 0;
        else if (form)
            shownFor += 100;
        if (form && shownFor >= settleMs) {
            image = capture(form);
            poll.stop();
            done = true;
            if (closeAfter)
                form->close();
        } else if (waited > 8000) {
            poll.stop();
            done = true;
        }
    });
    poll.start();
    if (press)
        press();
    while (!done)
        wait(50);
    return image;
}

// An action or button of the main form by objectName, pressed; false when there is none.
std::function<void()> pressOf(MainForm* form, const QString& name) {
    if (auto* action = form->findChild<QAction*>(name))
        return [action] { action->trigger(); };
    if (auto* button = form->findChild<QAbstractButton*>(name))
        return [button] { button->click(); };
    return {};
}

} // namespace

int main(int argc, char** argv) {
    registerLumoraSchemes();
    QApplication app(argc, argv);
    QApplication::setOrganizationName("Lumora");
    QApplication::setApplicationName("LumoraHelpShots");
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 3) {
        std::cerr << "usage: lumora-help-shots DIST OUT_DIR\n";
        return 2;
    }
    const fs::path dist = fs::absolute(argv[1]);
    const fs::path out = fs::absolute(argv[2]);
    QTemporaryDir root;
    const fs::path workspace = fs::path(root.path().toStdString()) / "MyContent";
    fs::create_directories(workspace);
    for (const char* type : {kLesson, kEvaluation, kSurvey})
        fs::copy(dist / "Templates" / type, workspace / (std::string("Sample_") + type),
                 fs::copy_options::recursive);

    ShotPrompt prompt;
    NullRegistry registry;
    PosixProcessStarter processes;
    Session session(prompt, registry, processes);
    Program program(session);
    if (!program.start(dist.string(), workspace.string()))
        return 1;
    program.splash()->finish();

    std::string openType;
    int written = 0;
    for (const Shot& shot : kShots) {
        if (shot.moduleType && openType != shot.moduleType) {
            session.ResetModule();
            session.module.moduleType = shot.moduleType;
            session.module.folderName = std::string("Sample_") + shot.moduleType;
            if (!session.LoadModule())
                return 1;
            openType = shot.moduleType;
            // The choosers step aside as they do once a module is open.
            for (QWidget* chooser :
                 std::initializer_list<QWidget*>{program.startChooser(), program.folderChooser()})
                if (chooser)
                    chooser->hide();
            program.showMainForm();
        }
        MainForm* main = program.mainForm();
        if (main && shot.tab >= 0)
            if (auto* tabs = main->findChild<QTabWidget*>("tabMain"))
                tabs->setCurrentIndex(shot.tab);

        std::function<void()> press;
        if (shot.trigger && std::string(shot.trigger) == "folderChooser")
            press = [&program] { program.showFolderChooser(); };
        else if (shot.trigger)
            press = main ? pressOf(main, shot.trigger) : nullptr;
        if (shot.trigger && !press) {
            std::cout << "skipped " << shot.file << ": no " << shot.trigger << '\n';
            continue;
        }
        const bool opens = shot.trigger && std::string(shot.form) != "frmMain";
        const bool chooser = std::string(shot.form) == "frmChooseFolder";
        const QImage image = grabAfter(shot.form, press, shot.settleMs, opens && !chooser);
        if (image.isNull()) {
            std::cout << "skipped " << shot.file << ": no " << shot.form << " on screen\n";
            continue;
        }
        image.save(QString::fromStdString((out / shot.file).string()));
        std::cout << "took " << shot.file << " (" << image.width() << "x" << image.height()
                  << ")\n";
        ++written;
    }
    program.shutdown();
    return written > 0 ? 0 : 1;
}
