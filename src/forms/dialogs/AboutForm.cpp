// The About box.
#include "forms/dialogs/AboutForm.h"

#include "app/Session.h"
#include "app/Startup.h"
#include "forms/dialogs/Pictures.h"
#include "storage/Paths.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <filesystem>

namespace lumora {

std::string lexiconNames(const std::string& spellingFolder) {
    // The same files the spelling preparation looks for, one per set.
    const std::pair<const char*, const char*> sets[] = {
        {"en_US.dic", "Standard"}, {"legal.dic", "Legal"}, {"en_med_glut.dic", "Medical"}};
    std::string names;
    for (const auto& [file, name] : sets) {
        std::error_code ec;
        if (!std::filesystem::exists(fsPath(joinPath(spellingFolder, file)), ec))
            continue;
        if (!names.empty())
            names += ", ";
        names += name;
    }
    return names;
}

AboutForm::AboutForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName("frmAbout");
    setWindowTitle("About Lumora");

    auto* imgLogo = new QLabel(this);
    imgLogo->setObjectName("imgLogo");
    imgLogo->setPixmap(logoPicture(96));
    imgLogo->setAccessibleName("Lumora logo");
    imgLogo->setAlignment(Qt::AlignTop);
    auto* imgTitle = new QLabel(this);
    imgTitle->setPixmap(titlePicture(360));
    auto* description = new QLabel(kProgramDescription, this);
    description->setWordWrap(true);
    auto* version = new QLabel("Version " + QCoreApplication::applicationVersion(), this);
    version->setObjectName("lblVersion");
    auto* lblLexicon = new QLabel(this);
    lblLexicon->setObjectName("lblLexicon");
    std::string names = lexiconNames(session.spellingFolder);
    lblLexicon->setText("Spelling dictionaries: " +
                        (names.empty() ? QString("none") : QString::fromStdString(names)));

    auto* cmdOK = new QPushButton("OK", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    auto* cmdSysInfo = new QPushButton("&System Info...", this);
    cmdSysInfo->setObjectName("cmdSysInfo");
    connect(cmdSysInfo, &QPushButton::clicked, this, &AboutForm::cmdSysInfo_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);
    auto* texts = new QVBoxLayout;
    texts->addWidget(imgTitle);
    texts->addWidget(description);
    texts->addWidget(version);
    texts->addWidget(lblLexicon);
    auto* picture = new QHBoxLayout;
    picture->setSpacing(16);
    picture->addWidget(imgLogo);
    picture->addLayout(texts);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(picture);
    layout->addLayout(buttons);
}

void AboutForm::cmdSysInfo_Click() {
    startSystemInfo(session_);
}

} // namespace lumora
