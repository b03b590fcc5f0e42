// The editor's web page: it refuses every navigation but the loading of its own shell, so a
// link clicked or a form submitted inside content never replaces the document being edited.
#pragma once

#include <QWebEnginePage>

namespace lumora {

class EditorPage : public QWebEnginePage {
    Q_OBJECT
  public:
    using QWebEnginePage::QWebEnginePage;

    // The next main-frame navigation is ours (the shell).
    void expectShellLoad() { m_expectShell = true; }

  protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int lineNumber, const QString& sourceId) override;

  private:
    bool m_expectShell = false;
};

} // namespace lumora
