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

  private:
    void newModule(const char* type);

    Session& session_;
};

} // namespace lumora
