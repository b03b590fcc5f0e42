// Minimum widths of push buttons from their captions; see FitCaptions.h.
#include "forms/FitCaptions.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleOptionButton>

namespace lumora {

int captionWidth(const QPushButton* button) {
    // What the style's size hint adds around a caption, without the style's minimum width.
    const QStyle* style = button->style();
    QStyleOptionButton opt;
    opt.initFrom(button);
    int frame = style->pixelMetric(QStyle::PM_ButtonMargin, &opt, button) +
                2 * style->pixelMetric(QStyle::PM_DefaultFrameWidth, &opt, button);
    if (button->autoDefault() || button->isDefault())
        frame += 2 * style->pixelMetric(QStyle::PM_ButtonDefaultIndicator, &opt, button);
    QString shown = button->text();
    shown.remove(QRegularExpression("&(?!&)"));
    const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + 4;
    return button->fontMetrics().horizontalAdvance(shown) + icon + frame;
}

void letButtonsShrinkToCaptions(QWidget* root) {
    for (QPushButton* b : root->findChildren<QPushButton*>())
        if (!b->text().isEmpty())
            b->setMinimumWidth(captionWidth(b));
}

} // namespace lumora
