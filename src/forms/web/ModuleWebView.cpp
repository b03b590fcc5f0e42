// The preview and help browser: the navigation rule over the "lumora-file" scheme.
#include "forms/web/ModuleWebView.h"

#include "forms/web/LumoraScheme.h"

#include <QDir>
#include <QWebEnginePage>
#include <QWebEngineProfile>

namespace lumora {

namespace {

bool isWebAddress(const QString& target) {
    static const QStringList schemes = {QStringLiteral("http:"), QStringLiteral("https:"),
                                        QStringLiteral("lumora-file:"), QStringLiteral("about:")};
    for (const QString& scheme : schemes) {
        if (target.startsWith(scheme, Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

QUrl withoutFragment(QUrl url) {
    url.setFragment(QString());
    return url;
}

} // namespace

ModuleWebView::ModuleWebView(QWidget* parent) : QWebEngineView(parent) {
    installLumoraSchemeHandler(page()->profile());
    connect(this, &QWebEngineView::loadStarted, this, [this] { m_loading = true; });
    connect(this, &QWebEngineView::loadFinished, this, [this] { m_loading = false; });
}

QUrl ModuleWebView::urlForTarget(const QString& target) const {
    return isWebAddress(target) ? QUrl(target) : lumoraUrlForFile(target);
}

ModuleWebView::NavigationAction ModuleWebView::navigateTo(const QString& target) {
    if (locationText() != target) {
        m_requestedUrl = urlForTarget(target);
        m_requestedText = target;
        m_loading = true;
        load(m_requestedUrl);
        return NavigationAction::Navigated;
    }
    if (m_loading) {
        return NavigationAction::Ignored;
    }
    // Shown and complete: reload from disk, so a module saved since is shown as saved.
    m_loading = true;
    triggerPageAction(QWebEnginePage::ReloadAndBypassCache);
    return NavigationAction::Reloaded;
}

QString ModuleWebView::locationText() const {
    // While a load is on its way the view may still report the previous address.
    const QUrl current = m_loading ? m_requestedUrl : url();
    if (current.isEmpty()) {
        return {};
    }
    if (!m_requestedText.isEmpty() && withoutFragment(current) == withoutFragment(m_requestedUrl)) {
        return m_requestedText;
    }
    const QString local = localFileForLumoraUrl(current);
    if (!local.isEmpty()) {
        return QDir::toNativeSeparators(local);
    }
    return current.toString();
}

} // namespace lumora
