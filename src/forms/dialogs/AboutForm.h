// frmAbout: the program's title, version, the spelling dictionaries in use and the way to the
// system information tool.
#pragma once

#include <QDialog>

#include <string>

namespace lumora {

class Session;

// "Standard", "Legal", "Medical" for the dictionaries present in the spelling folder, in that
// order, joined by ", ".
std::string lexiconNames(const std::string& spellingFolder);

class AboutForm : public QDialog {
    Q_OBJECT
  public:
    explicit AboutForm(Session& session, QWidget* parent = nullptr);

    void cmdSysInfo_Click();

  private:
    Session& session_;
};

} // namespace lumora
