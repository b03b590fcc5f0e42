// The preview and help viewers over a ModuleWebView, which serves a module folder as one
// origin (its frames script each other) without opening a network port.
#include "forms/dialogs/WebViewerForm.h"

#include "app/Session.h"
#include "forms/dialogs/SettingsForm.h"
#include "forms/web/LumoraScheme.h"
#include "forms/web/ModuleWebView.h"
#include "storage/Paths.h"

#include <QSettings>
#include <QVBoxLayout>

namespace lumora {

WebViewerForm::WebViewerForm(const QString& formName, const QString& caption,
                             const QString& browserName, QWidget* parent)
    : QWidget(parent, Qt::Window) {
    setObjectName(formName);
    setWindowTitle(caption);
    browser_ = new ModuleWebView(this);
    browser_->setObjectName(browserName);
    // Announced with the document's own title.
    browser_->setAccessibleName(caption);
    // The layout keeps the browser filling the form; a minimised form keeps its size.
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser_);
    connect(browser_, &QWebEngineView::loadFinished, this, &WebViewerForm::loadFinished);
    resize(900, 650);
}

PreviewForm::PreviewForm(Session& session, QWidget* parent)
    : WebViewerForm("frmPreview", "Preview", "wwwPreview", parent), session_(session) {}

void PreviewForm::refreshPreview() {
    browser_->navigateTo(QString::fromStdString(
        joinPath(session_.module.ModuleFolder, session_.module.framesetFile)));
}

HelpForm::HelpForm(Session& session, QWidget* parent)
    : WebViewerForm("frmHelp", "Help", "wwwBrowser", parent), session_(session) {}

QUrl HelpForm::onlineHelpAddress() {
    return QUrl(QSettings().value(kOnlineHelpKey).toString());
}

QString HelpForm::offlineHelpFile() const {
    return QString::fromStdString(session_.AppPath + "Help" + kSep + "lessonFrameset.html");
}

void HelpForm::refreshBrowser(const QString& HelpLocation) {
    if (HelpLocation == "offline") {
        browser_->navigateTo(offlineHelpFile());
        return;
    }
    const QUrl online = onlineHelpAddress();
    if (!online.isEmpty()) {
        browser_->navigateTo(online.toString());
        return;
    }
    // No address to open: say so, and link the help that comes with the program. The page is
    // placed in the help's folder so that its link is an ordinary relative one.
    const QString page =
        "<html><head><title>Help</title></head><body style=\"font-family: sans-serif; "
        "margin: 2em\">"
        "<h2>No online help address is set</h2>"
        "<p>Set the address of the online help under <b>File &gt; Settings...</b></p>"
        "<p><a id=offline href=\"lessonFrameset.html\">Show the help that comes with "
        "Lumora</a></p></body></html>";
    browser_->setHtml(page, lumoraUrlForFile(QString::fromStdString(session_.AppPath + "Help" +
                                                                    kSep + "no-online-help")));
}

} // namespace lumora
