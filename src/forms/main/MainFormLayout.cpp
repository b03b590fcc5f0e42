// The main form's resolution check, minimum size and hidden animation. The layouts give the
// editors every pixel the form gains; this file keeps the rules that layouts cannot express.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "app/Startup.h"
#include "base/Prompt.h"
#include "forms/main/ListTexts.h"

#include <QLabel>
#include <QResizeEvent>
#include <QScreen>

namespace lumora {

void MainForm::resolutionCheck() {
    if (isMinimized())
        return;
    const QScreen* display = screen();
    const int screenHeight = display ? display->geometry().height() : 0;
    if (resolutionTooLow(isMaximized(), screenHeight)) {
        showNormal();
        session_.prompt.message("The Lumora is best viewed at 800x600 or higher resolution",
                                "Resolution Error", Icon::Critical, Buttons::OK);
    }
}

void MainForm::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    // The minimum size (setMinimumSize) springs the form back; the animation keeps its corner.
    placeEgg();
}

void MainForm::placeEgg() {
    if (lblEgg_ && centralWidget()) {
        lblEgg_->adjustSize();
        QSize size = lblEgg_->text().isEmpty() ? QSize(16, 16) : lblEgg_->sizeHint();
        lblEgg_->setGeometry(centralWidget()->width() - size.width() - 4,
                             centralWidget()->height() - size.height() - 2, size.width(),
                             size.height());
        lblEgg_->raise();
    }
}

void MainForm::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        resolutionCheck();
}

void MainForm::lblEgg_Click() {
    if (tmrEgg_.isActive()) {
        tmrEgg_.stop();
        lblEgg_->clear();
    } else {
        tmrEgg_.start();
    }
    placeEgg();
}

void MainForm::tmrEgg_Timer() {
    const auto& frames = animationFrames();
    if (frames.empty())
        return;
    lblEgg_->setText(
        QString::fromStdString(frames[eggFrame_ % frames.size()]).replace("\r\n", "\n"));
    eggFrame_ = (eggFrame_ + 1) % frames.size();
    placeEgg();
}

} // namespace lumora
