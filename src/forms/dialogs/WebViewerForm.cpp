// The preview and help viewers over a ModuleWebView, which serves a module folder as one
// origin (its frames script each other) without opening a network port.
#include "forms/dialogs/WebViewerForm.h"

#include "app/Session.h"
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
    QSettings settings;
    return QUrl(settings.value("help/onlineUrl", "https://lumora.example/help/").toString());
}

void HelpForm::refreshBrowser(const QString& HelpLocation) {
    if (HelpLocation == "offline")
        browser_->navigateTo(
            QString::fromStdString(session_.AppPath + "Help" + kSep + "lessonFrameset.html"));
    else
        browser_->navigateTo(onlineHelpAddress().toString());
}

} // namespace lumora
