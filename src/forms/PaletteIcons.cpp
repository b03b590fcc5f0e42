// Icons in the desktop's colours; see PaletteIcons.h.
#include "forms/PaletteIcons.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace lumora {

namespace {

// The colour the drawings are made in.
constexpr QLatin1StringView kDrawnColour("#232629");

} // namespace

QIcon paletteIcon(const QString& resource, const QPalette& palette) {
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly))
        return QIcon(resource);
    QString svg = QString::fromUtf8(file.readAll());
    svg.replace(kDrawnColour, palette.color(QPalette::ButtonText).name(), Qt::CaseInsensitive);
    QSvgRenderer renderer(svg.toUtf8());
    QIcon icon;
    // Sizes for the tool bars at every scale; the disabled look is made from these.
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace lumora
