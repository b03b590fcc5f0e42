// The font dialog; see FontForm.h.
#include "forms/dialogs/FontForm.h"

#include "base/Prompt.h"
#include "forms/dialogs/SimpleComboBox.h"
#include "forms/editor/EditingCommands.h"
#include "forms/editor/HtmlEditor.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {

FontForm::FontForm(EditingCommands& commands, HtmlEditor* editor, Prompt& prompt,
                   std::function<void()> applied, QWidget* parent)
    : QDialog(parent), commands_(commands), editor_(editor), prompt_(prompt),
      applied_(std::move(applied)) {
    setObjectName("frmFont");
    setWindowTitle("Font");
    setAttribute(Qt::WA_DeleteOnClose);

    lstFonts_ = new SimpleComboBox(this);
    lstFonts_->setObjectName("lstFonts");
    lstFonts_->setAccessibleName("Font");
    lstFonts_->lineEdit()->setAccessibleName("Font");
    lstFonts_->list()->setAccessibleName("Installed fonts");
    connect(lstFonts_, &SimpleComboBox::itemDoubleClicked, this, &FontForm::OKButton_Click);

    auto* OKButton = new QPushButton("OK", this);
    OKButton->setObjectName("OKButton");
    OKButton->setToolTip("Set the selected font");
    OKButton->setDefault(true);
    connect(OKButton, &QPushButton::clicked, this, &FontForm::OKButton_Click);
    auto* CancelButton = new QPushButton("Cancel", this);
    CancelButton->setObjectName("CancelButton");
    CancelButton->setToolTip("Cancel without changing font");
    connect(CancelButton, &QPushButton::clicked, this, &FontForm::CancelButton_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstFonts_, 1);
    layout->addLayout(buttons);
    resize(320, 360);
}

void FontForm::resetPage() {
    lstFonts_->clear();
    for (const QString& family : QFontDatabase::families())
        if (!family.isEmpty())
            lstFonts_->addItem(family);
    QPointer<FontForm> self(this);
    commands_.queryCommandValue(editor_, "FontName", [self](const QVariant& name) {
        if (!self)
            return;
        // A selection of several fonts has no one name: the box stays empty.
        self->lstFonts_->setCurrentText(name.isValid() ? name.toString() : QString());
        emit self->pageReset();
    });
}

void FontForm::OKButton_Click() {
    const QString name = lstFonts_->currentText();
    if (name.isEmpty()) {
        prompt_.error("You must select a font");
        return;
    }
    // A name that is not installed is passed on as typed.
    commands_.setFontName(editor_, name, applied_);
    accept();
}

void FontForm::CancelButton_Click() {
    reject();
}

} // namespace lumora
