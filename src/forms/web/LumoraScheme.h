// The "lumora-file" URL scheme: serves the files of a module folder (or the help folder) to
// the preview and help views. Every file of one folder has the same origin
// (lumora-file://<folder id>/...), so the frames of a module script each other as they do on
// a web server, and no network port is ever opened.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

class QWebEngineProfile;

namespace lumora {

inline constexpr char kLumoraFileScheme[] = "lumora-file";

// Declares the scheme to the web engine. Must run before the QApplication is created.
void registerLumoraSchemes();

// Serves the scheme on the profile (once per profile; further calls do nothing).
void installLumoraSchemeHandler(QWebEngineProfile* profile);

// The address of a local file; the file's folder becomes the root its requests may reach.
QUrl lumoraUrlForFile(const QString& localFile);

// The local file an address of the scheme stands for, or "" when the address is not ours,
// names an unknown folder or leaves its folder.
QString localFileForLumoraUrl(const QUrl& url);

// Joins a request path onto a root folder; "" when the result would lie outside the root.
QString resolveInsideRoot(const QString& root, const QString& requestPath);

// The MIME type the file is served with, by its extension.
QByteArray mimeTypeForFile(const QString& fileName);

} // namespace lumora
