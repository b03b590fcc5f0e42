// The colour scheme dialog; see ColorsForm.h.
#include "forms/dialogs/ColorsForm.h"

#include "app/Session.h"
#include "content/Colors.h"
#include "content/Contrast.h"
#include "forms/FormDialogs.h"
#include "forms/dialogs/ColorLabel.h"
#include "forms/main/ModuleActions.h"
#include "storage/Stylesheet.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {

namespace {

// The platform's colour number 0x00BBGGRR as a colour and back.
QColor colorOfNumber(long value) {
    return QColor(static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF),
                  static_cast<int>((value >> 16) & 0xFF));
}

long numberOfColor(const QColor& color) {
    return color.red() + 256L * color.green() + 65536L * color.blue();
}

} // namespace

ColorsForm::ColorsForm(Session& session, FormDialogs& dialogs, QWidget* parent)
    : QDialog(parent), session_(session), dialogs_(dialogs), saved_(session.module.colors) {
    setObjectName("frmColors");
    setWindowTitle("Color Scheme");
    setAttribute(Qt::WA_DeleteOnClose);

    // The miniature page: the title bar, the navigation rows above and below the page, and the
    // page with its links and copyright line.
    auto* frameOuter = new QFrame(this);
    frameOuter->setObjectName("frameOuter");
    frameOuter->setFrameShape(QFrame::Box);
    auto* page = new QVBoxLayout(frameOuter);
    page->setContentsMargins(1, 1, 1, 1);
    page->setSpacing(0);

    ColorLabel* title = addLabel(frameOuter, "lblTitleBackground", {},
                                 &ColorScheme::titleBackground, true, "Title Background");
    auto* titleRow = new QHBoxLayout(title);
    titleRow->setContentsMargins(6, 6, 6, 6);
    titleRow->addWidget(
        addLabel(title, "lblTitleColor", "Module Title", &ColorScheme::titleColor, false));
    titleRow->addStretch();

    const auto navigationRow = [&] {
        auto* row = new QHBoxLayout;
        row->setSpacing(0);
        ColorLabel* number =
            addLabel(frameOuter, "lblPageNumberBackground", {}, &ColorScheme::pageNumberBackground,
                     true, "Page Number Background");
        auto* numberRow = new QHBoxLayout(number);
        numberRow->setContentsMargins(4, 2, 4, 2);
        numberRow->addWidget(addLabel(number, "lblPageNumberColor", "Page 1 of 2",
                                      &ColorScheme::pageNumberColor, false));
        ColorLabel* name = addLabel(frameOuter, "lblPageNameBackground", {},
                                    &ColorScheme::pageNameBackground, true, "Page Name Background");
        auto* nameRow = new QHBoxLayout(name);
        nameRow->setContentsMargins(4, 2, 4, 2);
        nameRow->addWidget(
            addLabel(name, "lblPageNameColor", "Page Name", &ColorScheme::pageNameColor, false));
        nameRow->addStretch();
        row->addWidget(number);
        row->addWidget(name, 1);
        return row;
    };
    page->addWidget(title);
    page->addLayout(navigationRow());

    ColorLabel* content = addLabel(frameOuter, "lblContentBackground", "  Page Background",
                                   &ColorScheme::contentBackground, true);
    auto* contentArea = new QVBoxLayout(content);
    contentArea->setContentsMargins(12, content->fontMetrics().height() + 14, 12, 6);
    auto* links = new QHBoxLayout;
    links->addWidget(addLabel(content, "lblALink", "Link Text", &ColorScheme::aLink, false));
    links->addWidget(
        addLabel(content, "lblAVisited", "Visited Link Text", &ColorScheme::aVisited, false));
    links->addStretch();
    contentArea->addLayout(links);
    contentArea->addStretch();
    contentArea->addWidget(
        addLabel(content, "lblCopyRightColor", "Copyright", &ColorScheme::copyRightColor, false));
    content->setMinimumHeight(130);
    page->addWidget(content, 1);
    page->addLayout(navigationRow());

    lblContrast_ = new QLabel(this);
    lblContrast_->setObjectName("lblContrast");
    lblContrast_->setWordWrap(true);
    lblContrast_->setTextFormat(Qt::PlainText);
    lblContrast_->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);

    auto* btnDefaultColors = new QPushButton("Default", this);
    btnDefaultColors->setObjectName("btnDefaultColors");
    btnDefaultColors->setToolTip("Reset to Default color scheme");
    connect(btnDefaultColors, &QPushButton::clicked, this, &ColorsForm::btnDefaultColors_Click);
    auto* btnSave = new QPushButton("Save", this);
    btnSave->setObjectName("btnSave");
    btnSave->setToolTip("Save your color scheme changes");
    connect(btnSave, &QPushButton::clicked, this, &ColorsForm::btnSave_Click);
    auto* CancelButton = new QPushButton("Cancel", this);
    CancelButton->setObjectName("CancelButton");
    CancelButton->setToolTip("Discard changes");
    connect(CancelButton, &QPushButton::clicked, this, &ColorsForm::CancelButton_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnDefaultColors);
    buttons->addStretch();
    buttons->addWidget(btnSave);
    buttons->addWidget(CancelButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frameOuter, 1);
    layout->addWidget(lblContrast_);
    layout->addLayout(buttons);
    resize(440, 360);
}

ColorLabel* ColorsForm::addLabel(QWidget* parent, const char* name, const QString& caption,
                                 std::string ColorScheme::*key, bool background,
                                 const QString& tip) {
    auto* label = new ColorLabel(caption, background, tip, parent);
    label->setObjectName(name);
    connect(label, &ColorLabel::clicked, this, [this, key] { pickColor(key); });
    labels_.push_back({label, key});
    return label;
}

void ColorsForm::resetColors() {
    const ColorScheme& colors = session_.module.colors;
    for (const auto& [label, key] : labels_)
        label->setColor(colorOfNumber(hexToColor(colors.*key)));
    const std::string warning = contrastWarning(colors);
    lblContrast_->setText(QString::fromStdString(warning));
    lblContrast_->setVisible(!warning.empty());
}

void ColorsForm::pickColor(std::string ColorScheme::*key) {
    std::string& field = session_.module.colors.*key;
    // A black (or unreadable) colour is not handed to the picker, which then shows the
    // colour it showed last.
    const long current = hexToColor(field);
    if (current > 0)
        dialogColor_ = colorOfNumber(current);
    if (const std::optional<QColor> chosen = dialogs_.color(this, dialogColor_)) {
        dialogColor_ = *chosen;
        field = colorToHex(numberOfColor(*chosen));
    }
    resetColors();
}

void ColorsForm::btnDefaultColors_Click() {
    session_.module.colors = session_.defaults.colors;
    resetColors();
}

void ColorsForm::btnSave_Click() {
    // The stylesheet is written now, whether or not the module is saved later.
    if (!reportFileErrors(session_.prompt, [&] {
            WriteStylesheetColours(session_.module, session_.StylesheetPath);
        }))
        return;
    saved_ = session_.module.colors;
    session_.module.savedColors = saved_;
    accept();
}

void ColorsForm::CancelButton_Click() {
    reject();
}

void ColorsForm::done(int result) {
    session_.module.colors = saved_;
    resetColors();
    QDialog::done(result);
}

} // namespace lumora
