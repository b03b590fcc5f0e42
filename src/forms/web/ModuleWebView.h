// The web view of the preview and help forms. Local files are shown through the
// "lumora-file" scheme so that a module's frames share one origin; navigateTo applies the
// viewers' navigation rule (navigate when the target differs, reload from disk when it is
// shown and complete, wait while it is still loading).
#pragma once

#include <QUrl>
#include <QWebEngineView>

namespace lumora {

class ModuleWebView : public QWebEngineView {
    Q_OBJECT
  public:
    enum class NavigationAction { Navigated, Reloaded, Ignored };

    explicit ModuleWebView(QWidget* parent = nullptr);

    // target: a local file (the module's frameset, the offline help) or a web address
    // (the online help).
    NavigationAction navigateTo(const QString& target);

    // The browser's current location as text: a local file as its path (in the spelling the
    // caller navigated with), anything else as its address.
    QString locationText() const;

    // Ready state 4 of the classic browser: the last load has finished.
    bool isLoadComplete() const { return !m_loading; }

  private:
    QUrl urlForTarget(const QString& target) const;

    bool m_loading = false;
    QUrl m_requestedUrl;
    QString m_requestedText;
};

} // namespace lumora
