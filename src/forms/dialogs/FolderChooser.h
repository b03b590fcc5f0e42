// frmChooseFolder: lists the module folders of the workspace with their type letters and opens
// the chosen one. Reached from the start chooser and from the main form's Open.
#pragma once

#include <QWidget>

class QListWidget;

namespace lumora {

class Session;

class FolderChooser : public QWidget {
    Q_OBJECT
  public:
    explicit FolderChooser(Session& session, QWidget* parent = nullptr);

    // Fills lstDirectories; callers show the form first, then call this.
    void resetPage();

    void OKButton_Click();
    void CancelButton_Click();

  signals:
    void moduleOpened();      // the chosen module is loaded; the chooser has closed
    void shutdownRequested(); // cancelled with no module open

  private:
    Session& session_;
    QListWidget* lstDirectories_;
};

} // namespace lumora
