// The banner and chooser pictures are painted with QPainter; the logo is the SVG resource.
#include "forms/dialogs/Pictures.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

// Resources of a static library must be registered by hand; outside the namespace by rule.
static void initPictureResources() {
    Q_INIT_RESOURCE(pictures);
}

namespace lumora {

namespace {

const QColor kDeep(0x1f, 0x3a, 0x68);
const QColor kLight(0x4f, 0x86, 0xc6);
const QColor kGlow(0xff, 0xc8, 0x4a);

QPixmap blank(int w, int h) {
    QPixmap pixmap(w, h);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

QPixmap titlePicture(int width) {
    const int height = width / 4;
    QPixmap pixmap = blank(width, height);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, width, height);
    fill.setColorAt(0, kDeep);
    fill.setColorAt(1, kLight);
    p.setBrush(fill);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(0, 0, width, height), 10, 10);
    QFont font("DejaVu Sans", height / 3, QFont::Bold);
    p.setFont(font);
    p.setPen(Qt::white);
    p.drawText(QRect(0, 0, width, height * 2 / 3), Qt::AlignCenter, "Lumora");
    QFont small("DejaVu Sans", std::max(7, height / 10));
    p.setFont(small);
    p.setPen(kGlow);
    p.drawText(QRect(0, height / 2, width, height / 2), Qt::AlignCenter,
               "Lesson  \u00b7  Evaluation  \u00b7  Survey");
    return pixmap;
}

QPixmap logoPicture(int size) {
    QPixmap pixmap = blank(size, size);
    initPictureResources();
    QPainter p(&pixmap);
    QSvgRenderer logo(QStringLiteral(":/pictures/lumora.svg"));
    logo.render(&p, QRectF(0, 0, size, size));
    return pixmap;
}

QIcon programIcon() {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(logoPicture(size));
    return icon;
}

QPixmap chooserPicture(ChooserPicture which, int size) {
    QPixmap pixmap = blank(size, size);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const double s = size;
    // A sheet of paper with a folded corner, marked by what the button makes.
    QPainterPath sheet;
    sheet.moveTo(s * 0.2, s * 0.08);
    sheet.lineTo(s * 0.62, s * 0.08);
    sheet.lineTo(s * 0.8, s * 0.26);
    sheet.lineTo(s * 0.8, s * 0.92);
    sheet.lineTo(s * 0.2, s * 0.92);
    sheet.closeSubpath();
    p.setPen(QPen(kDeep, s / 32));
    p.setBrush(Qt::white);
    if (which == ChooserPicture::Edit) {
        p.setBrush(kGlow.lighter(130));
        p.drawRoundedRect(QRectF(s * 0.08, s * 0.3, s * 0.84, s * 0.58), s / 16, s / 16);
        p.drawRoundedRect(QRectF(s * 0.08, s * 0.2, s * 0.34, s * 0.14), s / 24, s / 24);
        p.setPen(QPen(kDeep, s / 14, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(s * 0.45, s * 0.78), QPointF(s * 0.78, s * 0.45));
        return pixmap;
    }
    p.drawPath(sheet);
    p.setPen(QPen(kLight, s / 24, Qt::SolidLine, Qt::RoundCap));
    QFont font("DejaVu Sans", std::max(6, size / 4), QFont::Bold);
    p.setFont(font);
    QString letter = which == ChooserPicture::Lesson       ? "L"
                     : which == ChooserPicture::Evaluation ? "E"
                                                           : "S";
    for (int line = 0; line < 3; ++line)
        p.drawLine(QPointF(s * 0.3, s * (0.32 + line * 0.1)),
                   QPointF(s * 0.7, s * (0.32 + line * 0.1)));
    p.setPen(kDeep);
    p.drawText(QRectF(s * 0.2, s * 0.58, s * 0.6, s * 0.3), Qt::AlignCenter, letter);
    return pixmap;
}

} // namespace lumora
