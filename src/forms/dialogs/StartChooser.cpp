// The start chooser's four picture buttons and the workspace check made when it opens.
#include "forms/dialogs/StartChooser.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "forms/dialogs/Pictures.h"
#include "forms/main/ModuleActions.h"
#include "storage/CourseModule.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace lumora {

namespace {

QToolButton* pictureButton(QWidget* parent, const char* name, const QString& caption,
                           const QString& tip, ChooserPicture picture) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(caption);
    button->setToolTip(tip);
    button->setIcon(QIcon(chooserPicture(picture, 64)));
    button->setIconSize(QSize(64, 64));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setAutoRaise(true);
    button->setMinimumSize(128, 104);
    return button;
}

} // namespace

StartChooser::StartChooser(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Window), session_(session) {
    setObjectName("frmOpenChoose");
    setWindowTitle("Lumora");
    setAttribute(Qt::WA_DeleteOnClose);

    auto* banner = new QLabel(this);
    banner->setPixmap(titlePicture(520));
    banner->setAlignment(Qt::AlignCenter);

    auto* imgEdit = pictureButton(this, "imgEdit", "Edit Existing Content",
                                  "Open a module in the MyContent folder", ChooserPicture::Edit);
    auto* imgNewLesson = pictureButton(this, "imgNewLesson", "New Lesson", "Create a new Lesson",
                                       ChooserPicture::Lesson);
    auto* imgNewEval = pictureButton(this, "imgNewEval", "New Evaluation",
                                     "Create a new Evaluation", ChooserPicture::Evaluation);
    auto* imgNewSurvey = pictureButton(this, "imgNewSurvey", "New Survey", "Create a new Survey",
                                       ChooserPicture::Survey);
    connect(imgEdit, &QToolButton::clicked, this, &StartChooser::imgEdit_Click);
    connect(imgNewLesson, &QToolButton::clicked, this, &StartChooser::imgNewLesson_Click);
    connect(imgNewEval, &QToolButton::clicked, this, &StartChooser::imgNewEval_Click);
    connect(imgNewSurvey, &QToolButton::clicked, this, &StartChooser::imgNewSurvey_Click);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->addWidget(banner, 0, 0, 1, 4);
    layout->addWidget(imgEdit, 1, 0);
    layout->addWidget(imgNewLesson, 1, 1);
    layout->addWidget(imgNewEval, 1, 2);
    layout->addWidget(imgNewSurvey, 1, 3);
    // Keys work from the start: Tab moves between the pictures, Enter presses one.
    imgEdit->setFocus();
}

void StartChooser::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* focused = qobject_cast<QAbstractButton*>(focusWidget())) {
            focused->click();
            return;
        }
    } else if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void StartChooser::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (!handedOver_ && session_.module.moduleType.empty())
        emit shutdownRequested();
}

void StartChooser::handOver() {
    handedOver_ = true;
    close();
}

bool StartChooser::load() {
    return EnsureWorkspace(session_);
}

void StartChooser::imgEdit_Click() {
    if (countSubfolders(session_.WorkspaceFolder) < 1) {
        session_.prompt.message(std::string("You have not created any custom content.") + kCrLf +
                                    "Please Create a Lesson, Evaluation, or Survey.",
                                "Error", Icon::Critical, Buttons::OK);
        return;
    }
    handOver();
    emit editRequested();
}

void StartChooser::imgNewLesson_Click() {
    newModule(kLesson);
}
void StartChooser::imgNewEval_Click() {
    newModule(kEvaluation);
}
void StartChooser::imgNewSurvey_Click() {
    newModule(kSurvey);
}

void StartChooser::newModule(const char* type) {
    bool created = replaceModuleGuarded(session_, [&] { return NewModuleFolder(session_, type); });
    if (!created)
        return;
    handOver();
    emit moduleOpened();
}

} // namespace lumora
