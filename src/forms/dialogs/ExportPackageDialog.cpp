// The export dialog's controls, its suggested file name and the remembered choice.
#include "forms/dialogs/ExportPackageDialog.h"

#include "app/Session.h"
#include "platform/PackageExport.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QVBoxLayout>

namespace lumora {

namespace {

constexpr const char* kFormatKey = "exportPackage/format";
constexpr const char* kFolderKey = "exportPackage/folder";
constexpr int kDefaultPassMark = 80;

QString suggestedName(const Session& session, PackageFormat format) {
    return QString::fromStdString(suggestedPackageName(session.module.folderName, format));
}

} // namespace

ExportPackageDialog::ExportPackageDialog(const Session& session, QWidget* parent)
    : QDialog(parent), session_(session) {
    setObjectName("frmExportPackage");
    setWindowTitle("Export Package");

    auto* fraFormat = new QGroupBox("Package for", this);
    fraFormat->setObjectName("fraFormat");
    optScorm12_ = new QRadioButton("SCORM 1.2 (also AICC)", fraFormat);
    optScorm12_->setObjectName("optScorm12");
    optScorm12_->setToolTip("For most LMSs, old and new; AICC LMSs import the same zip");
    optScorm2004_ = new QRadioButton("SCORM 2004 4th Edition", fraFormat);
    optScorm2004_->setObjectName("optScorm2004");
    optScorm2004_->setToolTip(
        "For LMSs that ask for SCORM 2004: completion and pass reported apart");
    optCmi5_ = new QRadioButton("cmi5 (xAPI)", fraFormat);
    optCmi5_->setObjectName("optCmi5");
    optCmi5_->setToolTip(
        "For LMSs that ask for cmi5; progress goes to the LMS's learning record store");
    auto* formats = new QVBoxLayout(fraFormat);
    for (QRadioButton* option : {optScorm12_, optScorm2004_, optCmi5_}) {
        formats->addWidget(option);
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                formatChanged();
        });
    }

    // Only an Evaluation is scored; without a pass mark the LMS may set its own.
    chkPassMark_ = new QCheckBox("Pass mark (%):", this);
    chkPassMark_->setObjectName("chkPassMark");
    chkPassMark_->setToolTip("Leave unticked to let the LMS set the pass mark");
    spnPassMark_ = new QSpinBox(this);
    spnPassMark_->setObjectName("spnPassMark");
    spnPassMark_->setRange(0, 100);
    spnPassMark_->setValue(kDefaultPassMark);
    spnPassMark_->setAccessibleName("Pass mark in percent");
    spnPassMark_->setEnabled(false);
    connect(chkPassMark_, &QCheckBox::toggled, spnPassMark_, &QSpinBox::setEnabled);
    auto* passMark = new QHBoxLayout;
    passMark->addWidget(chkPassMark_);
    passMark->addWidget(spnPassMark_);
    passMark->addStretch();
    const bool evaluation = session_.module.moduleType == kEvaluation;
    chkPassMark_->setVisible(evaluation);
    spnPassMark_->setVisible(evaluation);

    auto* lblPackageFile = new QLabel("&Package file:", this);
    lblPackageFile->setObjectName("lblPackageFile");
    txtPackageFile_ = new QLineEdit(this);
    txtPackageFile_->setObjectName("txtPackageFile");
    txtPackageFile_->setAccessibleName("Package file");
    lblPackageFile->setBuddy(txtPackageFile_);
    auto* btnBrowse = new QPushButton("&Browse...", this);
    btnBrowse->setObjectName("btnBrowse");
    btnBrowse->setToolTip("Choose where the package is written");
    connect(btnBrowse, &QPushButton::clicked, this, &ExportPackageDialog::btnBrowse_Click);
    auto* file = new QHBoxLayout;
    file->addWidget(txtPackageFile_, 1);
    file->addWidget(btnBrowse);

    auto* buttons = new QDialogButtonBox(this);
    auto* btnExport = buttons->addButton("Export", QDialogButtonBox::AcceptRole);
    btnExport->setObjectName("btnExport");
    btnExport->setDefault(true);
    auto* btnCancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    btnCancel->setObjectName("btnCancel");
    connect(btnExport, &QPushButton::clicked, this, &ExportPackageDialog::btnExport_Click);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraFormat);
    layout->addLayout(passMark);
    layout->addWidget(lblPackageFile);
    layout->addLayout(file);
    layout->addWidget(buttons);

    // The last choice, or SCORM 1.2, the format most LMSs take.
    QSettings settings;
    const auto remembered = packageFormatNamed(settings.value(kFormatKey).toString().toStdString());
    shownFormat_ = remembered.value_or(PackageFormat::Scorm12);
    const QString folder = settings.value(kFolderKey, QDir::homePath()).toString();
    txtPackageFile_->setText(QDir(folder).filePath(suggestedName(session_, shownFormat_)));
    (shownFormat_ == PackageFormat::Cmi5        ? optCmi5_
     : shownFormat_ == PackageFormat::Scorm2004 ? optScorm2004_
                                                : optScorm12_)
        ->setChecked(true);
    resize(460, sizeHint().height());
}

PackageFormat ExportPackageDialog::chosenFormat() const {
    if (optCmi5_->isChecked())
        return PackageFormat::Cmi5;
    if (optScorm2004_->isChecked())
        return PackageFormat::Scorm2004;
    return PackageFormat::Scorm12;
}

// The file name follows the format while it is still the one suggested; a name the author
// typed is left alone.
void ExportPackageDialog::formatChanged() {
    const PackageFormat format = chosenFormat();
    QFileInfo current(txtPackageFile_->text());
    if (current.fileName() == suggestedName(session_, shownFormat_))
        txtPackageFile_->setText(current.dir().filePath(suggestedName(session_, format)));
    shownFormat_ = format;
}

PackageOptions ExportPackageDialog::options() const {
    PackageOptions o;
    o.format = chosenFormat();
    if (session_.module.moduleType == kEvaluation && chkPassMark_->isChecked())
        o.passMark = PassMark{spnPassMark_->value() * 100};
    return o;
}

QString ExportPackageDialog::packagePath() const {
    return txtPackageFile_->text().trimmed();
}

void ExportPackageDialog::btnBrowse_Click() {
    const QString path =
        QFileDialog::getSaveFileName(this, "Export Package", packagePath(), "Zip packages (*.zip)");
    if (!path.isEmpty())
        txtPackageFile_->setText(path);
}

void ExportPackageDialog::btnExport_Click() {
    if (packagePath().isEmpty()) {
        txtPackageFile_->setFocus();
        return;
    }
    QSettings settings;
    settings.setValue(kFormatKey, QString(packageFormatName(chosenFormat())));
    settings.setValue(kFolderKey, QFileInfo(packagePath()).absolutePath());
    accept();
}

} // namespace lumora
