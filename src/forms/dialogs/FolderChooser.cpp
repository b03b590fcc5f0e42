// The folder chooser's list, legend and buttons.
#include "forms/dialogs/FolderChooser.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "forms/main/ModuleActions.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {

FolderChooser::FolderChooser(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Window), session_(session) {
    setObjectName("frmChooseFolder");
    setWindowTitle("Choose Folder");
    setAttribute(Qt::WA_DeleteOnClose);

    lstDirectories_ = new QListWidget(this);
    lstDirectories_->setObjectName("lstDirectories");
    lstDirectories_->setAccessibleName("Folders");
    connect(lstDirectories_, &QListWidget::itemDoubleClicked, this, &FolderChooser::OKButton_Click);

    auto* OKButton = new QPushButton("OK", this);
    OKButton->setObjectName("OKButton");
    OKButton->setToolTip("Open the content in the selected folder");
    OKButton->setDefault(true);
    // Enter on a focused button presses it; anywhere else in the form it presses OK.
    OKButton->setAutoDefault(true);
    connect(OKButton, &QPushButton::clicked, this, &FolderChooser::OKButton_Click);
    auto* CancelButton = new QPushButton("Cancel", this);
    CancelButton->setObjectName("CancelButton");
    CancelButton->setToolTip("Cancel without selecting a folder");
    CancelButton->setAutoDefault(true);
    connect(CancelButton, &QPushButton::clicked, this, &FolderChooser::CancelButton_Click);

    auto* frmLegend = new QGroupBox("Legend", this);
    frmLegend->setObjectName("frmLegend");
    auto* legend = new QVBoxLayout(frmLegend);
    const char* names[] = {"lblLesson", "lblEval", "lblSurvey"};
    const char* captions[] = {"(L) Lesson", "(E) Evaluation", "(S) Survey"};
    for (int i = 0; i < 3; ++i) {
        auto* label = new QLabel(captions[i], frmLegend);
        label->setObjectName(names[i]);
        legend->addWidget(label);
    }

    auto* side = new QVBoxLayout;
    side->addWidget(OKButton);
    side->addWidget(CancelButton);
    side->addStretch();
    side->addWidget(frmLegend);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(lstDirectories_, 1);
    layout->addLayout(side);
    resize(420, 300);
    lstDirectories_->setFocus();
}

void FolderChooser::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        OKButton_Click();
        return;
    case Qt::Key_Escape:
        CancelButton_Click();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void FolderChooser::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    // Closed at start-up (Cancel, Escape or the close box) there is nothing left to show.
    if (!opened_ && session_.module.moduleType.empty())
        emit shutdownRequested();
}

void FolderChooser::resetPage() {
    for (const std::string& entry : listModuleFolders(session_.WorkspaceFolder))
        lstDirectories_->addItem(QString::fromStdString(entry));
}

void FolderChooser::OKButton_Click() {
    QListWidgetItem* current = lstDirectories_->currentItem();
    std::string text =
        current && current->isSelected() ? current->text().toStdString() : std::string();
    // A folder that cannot be read leaves the chooser open on the module that was open before.
    if (!replaceModuleGuarded(session_, [&] { return OpenModuleEntry(session_, text); }))
        return;
    opened_ = true;
    close();
    emit moduleOpened();
}

void FolderChooser::CancelButton_Click() {
    close();
}

} // namespace lumora
