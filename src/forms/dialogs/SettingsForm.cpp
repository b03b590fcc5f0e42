// The settings dialog: the online help address.
#include "forms/dialogs/SettingsForm.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QUrl>
#include <QVBoxLayout>

namespace lumora {

SettingsForm::SettingsForm(QWidget* parent) : QDialog(parent) {
    setObjectName("frmSettings");
    setWindowTitle("Settings");

    txtOnlineHelp_ = new QLineEdit(this);
    txtOnlineHelp_->setObjectName("txtOnlineHelp");
    txtOnlineHelp_->setToolTip("The web address Help Contents (online) opens");
    txtOnlineHelp_->setPlaceholderText("https://");
    txtOnlineHelp_->setMinimumWidth(320);
    txtOnlineHelp_->setText(QSettings().value(kOnlineHelpKey).toString());
    auto* lblOnlineHelp = new QLabel("Online &help address", this);
    lblOnlineHelp->setObjectName("lblOnlineHelp");
    lblOnlineHelp->setBuddy(txtOnlineHelp_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setObjectName("OKButton");
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    connect(ok, &QPushButton::clicked, this, &SettingsForm::OKButton_Click);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* fields = new QFormLayout;
    fields->addRow(lblOnlineHelp, txtOnlineHelp_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(buttons);
}

void SettingsForm::OKButton_Click() {
    QSettings settings;
    const QString typed = txtOnlineHelp_->text().trimmed();
    if (typed.isEmpty())
        settings.remove(kOnlineHelpKey);
    else
        // "example.org/help" is read as a web address, as a browser's address bar reads it.
        settings.setValue(kOnlineHelpKey, QUrl::fromUserInput(typed).toString());
    accept();
}

} // namespace lumora
