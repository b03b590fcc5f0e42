// frmExportPackage: File > Export Package... asks which LMS format the zip is for (SCORM 1.2
// with AICC, SCORM 2004 4th Edition, cmi5), an Evaluation's optional pass mark, and where the
// zip goes. The format and folder chosen last are kept in the program's settings and offered
// again next time.
#pragma once

#include "storage/LmsPackage.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QSpinBox;

namespace lumora {

class Session;

class ExportPackageDialog : public QDialog {
    Q_OBJECT
  public:
    explicit ExportPackageDialog(const Session& session, QWidget* parent = nullptr);

    PackageOptions options() const;
    QString packagePath() const;

    // Export: refuses an empty file name, keeps the choice in the settings, closes Accepted.
    void btnExport_Click();
    void btnBrowse_Click();

  private:
    PackageFormat chosenFormat() const;
    void formatChanged();

    const Session& session_;
    PackageFormat shownFormat_ = PackageFormat::Scorm12; // the format the file name was made for
    QRadioButton* optScorm12_ = nullptr;
    QRadioButton* optScorm2004_ = nullptr;
    QRadioButton* optCmi5_ = nullptr;
    QCheckBox* chkPassMark_ = nullptr;
    QSpinBox* spnPassMark_ = nullptr;
    QLineEdit* txtPackageFile_ = nullptr;
};

} // namespace lumora
