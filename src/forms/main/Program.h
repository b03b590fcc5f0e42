// The desktop program's flow between its forms: start-up with the splash, the start chooser,
// the folder chooser, the main form, and the shutdown that ends it all. main() creates one;
// tests create one per case over a scripted session.
#pragma once

#include "forms/dialogs/FolderChooser.h"
#include "forms/dialogs/SplashForm.h"
#include "forms/dialogs/StartChooser.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <string>

namespace lumora {

class MainForm;
class Session;

class Program : public QObject {
    Q_OBJECT
  public:
    explicit Program(Session& session, QObject* parent = nullptr);
    ~Program() override;

    // Runs the start-up routine with the splash. False when start-up ended the program (no
    // templates, no version marker); the splash then never showed.
    bool start(const std::string& appPath, const std::string& workspace);

    // The splash's successor: the start chooser, after its workspace check.
    void showStartChooser();
    void showFolderChooser();
    // A module was created or opened: the main form shows it.
    void showMainForm();
    // Unloads every form; finished() follows once.
    void shutdown();

    bool isShutDown() const { return shutDown_; }
    SplashForm* splash() const { return splash_; }
    StartChooser* startChooser() const { return startChooser_; }
    FolderChooser* folderChooser() const { return folderChooser_; }
    MainForm* mainForm() const { return mainForm_; }

    // Called once when the start chooser is first on screen (the start-up measurement).
    std::function<void()> onStartChooserShown;

  signals:
    void finished();

  private:
    Session& session_;
    QPointer<SplashForm> splash_;
    QPointer<StartChooser> startChooser_;
    QPointer<FolderChooser> folderChooser_;
    MainForm* mainForm_ = nullptr;
    bool shutDown_ = false;
};

} // namespace lumora
