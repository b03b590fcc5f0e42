// A label of the colour miniature; see ColorLabel.h.
#include "forms/dialogs/ColorLabel.h"

#include "content/Contrast.h"

#include <QKeyEvent>
#include <QLayout>
#include <QPainter>

namespace lumora {

namespace {

constexpr int kPadding = 4;

// Black or white, whichever reads better on `fill`: the caption of a background label and the
// focus frame stay visible whatever colour the author picks.
QColor readableOn(const QColor& fill) {
    const std::string hex = fill.name().toStdString();
    return contrastRatio("#000000", hex) >= contrastRatio("#FFFFFF", hex) ? QColor(Qt::black)
                                                                          : QColor(Qt::white);
}

} // namespace

ColorLabel::ColorLabel(const QString& caption, bool background, const QString& tip, QWidget* parent)
    : QAbstractButton(parent), background_(background) {
    setText(caption);
    setToolTip(tip);
    setAccessibleName(caption.trimmed().isEmpty() ? tip : caption.trimmed());
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ColorLabel::setColor(const QColor& color) {
    color_ = color;
    update();
}

QSize ColorLabel::sizeHint() const {
    if (layout())
        return QWidget::sizeHint();
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * kPadding, 2 * kPadding);
}

QSize ColorLabel::minimumSizeHint() const {
    return layout() ? QWidget::minimumSizeHint() : sizeHint();
}

void ColorLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor ink = color_;
    if (background_) {
        painter.fillRect(rect(), color_);
        ink = readableOn(color_);
    }
    if (!text().isEmpty()) {
        painter.setPen(ink);
        // A background label's caption sits in its top left corner, above what it holds.
        const QRect area = rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
        painter.drawText(area, Qt::AlignLeft | (layout() ? Qt::AlignTop : Qt::AlignVCenter),
                         text());
    }
    if (hasFocus()) {
        // A text label's frame is drawn in its text's colour, as visible as the text itself.
        QPen pen(background_ ? ink : color_, 1, Qt::DashLine);
        painter.setPen(pen);
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
    }
}

void ColorLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace lumora
