// frmSplash: the title picture shown while the program prepares itself. It gives way to the
// start chooser when its timer fires or a key is pressed, whichever comes first, exactly once.
#pragma once

#include <QTimer>
#include <QWidget>

namespace lumora {

class SplashForm : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kSplashMilliseconds = 1500;

    explicit SplashForm(QWidget* parent = nullptr);
    // Unloads the splash and announces it; later calls do nothing.
    void finish();
    QTimer& timer() { return tmrSplash_; }

  signals:
    void finished();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    QTimer tmrSplash_;
    bool done_ = false;
};

} // namespace lumora
