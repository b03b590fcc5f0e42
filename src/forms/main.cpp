// The desktop program: start-up with the splash, then the start chooser and the forms that
// follow it. `lumora --workspace DIR` (or LUMORA_WORKSPACE) keeps the modules elsewhere (by
// default MyContent beside the program, or Lumora in the documents folder when installed);
// `--measure-startup` prints the milliseconds from start to a usable start chooser, with the
// splash's wait left out, and ends.
#include "app/Installation.h"
#include "app/Session.h"
#include "forms/QtPrompt.h"
#include "forms/dialogs/Pictures.h"
#include "forms/dialogs/SplashForm.h"
#include "forms/main/Program.h"
#include "forms/web/LumoraScheme.h"
#include "platform/HunspellEngine.h"
#include "platform/ProcessStarter.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

struct Arguments {
    std::string workspace;
    bool measureStartup = false;
};

Arguments parseArguments(const QStringList& args) {
    Arguments parsed;
    if (const char* env = std::getenv("LUMORA_WORKSPACE"))
        parsed.workspace = env;
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == "--workspace" && i + 1 < args.size())
            parsed.workspace = QDir(args[++i]).absolutePath().toStdString();
        else if (args[i].startsWith("--workspace="))
            parsed.workspace = QDir(args[i].section('=', 1)).absolutePath().toStdString();
        else if (args[i] == "--measure-startup")
            parsed.measureStartup = true;
    }
    return parsed;
}

} // namespace

int main(int argc, char** argv) {
    const auto started = std::chrono::steady_clock::now();
    lumora::registerLumoraSchemes();
    QApplication app(argc, argv);
    QApplication::setOrganizationName("Lumora");
    QApplication::setApplicationName("Lumora");
    QApplication::setApplicationVersion("1.0");
    // The desktop entry this program is started from, so a desktop shows its icon and name.
    QGuiApplication::setDesktopFileName("org.lumora.Lumora");
    QApplication::setWindowIcon(lumora::programIcon());
    // Between the splash and the next form no window is open; the program ends only when its
    // own shutdown says so.
    QApplication::setQuitOnLastWindowClosed(false);
    const Arguments args = parseArguments(QApplication::arguments());

    lumora::QtPrompt prompt;
    lumora::NullRegistry registry;
    lumora::PosixProcessStarter processes;
    lumora::HunspellEngine spelling;
    lumora::Session session(prompt, registry, processes, &spelling);

    lumora::Program program(session);
    QObject::connect(&program, &lumora::Program::finished, &app, &QApplication::quit);

    if (args.measureStartup) {
        program.onStartChooserShown = [started] {
            // Measured once the chooser has been painted and the event loop is idle again.
            QTimer::singleShot(0, [started] {
                auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                              std::chrono::steady_clock::now() - started)
                              .count();
                std::printf("start chooser shown after %lld ms\n", static_cast<long long>(ms));
                std::fflush(stdout);
                QApplication::quit();
            });
        };
    }

    const lumora::Installation installation =
        lumora::findInstallation(QApplication::applicationDirPath().toStdString());
    const std::string documents =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    const std::string workspace = lumora::chooseWorkspace(args.workspace, installation, documents);
    if (installation.systemWide) {
        // The words the author adds cannot go into the installed folder: keep them in theirs.
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        spelling.setUserDictionary((data + "/lumora/userdic.dic").toStdString());
    }
    if (!program.start(installation.appPath, workspace))
        return 0;
    if (args.measureStartup && program.splash()) {
        // The splash's wait is not part of the start-up time: hand over at once.
        program.splash()->timer().setInterval(0);
    }
    return app.exec();
}
