// frmColors: the ten colours of the module's player pages, shown as a miniature page whose
// labels are painted in the colours they stand for. Clicking a label picks its colour through
// the colour dialog. The dialog edits the module's scheme in place and keeps a copy taken when
// it opened: Save writes the stylesheet at once and keeps the scheme; every other way of
// closing puts the copy back. Pairs of text and background that read poorly are named below
// the miniature, without refusing them.
#pragma once

#include "storage/CourseModule.h"

#include <QColor>
#include <QDialog>

#include <string>
#include <utility>
#include <vector>

class QLabel;

namespace lumora {

class ColorLabel;
class FormDialogs;
class Session;

class ColorsForm : public QDialog {
    Q_OBJECT
  public:
    ColorsForm(Session& session, FormDialogs& dialogs, QWidget* parent = nullptr);

    // Paints every label from the module's scheme and says which pairs read poorly.
    void resetColors();

    // Picks the colour of one field through the colour dialog; a cancelled dialog changes
    // nothing.
    void pickColor(std::string ColorScheme::*key);

    void btnDefaultColors_Click();
    void btnSave_Click();
    void CancelButton_Click();

  protected:
    // Every way of closing but Save ends here with the copy put back.
    void done(int result) override;

  private:
    ColorLabel* addLabel(QWidget* parent, const char* name, const QString& caption,
                         std::string ColorScheme::*key, bool background, const QString& tip = {});

    Session& session_;
    FormDialogs& dialogs_;
    ColorScheme saved_;
    // The colour the picker shows when the field's colour is black (or unreadable): the one
    // it showed last.
    QColor dialogColor_{Qt::black};
    std::vector<std::pair<ColorLabel*, std::string ColorScheme::*>> labels_;
    QLabel* lblContrast_ = nullptr;
};

} // namespace lumora
