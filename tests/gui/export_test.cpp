// File > Export Package...: the save it asks for, the dialog's formats, suggested names, an
// Evaluation's pass mark and the remembered choice, and the zip it leads to, with the module
// folder left as it was and never holding the zip.
#include "GuiFixture.h"

#include "forms/dialogs/ExportPackageDialog.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTimer>
#include <zip.h>

#include <map>

namespace lumora::testing {
namespace {

namespace fs = std::filesystem;

class ExportTest : public GuiTest {
  protected:
    void SetUp() override {
        GuiTest::SetUp();
        QSettings().remove("exportPackage");
    }

    // The bytes of an entry of a zip; "" when there is no such entry.
    static std::string zipEntry(const fs::path& zipPath, const char* name) {
        int err = 0;
        zip_t* archive = zip_open(zipPath.string().c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &err);
        EXPECT_NE(archive, nullptr) << zipPath << ": " << err;
        std::string bytes;
        zip_stat_t st;
        if (archive && zip_stat(archive, name, 0, &st) == 0) {
            bytes.resize(st.size);
            zip_file_t* f = zip_fopen(archive, name, 0);
            zip_fread(f, bytes.data(), st.size);
            zip_fclose(f);
        }
        if (archive)
            zip_close(archive);
        return bytes;
    }

    std::map<fs::path, std::string> folderBytes(const std::string& module) {
        std::map<fs::path, std::string> files;
        for (const auto& e : fs::recursive_directory_iterator(workspace / module))
            if (e.is_regular_file())
                files[e.path()] = readText(e.path());
        return files;
    }

    // Triggers File > Export Package... and, inside the modal dialog, runs `fill`.
    void exportThroughMenu(const std::function<void(QDialog*)>& fill) {
        bool shown = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(visibleForm("frmExportPackage"));
            ASSERT_NE(dialog, nullptr);
            shown = true;
            fill(dialog);
        });
        menu("mnuExportPackage")->trigger();
        EXPECT_TRUE(shown);
    }
};

TEST_F(ExportTest, TheDialogLeadsToTheChosenFormatAndKeepsTheChoiceForNextTime) {
    openModule("Quiz1", "Evaluation");
    const fs::path zipPath = fs::path(root.path().toStdString()) / "out" / "Quiz1-cmi5.zip";
    fs::create_directories(zipPath.parent_path());
    const fs::path info = moduleFile("Quiz1", "scripts/inc_Questions.js");
    // A module never saved for SCORM/AICC in its folder is saved first, after asking; declined,
    // nothing is written.
    auto* title = control<QLineEdit>(program->mainForm(), "txtModuleTitle");
    title->selectAll();
    title->insert("Packaged");
    exportThroughMenu([&](QDialog* dialog) {
        control<QLineEdit>(dialog, "txtPackageFile")
            ->setText(QString::fromStdString(zipPath.string()));
        control<QPushButton>(dialog, "btnExport")->click();
    });
    EXPECT_EQ(prompt.last()->title, "Export Package");
    EXPECT_FALSE(fs::exists(zipPath));
    EXPECT_FALSE(containsText(readText(info), "Packaged"));

    prompt.answer(Answer::Yes);
    exportThroughMenu([&](QDialog* dialog) {
        EXPECT_TRUE(control<QRadioButton>(dialog, "optScorm12")->isChecked());
        auto* file = control<QLineEdit>(dialog, "txtPackageFile");
        EXPECT_TRUE(file->text().endsWith("/Quiz1-scorm12.zip")) << file->text().toStdString();
        control<QRadioButton>(dialog, "optCmi5")->click();
        EXPECT_TRUE(file->text().endsWith("/Quiz1-cmi5.zip")) << file->text().toStdString();
        auto* spin = control<QSpinBox>(dialog, "spnPassMark");
        EXPECT_FALSE(spin->isEnabled());
        control<QCheckBox>(dialog, "chkPassMark")->click();
        EXPECT_TRUE(spin->isEnabled());
        spin->setValue(75);
        file->setText(QString::fromStdString(zipPath.string()));
        control<QPushButton>(dialog, "btnExport")->click();
    });
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, "Export Package");
    EXPECT_TRUE(containsText(readText(info), "var modTitle = \"Packaged\";"));
    const std::string cmi5 = zipEntry(zipPath, "cmi5.xml");
    EXPECT_TRUE(containsText(cmi5, "moveOn=\"Passed\" masteryScore=\"0.75\"")) << cmi5;

    // Once saved, an export reads the folder and writes nothing into it.
    const auto before = folderBytes("Quiz1");
    exportThroughMenu([&](QDialog* dialog) {
        // The last format and folder are offered again.
        EXPECT_TRUE(control<QRadioButton>(dialog, "optCmi5")->isChecked());
        EXPECT_EQ(control<QLineEdit>(dialog, "txtPackageFile")->text().toStdString(),
                  zipPath.string());
        control<QRadioButton>(dialog, "optScorm2004")->click();
        control<QPushButton>(dialog, "btnExport")->click();
    });
    EXPECT_EQ(folderBytes("Quiz1"), before);
    EXPECT_TRUE(fs::exists(zipPath.parent_path() / "Quiz1-scorm2004.zip"));

    // A package inside the module folder would contain itself: refused.
    const fs::path inside = moduleFile("Quiz1", "x.zip");
    exportThroughMenu([&](QDialog* dialog) {
        control<QLineEdit>(dialog, "txtPackageFile")
            ->setText(QString::fromStdString(inside.string()));
        control<QPushButton>(dialog, "btnExport")->click();
    });
    EXPECT_EQ(prompt.last()->title, "Error");
    EXPECT_FALSE(fs::exists(inside));
}

TEST_F(ExportTest, APassMarkIsOfferedForAnEvaluationOnlyAndATypedNameStays) {
    openModule("Course1", "Lesson");
    ExportPackageDialog dialog(session, program->mainForm());
    dialog.show();
    EXPECT_FALSE(control<QCheckBox>(&dialog, "chkPassMark")->isVisible());
    EXPECT_FALSE(control<QSpinBox>(&dialog, "spnPassMark")->isVisible());
    control<QCheckBox>(&dialog, "chkPassMark")->setChecked(true);
    EXPECT_FALSE(dialog.options().passMark);

    auto* file = control<QLineEdit>(&dialog, "txtPackageFile");
    file->setText("/tmp/mine.zip");
    control<QRadioButton>(&dialog, "optScorm2004")->click();
    EXPECT_EQ(file->text(), "/tmp/mine.zip");
    EXPECT_EQ(dialog.options().format, PackageFormat::Scorm2004);

    // No file name, no export: the dialog stays open on the empty field.
    file->clear();
    control<QPushButton>(&dialog, "btnExport")->click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), 0);
}

} // namespace
} // namespace lumora::testing
