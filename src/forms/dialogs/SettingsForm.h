// frmSettings: the program's own settings, kept in the platform's settings store. For now the
// one thing there is to set: the address of the online help.
#pragma once

#include <QDialog>

class QLineEdit;

namespace lumora {

// The settings key of the online help address; no value means none is configured.
inline constexpr const char* kOnlineHelpKey = "help/onlineUrl";

class SettingsForm : public QDialog {
    Q_OBJECT
  public:
    explicit SettingsForm(QWidget* parent = nullptr);

    // OK: keeps the address (an empty field removes it), then closes.
    void OKButton_Click();

  private:
    QLineEdit* txtOnlineHelp_;
};

} // namespace lumora
