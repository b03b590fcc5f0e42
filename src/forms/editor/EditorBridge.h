// The object the editor's JavaScript sees over the web channel as "lumoraBridge": the shell
// announces itself ready, every author edit arrives as a push of the whole body HTML, and the
// on/off commands that hold at the caret arrive when they change.
#pragma once

#include <QObject>
#include <QString>

namespace lumora {

class EditorBridge : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

  public slots:
    // shell tells which of the shells loaded one after another has come up.
    void shellReady(int shell) { emit shellReadyReceived(shell); }
    // generation tells which setContent the document was showing, so a push that was on its
    // way while new content was being set is dropped rather than stored into the wrong item.
    void contentChanged(int generation, const QString& html) {
        emit contentPushed(generation, html);
    }
    // The commands ("Bold", "JustifyCenter", ...) that hold at the caret, joined with ",".
    void formatStateChanged(int generation, const QString& commands) {
        emit formatStatePushed(generation, commands);
    }

  signals:
    void shellReadyReceived(int shell);
    void contentPushed(int generation, const QString& html);
    void formatStatePushed(int generation, const QString& commands);
};

} // namespace lumora
