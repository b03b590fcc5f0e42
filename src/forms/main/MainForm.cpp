// The main form's frame and the life of the open module: new, open, save, save as, preview,
// help, About and exit, with the save and exit questions.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "app/Workspace.h"
#include "forms/FitCaptions.h"
#include "forms/dialogs/AboutForm.h"
#include "forms/dialogs/ExportPackageDialog.h"
#include "forms/dialogs/FindForm.h"
#include "forms/dialogs/FontForm.h"
#include "forms/dialogs/SettingsForm.h"
#include "forms/dialogs/WebViewerForm.h"
#include "forms/main/ListTexts.h"
#include "forms/main/ModuleActions.h"
#include "platform/PackageExport.h"

#include <QAbstractEventDispatcher>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QTime>
#include <QVBoxLayout>

namespace lumora {

MainForm::MainForm(Session& session, QWidget* parent)
    : QMainWindow(parent), session_(session), editing_(session.prompt, [this](QWidget* editor) {
          saveEditorContent(editor->objectName());
      }) {
    setObjectName("frmMain");
    setWindowTitle("Lumora");
    buildMenus();

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(8, 6, 8, 8);
    layout->addWidget(buildHeader());
    tabMain_ = new QTabWidget(central);
    tabMain_->setObjectName("tabMain");
    tabMain_->addTab(buildPagesTab(), "Pages");
    tabMain_->addTab(buildQuestionsTab(), "Questions");
    tabMain_->addTab(buildGlossaryTab(), "Glossary");
    connect(tabMain_, &QTabWidget::currentChanged, this, &MainForm::resetPage);
    layout->addWidget(tabMain_, 1);
    setCentralWidget(central);
    connectFields();

    // The hidden animation: a label without a caption in the form's lower right corner.
    lblEgg_ = new QLabel(central);
    lblEgg_->setObjectName("lblEgg");
    lblEgg_->setFont(QFont("DejaVu Sans Mono", 8));
    lblEgg_->setCursor(Qt::ArrowCursor);
    lblEgg_->installEventFilter(this);
    tmrEgg_.setObjectName("tmrEgg");
    tmrEgg_.setInterval(150);
    connect(&tmrEgg_, &QTimer::timeout, this, &MainForm::tmrEgg_Timer);

    buildStatusBar();
    makeKeyboardReady();
    letButtonsShrinkToCaptions(this);
}

MainForm::~MainForm() = default;

// --- new and open --------------------------------------------------------------------------

bool MainForm::CheckSave() {
    if (!session_.ModuleChanged)
        return true;
    if (!session_.prompt.ask("Do you want to save your changes?", "Save", Icon::Question))
        return true;
    return SaveModule();
}

void MainForm::newModule(const char* type) {
    // A failed save keeps the author on the changed module rather than dropping the edits.
    if (!CheckSave())
        return;
    if (replaceModuleGuarded(session_, [&] { return NewModuleFolder(session_, type); }))
        showLoadedModule();
}

void MainForm::mnuNewLesson_Click() {
    newModule(kLesson);
}
void MainForm::mnuNewEval_Click() {
    newModule(kEvaluation);
}
void MainForm::mnuNewSurvey_Click() {
    newModule(kSurvey);
}

void MainForm::mnuOpen_Click() {
    if (!CheckSave())
        return;
    emit openRequested();
}

// --- saving --------------------------------------------------------------------------------

bool MainForm::SaveModule() {
    saveEditorContent(activeEditor_);
    bool saved = reportFileErrors(session_.prompt, [&] { session_.SaveModule(); });
    // The files no longer hold what the author sees: keep the module marked as changed.
    if (!saved)
        session_.markChanged();
    else
        showSaved();
    refreshChangedMark();
    return saved;
}

// --- status bar ----------------------------------------------------------------------------

void MainForm::buildStatusBar() {
    lblSaveState_ = new QLabel(statusBar());
    lblSaveState_->setObjectName("lblSaveState");
    lblUnsavedChanges_ = new QLabel(statusBar());
    lblUnsavedChanges_->setObjectName("lblUnsavedChanges");
    statusBar()->addWidget(lblSaveState_, 1);
    statusBar()->addPermanentWidget(lblUnsavedChanges_);
    // ModuleChanged is a plain flag that every edit of every form sets, so the mark follows it
    // whenever the event loop has finished its work, rather than each edit telling the form.
    auto* loop = QAbstractEventDispatcher::instance();
    connect(loop, &QAbstractEventDispatcher::aboutToBlock, this, &MainForm::refreshChangedMark);
    connect(loop, &QAbstractEventDispatcher::awake, this, &MainForm::refreshChangedMark);
}

void MainForm::showSaved() {
    const QString saved = session_.module.useSCORM == "true"
                              ? QStringLiteral("Saved for SCORM/AICC")
                              : QStringLiteral("Saved (non-SCORM/AICC)");
    lblSaveState_->setText(saved + " at " +
                           QLocale().toString(QTime::currentTime(), QLocale::ShortFormat));
}

void MainForm::refreshChangedMark() {
    if (session_.ModuleChanged == changedShown_)
        return;
    changedShown_ = session_.ModuleChanged;
    lblUnsavedChanges_->setText(changedShown_ ? QStringLiteral("Unsaved changes") : QString());
}

bool MainForm::saveWith(bool scorm) {
    session_.module.useSCORM = scorm ? "true" : "false";
    return SaveModule();
}

void MainForm::mnuSave_Click() {
    saveWith(true);
}

void MainForm::mnuSaveNonSCORM_Click() {
    saveWith(false);
}

void MainForm::mnuSaveAs_Click() {
    saveEditorContent(activeEditor_);
    // Save As always saves with SCORM, into the copy it has just made.
    if (replaceModuleGuarded(session_, [&] { return SaveModuleAs(session_); }))
        mnuSave_Click();
}

// --- package export ----------------------------------------------------------------------

void MainForm::mnuExportPackage_Click() {
    ExportPackageDialog dialog(session_, this);
    if (dialog.exec() == QDialog::Accepted)
        exportPackageTo(dialog.packagePath(), dialog.options());
}

bool MainForm::exportPackageTo(const QString& zipPath, const PackageOptions& options) {
    // The package holds the files on disk, so they must hold what the author sees; an LMS
    // package is always saved for SCORM/AICC, and carries the identity a save gives it.
    if (session_.ModuleChanged || session_.module.useSCORM != "true" ||
        !packageIdentity(session_.module)) {
        if (!session_.prompt.ask(std::string("The module must be saved for SCORM/AICC first.") +
                                     kCrLf + "Would you like to save it now?",
                                 "Export Package", Icon::Question))
            return false;
        if (!saveWith(true))
            return false;
    }
    const std::string path = zipPath.toStdString();
    if (packagePathInsideModule(path, session_.module.ModuleFolder)) {
        session_.prompt.error(
            "The package cannot be written inside the module folder:" + std::string(kCrLf) + path);
        return false;
    }
    std::vector<std::string> problems;
    if (!reportFileErrors(session_.prompt,
                          [&] { problems = exportModulePackage(session_.module, path, options); }))
        return false;
    if (!problems.empty()) {
        std::string text = "The package was not written. An LMS would refuse it:";
        for (const std::string& problem : problems)
            text += kCrLf + std::string("     ") + problem;
        session_.prompt.error(text);
        return false;
    }
    session_.prompt.message("The package was written to:" + std::string(kCrLf) + path,
                            "Export Package", Icon::Information, Buttons::OK);
    return true;
}

// --- preview and help ----------------------------------------------------------------------

void MainForm::btnPreview_Click() {
    if (session_.ModuleChanged) {
        bool save = session_.prompt.ask(std::string("You must Save your changes first.") + kCrLf +
                                            "Would you like to save your changes?",
                                        "Save", Icon::Information);
        if (!save)
            return;
        // Previewed without a SCORM run-time; a failed save previews nothing.
        if (!saveWith(false))
            return;
    }
    if (!frmPreview_)
        frmPreview_ = new PreviewForm(session_, this);
    frmPreview_->show();
    frmPreview_->raise();
    frmPreview_->refreshPreview();
}

void MainForm::showHelp(const char* helpLocation) {
    if (!frmHelp_)
        frmHelp_ = new HelpForm(session_, this);
    frmHelp_->show();
    frmHelp_->raise();
    frmHelp_->refreshBrowser(helpLocation);
}

void MainForm::mnuSettings_Click() {
    // Window-modal without a nested event loop; the dialog deletes itself when closed.
    auto* settings = new SettingsForm(this);
    settings->setAttribute(Qt::WA_DeleteOnClose);
    settings->open();
}

void MainForm::mnuHelpContents_Click() {
    showHelp("offline");
}

void MainForm::mnuHelpOnline_Click() {
    showHelp("online");
}

void MainForm::mnuAbout_Click() {
    AboutForm about(session_, this);
    about.exec();
}

// --- exit ----------------------------------------------------------------------------------

void MainForm::mnuExit_Click() {
    close();
}

void MainForm::closeEvent(QCloseEvent* event) {
    if (!exiting_) {
        // Exit asks only this: unsaved changes are dropped without a second question, so a
        // stray Enter must not be the answer that drops them.
        if (!session_.prompt.ask("Are you sure you wish to exit?", "Exit Confirmation",
                                 Icon::Exclamation, Answer::No)) {
            event->ignore();
            return;
        }
        exiting_ = true;
    }
    QSettings settings;
    settings.setValue(kGeometryKey, saveGeometry());
    if (frmPreview_)
        frmPreview_->close();
    if (frmHelp_)
        frmHelp_->close();
    event->accept();
    emit exitConfirmed();
}

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lblEgg_ && event->type() == QEvent::MouseButtonPress) {
        lblEgg_Click();
        return true;
    }
    if (event->type() == QEvent::FocusIn && watched->isWidgetType())
        setActiveEditor(watched->objectName());
    return QMainWindow::eventFilter(watched, event);
}

} // namespace lumora
