// The splash: a frameless window with the program's title picture and its description.
#include "forms/dialogs/SplashForm.h"

#include "forms/dialogs/Pictures.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace lumora {

SplashForm::SplashForm(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName("frmSplash");
    setWindowTitle("Lumora");
    setAttribute(Qt::WA_DeleteOnClose);
    setFocusPolicy(Qt::StrongFocus);

    auto* imgTitle = new QLabel(this);
    imgTitle->setObjectName("imgTitle");
    imgTitle->setPixmap(titlePicture(420));
    imgTitle->setAlignment(Qt::AlignCenter);
    auto* imgLogo = new QLabel(this);
    imgLogo->setObjectName("imgLogo");
    imgLogo->setPixmap(logoPicture(72));
    imgLogo->setAlignment(Qt::AlignCenter);
    auto* description = new QLabel(kProgramDescription, this);
    description->setWordWrap(true);
    description->setAlignment(Qt::AlignCenter);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->addWidget(imgTitle);
    layout->addWidget(imgLogo);
    layout->addWidget(description);
    // The desktop's colours, so the description stays readable under a dark or high-contrast theme.
    setStyleSheet("SplashForm { background: palette(base); border: 1px solid palette(mid); }");
    setAttribute(Qt::WA_StyledBackground);
    setFixedWidth(480);

    tmrSplash_.setObjectName("tmrSplash");
    tmrSplash_.setSingleShot(true);
    tmrSplash_.setInterval(kSplashMilliseconds);
    connect(&tmrSplash_, &QTimer::timeout, this, &SplashForm::finish);
}

void SplashForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!done_ && !tmrSplash_.isActive())
        tmrSplash_.start();
    activateWindow();
    setFocus();
}

void SplashForm::keyPressEvent(QKeyEvent* event) {
    event->accept();
    finish();
}

void SplashForm::finish() {
    if (done_)
        return;
    done_ = true;
    tmrSplash_.stop();
    close();
    emit finished();
}

} // namespace lumora
