// frmPreview and frmHelp: a form filled by one web view. Showing a target navigates to it the
// first time; showing the same target again reloads it from disk once the last load finished
// (the view's navigation rule), so a module saved since the last preview is shown as saved.
#pragma once

#include <QUrl>
#include <QWidget>

namespace lumora {

class ModuleWebView;
class Session;

class WebViewerForm : public QWidget {
    Q_OBJECT
  public:
    WebViewerForm(const QString& formName, const QString& caption, const QString& browserName,
                  QWidget* parent = nullptr);

    ModuleWebView* browser() const { return browser_; }

  signals:
    void loadFinished(bool ok);

  protected:
    ModuleWebView* browser_;
};

// frmPreview: the open module as a learner sees it.
class PreviewForm : public WebViewerForm {
    Q_OBJECT
  public:
    PreviewForm(Session& session, QWidget* parent = nullptr);
    void refreshPreview();

  private:
    Session& session_;
};

// frmHelp: the offline help that comes with the program, or the online help.
class HelpForm : public WebViewerForm {
    Q_OBJECT
  public:
    HelpForm(Session& session, QWidget* parent = nullptr);
    // "offline" shows AppPath + "Help/lessonFrameset.html"; anything else the online address,
    // or, while none is set, a page that says so and links the offline help.
    void refreshBrowser(const QString& HelpLocation);

    // The online help address set in the settings dialog; empty while none is set.
    static QUrl onlineHelpAddress();
    QString offlineHelpFile() const;

  private:
    Session& session_;
};

} // namespace lumora
