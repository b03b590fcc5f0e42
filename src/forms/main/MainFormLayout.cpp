// The main form's resolution check, minimum size and hidden animation. The layouts give the
// editors every pixel the form gains; this file keeps the rules that layouts cannot express.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "app/Startup.h"
#include "base/Prompt.h"
#include "forms/main/ListTexts.h"

#include <QLabel>
#include <QLayout>
#include <QResizeEvent>
#include <QScreen>
#include <QSettings>
#include <QStyle>

namespace lumora {

namespace {

// The size the form opens with the first time, or when the remembered one does not fit.
constexpr QSize kOpeningSize(1000, 720);

} // namespace

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

void MainForm::keepMinimumSize() {
    // The form's own minimum in device-independent pixels, so it is the same at every scale;
    // widened only when the controls would otherwise be squeezed and their captions cut.
    const QSize controls = layout() ? layout()->minimumSize() : QSize();
    setMinimumSize(QSize(kMinimumWidthPx, kMinimumHeightPx).expandedTo(controls));
}

void MainForm::placeOnScreen() {
    const QScreen* display = screen();
    if (!display)
        return;
    // The window frame is not known before the form is first shown: leave room for a title
    // bar and borders.
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QRect available = display->availableGeometry();
    const QRect room = available.adjusted(4, titleBar + 4, -4, -4);
    QSettings settings;
    if (restoreGeometry(settings.value(kGeometryKey).toByteArray()) &&
        room.contains(normalGeometry()))
        return;
    setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    const QSize size = kOpeningSize.boundedTo(room.size()).expandedTo(minimumSize());
    // A form at its minimum on a small screen may not fit the room: the middle of the screen.
    const bool fits = size.width() <= room.width() && size.height() <= room.height();
    setGeometry(
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, fits ? room : available));
}

void MainForm::showEvent(QShowEvent* event) {
    // Sizes are known once the form is polished and laid out for showing, which is now.
    keepMinimumSize();
    if (!placed_) {
        placed_ = true;
        placeOnScreen();
    }
    QMainWindow::showEvent(event);
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
