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
    void shutdownRequested(); // cancelled or closed with no module open

  protected:
    // Enter opens the selected folder (OK is the default button); Escape cancels.
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    Session& session_;
    QListWidget* lstDirectories_;
    bool opened_ = false; // closed because a module was opened
};

} // namespace lumora
