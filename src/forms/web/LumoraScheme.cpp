// The "lumora-file" scheme: folder ids, path resolution and the handler that reads files.
#include "forms/web/LumoraScheme.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>

namespace lumora {

namespace {

// Folder ids to folders. Hosts, not paths, carry the folder, so that each folder is one
// origin. Only the GUI thread uses it: the web engine calls scheme handlers there.
QHash<QString, QString>& roots() {
    static QHash<QString, QString> map;
    return map;
}

QString folderId(const QString& folder) {
    const QByteArray digest =
        QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return QStringLiteral("m") + QString::fromLatin1(digest);
}

class LumoraFileHandler : public QWebEngineUrlSchemeHandler {
  public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;

    void requestStarted(QWebEngineUrlRequestJob* job) override {
        if (job->requestMethod() != "GET") {
            job->fail(QWebEngineUrlRequestJob::RequestDenied);
            return;
        }
        const QString path = localFileForLumoraUrl(job->requestUrl());
        if (path.isEmpty()) {
            job->fail(QWebEngineUrlRequestJob::RequestDenied);
            return;
        }
        if (!QFileInfo(path).isFile()) {
            job->fail(QWebEngineUrlRequestJob::UrlNotFound);
            return;
        }
        auto* file = new QFile(path, job);
        if (!file->open(QIODevice::ReadOnly)) {
            job->fail(QWebEngineUrlRequestJob::RequestDenied);
            return;
        }
        job->reply(mimeTypeForFile(path), file);
    }
};

} // namespace

void registerLumoraSchemes() {
    QWebEngineUrlScheme scheme(kLumoraFileScheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // Secure, so that players may use what browsers keep for secure origins; local access,
    // so that a page may still show a file:// address it names explicitly.
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::LocalAccessAllowed |
                    QWebEngineUrlScheme::CorsEnabled |
                    QWebEngineUrlScheme::ContentSecurityPolicyIgnored);
    QWebEngineUrlScheme::registerScheme(scheme);
}

void installLumoraSchemeHandler(QWebEngineProfile* profile) {
    if (profile->urlSchemeHandler(kLumoraFileScheme)) {
        return;
    }
    profile->installUrlSchemeHandler(kLumoraFileScheme, new LumoraFileHandler(profile));
}

QUrl lumoraUrlForFile(const QString& localFile) {
    const QFileInfo info(QDir::cleanPath(QDir::fromNativeSeparators(localFile)));
    const QString folder = info.absolutePath();
    const QString id = folderId(folder);
    roots().insert(id, folder);
    QUrl url;
    url.setScheme(QString::fromLatin1(kLumoraFileScheme));
    url.setHost(id);
    url.setPath(QLatin1Char('/') + info.fileName());
    return url;
}

QString localFileForLumoraUrl(const QUrl& url) {
    if (url.scheme() != QLatin1String(kLumoraFileScheme)) {
        return {};
    }
    const auto root = roots().constFind(url.host());
    if (root == roots().constEnd()) {
        return {};
    }
    return resolveInsideRoot(*root, url.path(QUrl::FullyDecoded));
}

QString resolveInsideRoot(const QString& root, const QString& requestPath) {
    const QString cleanRoot = QDir::cleanPath(root);
    const QString joined = QDir::cleanPath(cleanRoot + QLatin1Char('/') + requestPath);
    const QString prefix =
        cleanRoot.endsWith(QLatin1Char('/')) ? cleanRoot : cleanRoot + QLatin1Char('/');
    if (!joined.startsWith(prefix) || requestPath.contains(QChar(u'\0'))) {
        return {};
    }
    return joined;
}

QByteArray mimeTypeForFile(const QString& fileName) {
    static const QHash<QString, QByteArray> types = {
        {QStringLiteral("html"), "text/html"},        {QStringLiteral("htm"), "text/html"},
        {QStringLiteral("js"), "text/javascript"},    {QStringLiteral("css"), "text/css"},
        {QStringLiteral("json"), "application/json"}, {QStringLiteral("xml"), "text/xml"},
        {QStringLiteral("txt"), "text/plain"},        {QStringLiteral("gif"), "image/gif"},
        {QStringLiteral("png"), "image/png"},         {QStringLiteral("jpg"), "image/jpeg"},
        {QStringLiteral("jpeg"), "image/jpeg"},       {QStringLiteral("svg"), "image/svg+xml"},
        {QStringLiteral("ico"), "image/x-icon"},      {QStringLiteral("mp3"), "audio/mpeg"},
        {QStringLiteral("wav"), "audio/wav"},         {QStringLiteral("mp4"), "video/mp4"},
        {QStringLiteral("webm"), "video/webm"},       {QStringLiteral("pdf"), "application/pdf"},
    };
    return types.value(QFileInfo(fileName).suffix().toLower(), "application/octet-stream");
}

} // namespace lumora
