// One label of the colour scheme's miniature page. It is painted in the module's colours, not
// the palette's, because it shows the page as learners will see it. A background label fills
// itself and holds the text labels shown on it; a text label is transparent. For the keyboard
// and assistive tools it is a button: Tab reaches it, Space or Enter picks its colour.
#pragma once

#include <QAbstractButton>
#include <QColor>

namespace lumora {

class ColorLabel : public QAbstractButton {
    Q_OBJECT
  public:
    // A caption-less label is named by its tooltip.
    ColorLabel(const QString& caption, bool background, const QString& tip, QWidget* parent);

    bool isBackground() const { return background_; }
    QColor color() const { return color_; }
    void setColor(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool background_;
    QColor color_;
};

} // namespace lumora
