// frmFont: sets the font face of the selection in the main form's current editor. Shown
// window-modal over the main form; its font list preselects the selection's font, and stays
// empty for a selection of several fonts.
#pragma once

#include <QDialog>

#include <functional>

namespace lumora {

class EditingCommands;
class HtmlEditor;
class Prompt;
class SimpleComboBox;

class FontForm : public QDialog {
    Q_OBJECT
  public:
    // `applied` runs once the font is on the selection and stored.
    FontForm(EditingCommands& commands, HtmlEditor* editor, Prompt& prompt,
             std::function<void()> applied, QWidget* parent = nullptr);

    // Fills lstFonts with the installed families and puts the selection's font in its box
    // once the editor has answered.
    void resetPage();

    void OKButton_Click();
    void CancelButton_Click();

  signals:
    // The selection's font is in the box (empty for a mixed selection).
    void pageReset();

  private:
    EditingCommands& commands_;
    HtmlEditor* editor_;
    Prompt& prompt_;
    std::function<void()> applied_;
    SimpleComboBox* lstFonts_;
};

} // namespace lumora
