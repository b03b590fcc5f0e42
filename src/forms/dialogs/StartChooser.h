// frmOpenChoose: the first form after the splash. Edit existing content, or make a new Lesson,
// Evaluation or Survey from its template.
#pragma once

#include <QWidget>

namespace lumora {

class Session;

class StartChooser : public QWidget {
    Q_OBJECT
  public:
    explicit StartChooser(Session& session, QWidget* parent = nullptr);

    // Form_Load: makes sure the workspace exists. False when the author refused to create it
    // and the program has to end.
    bool load();

    void imgEdit_Click();
    void imgNewLesson_Click();
    void imgNewEval_Click();
    void imgNewSurvey_Click();

  signals:
    void moduleOpened();  // a new module was created and loaded; the chooser has closed
    void editRequested(); // the folder chooser is wanted; the chooser has closed
    // Closed without a choice (close box, Escape) while no module is open: nothing is left
    // for the program to show.
    void shutdownRequested();

  protected:
    // Enter presses the picture button that has the focus; Escape closes the chooser.
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void newModule(const char* type);
    void handOver();

    Session& session_;
    bool handedOver_ = false; // closed because a choice was made
};

} // namespace lumora
