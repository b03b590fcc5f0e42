// What the term chooser, the Q&A chooser and the page link dialog share: a list of the open
// module's items, shown modeless over the main form, whose Insert puts a reference at the
// selection of the lesson page view in front (the design view, or the source view as text) and
// closes the dialog once it is in. A double-click on a row is Insert; a selection that cannot
// be replaced leaves the dialog open after its message.
#pragma once

#include "content/EditingText.h"
#include "forms/editor/EditingCommands.h"

#include <QDialog>
#include <QStringList>

#include <functional>
#include <string>

class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace lumora {

class MainForm;
class Session;

class InsertChooser : public QDialog {
    Q_OBJECT
  signals:
    // An insertion has completed, successfully or not (the dialog is then still open).
    void insertFinished(bool inserted);

  protected:
    InsertChooser(Session& session, MainForm& form, const char* formName, const QString& caption,
                  const char* listName, QWidget* parent);

    // The rows the list shows now, one per item of the module's list.
    virtual QStringList rows() const = 0;
    // Fills the list from rows(), with no row selected.
    void fillRows();
    // The selected row, -1 when no row is selected.
    int selectedRow() const;
    // A button in the column beside the list; the dialog connects its handler.
    QPushButton* addButton(const char* name, const QString& caption, const QString& tip);

    // The frame put around the page's selection: in the design view its links and formatting
    // come off and its formatting goes back around the result, in one step.
    void wrapIntoPage(const LinkFrame& frame, const std::string& failure);
    // The HTML put in place of the page's selection as it is.
    void insertIntoPage(const std::string& html, const std::string& failure);

    Session& session_;
    MainForm& form_;
    QListWidget* list_;

    // Coming back to the dialog after working in the main form refills the list when the
    // module's items have changed meanwhile, so a row never stands for another item.
    void changeEvent(QEvent* event) override;

  private:
    // Runs an inserting command on the page view in front, one at a time.
    void runInsert(const std::string& failure,
                   const std::function<void(QWidget*, EditingCommands::InsertDone)>& command);
    void finishInsert(QWidget* editor, bool inserted, const std::string& failure);

    QVBoxLayout* buttons_;
    bool inserting_ = false; // an insertion is under way: further clicks wait for it
};

} // namespace lumora
