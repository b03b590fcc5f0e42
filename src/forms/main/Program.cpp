// How the forms hand over to each other. Each chooser announces its outcome; the program shows
// the next form, so no form needs to know the others.
#include "forms/main/Program.h"

#include "app/Session.h"
#include "app/Startup.h"
#include "forms/dialogs/FolderChooser.h"
#include "forms/dialogs/SpellCheckDialog.h"
#include "forms/dialogs/SplashForm.h"
#include "forms/dialogs/StartChooser.h"
#include "forms/main/MainForm.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>

namespace lumora {

Program::Program(Session& session, QObject* parent) : QObject(parent), session_(session) {}

Program::~Program() {
    delete mainForm_;
    delete splash_;
    delete startChooser_;
    delete folderChooser_;
}

bool Program::start(const std::string& appPath, const std::string& workspace) {
    StartupOptions options;
    options.appPath = appPath;
    options.workspace = workspace;
    options.showSplash = [this] {
        splash_ = new SplashForm;
        connect(splash_, &SplashForm::finished, this, &Program::showStartChooser);
        splash_->show();
        // Painted at once: the spelling preparation that follows keeps the event loop waiting.
        QApplication::processEvents();
    };
    if (runStartup(session_, options) == StartupResult::Shutdown) {
        shutdown();
        return false;
    }
    return true;
}

void Program::showStartChooser() {
    if (shutDown_)
        return;
    auto* chooser = new StartChooser(session_);
    startChooser_ = chooser;
    if (!chooser->load()) {
        delete chooser;
        shutdown();
        return;
    }
    connect(chooser, &StartChooser::moduleOpened, this, &Program::showMainForm);
    connect(chooser, &StartChooser::editRequested, this, &Program::showFolderChooser);
    connect(chooser, &StartChooser::shutdownRequested, this, &Program::shutdown);
    chooser->show();
    if (onStartChooserShown) {
        auto announce = std::move(onStartChooserShown);
        onStartChooserShown = nullptr;
        announce();
    }
}

void Program::showFolderChooser() {
    if (folderChooser_) {
        folderChooser_->raise();
        folderChooser_->activateWindow();
        return;
    }
    auto* chooser = new FolderChooser(session_, mainForm_);
    folderChooser_ = chooser;
    connect(chooser, &FolderChooser::moduleOpened, this, &Program::showMainForm);
    connect(chooser, &FolderChooser::shutdownRequested, this, &Program::shutdown);
    if (mainForm_)
        chooser->setWindowModality(Qt::NonModal);
    // Over the form that asked for it (at start-up, the middle of the screen), ready for keys.
    const QRect over =
        mainForm_ ? mainForm_->frameGeometry() : chooser->screen()->availableGeometry();
    chooser->move(over.center() - chooser->rect().center());
    chooser->show();
    chooser->raise();
    chooser->activateWindow();
    chooser->resetPage();
}

void Program::showMainForm() {
    if (!mainForm_) {
        mainForm_ = new MainForm(session_);
        // Spell Check works through the checking dialog over the engine start-up prepared.
        if (SpellingEngine* engine = session_.spelling)
            mainForm_->setSpellingDialog(
                [engine](QWidget* parent, const std::string& block, bool html) {
                    return runSpellCheck(parent, *engine, block, html);
                });
        connect(mainForm_, &MainForm::openRequested, this, &Program::showFolderChooser);
        connect(mainForm_, &MainForm::exitConfirmed, this, &Program::shutdown);
    }
    mainForm_->show();
    mainForm_->raise();
    mainForm_->activateWindow();
    mainForm_->showLoadedModule();
}

void Program::shutdown() {
    if (shutDown_)
        return;
    shutDown_ = true;
    for (QWidget* form : std::initializer_list<QWidget*>{splash_, startChooser_, folderChooser_})
        if (form)
            form->close();
    if (mainForm_) {
        // The exit question was already answered (or never applies): close without asking.
        mainForm_->hide();
        mainForm_->deleteLater();
        mainForm_ = nullptr;
    }
    // Announced from the event loop, so a form that asked for the shutdown finishes first.
    QTimer::singleShot(0, this, &Program::finished);
}

} // namespace lumora
