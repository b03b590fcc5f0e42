// The HTML editing widget: shell loading, the content generation handshake with editor.js,
// and the push of author edits.
#include "forms/editor/HtmlEditor.h"

#include "forms/editor/EditorBridge.h"
#include "forms/editor/EditorPage.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QPointer>
#include <QUrl>
#include <QVBoxLayout>
#include <QWebChannel>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineView>

// Resources of a static library must be registered by hand; outside the namespace by rule.
static void initEditorResources() {
    Q_INIT_RESOURCE(editor);
}

namespace lumora {

namespace {

// The player's layout stylesheet, beside the module's stylesheet in its css folder.
const QString kLayoutStylesheet = QStringLiteral("player.css");

QString readResource(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("HtmlEditor: resource %s is missing", qPrintable(path));
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

QWebEngineScript mainWorldScript(const QString& name, const QString& source) {
    QWebEngineScript script;
    script.setName(name);
    script.setSourceCode(source);
    // The main world, so that the page's own objects and the channel transport are shared;
    // at document creation, so that it works whatever the document's origin.
    script.setWorldId(QWebEngineScript::MainWorld);
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setRunsOnSubFrames(false);
    return script;
}

// The document the content lives in. The content security policy forbids every script of
// the page itself: inline handlers such as a term link's onClick, javascript: addresses and
// script elements stay text. Our own scripts are injected by the view and are not affected.
// A module's pages load the player's layout stylesheet and then the module's own, and their
// body carries the class the module's content colours are given by; the editor's document
// does the same, so the content looks as it will in the course. The title is what a screen
// reader announces for the document: the editor's name.
QString shellHtml(int shell, const QString& stylesheetPath, const QString& title) {
    QString head =
        QStringLiteral("<meta charset=\"utf-8\"><title>") + title.toHtmlEscaped() +
        QStringLiteral("</title><meta http-equiv=\"Content-Security-Policy\" content=\"script-src "
                       "'none'; object-src 'none'; frame-src 'none'; child-src 'none'; "
                       "form-action 'none'\">");
    const auto link = [&head](const QString& path) {
        head += QStringLiteral("<link rel=\"stylesheet\" type=\"text/css\" href=\"%1\">")
                    .arg(QUrl::fromLocalFile(path).toString().toHtmlEscaped());
    };
    if (!stylesheetPath.isEmpty()) {
        const QString layout = QFileInfo(stylesheetPath).dir().filePath(kLayoutStylesheet);
        if (QFileInfo::exists(layout))
            link(layout);
        link(stylesheetPath);
    }
    return QStringLiteral(
               "<html data-lumora-editor=\"%1\"><head>%2</head>"
               "<body class=\"conTable lumPage\" contenteditable=\"true\"></body></html>")
        .arg(QString::number(shell), head);
}

} // namespace

HtmlEditor::HtmlEditor(QWidget* parent) : QWidget(parent) {
    initEditorResources();

    m_view = new QWebEngineView(this);
    m_page = new EditorPage(m_view);
    m_view->setPage(m_page);

    QWebEngineSettings* settings = m_page->settings();
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
    settings->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
    settings->setAttribute(QWebEngineSettings::ErrorPageEnabled, false);

    m_bridge = new EditorBridge(this);
    m_channel = new QWebChannel(this);
    m_channel->registerObject(QStringLiteral("lumoraBridge"), m_bridge);
    m_page->setWebChannel(m_channel, QWebEngineScript::MainWorld);

    m_page->scripts().insert(
        mainWorldScript(QStringLiteral("qwebchannel"),
                        readResource(QStringLiteral(":/qtwebchannel/qwebchannel.js"))));
    m_page->scripts().insert(
        mainWorldScript(QStringLiteral("lumora-editor"),
                        readResource(QStringLiteral(":/lumora/editor/editor.js"))));

    connect(m_bridge, &EditorBridge::shellReadyReceived, this, &HtmlEditor::onShellReady);
    connect(m_bridge, &EditorBridge::contentPushed, this, &HtmlEditor::onContentPushed);
    connect(m_bridge, &EditorBridge::formatStatePushed, this,
            [this](int generation, const QString& commands) {
                if (generation == m_generation && m_loaded)
                    emit formatStateChanged(commands.split(QLatin1Char(','), Qt::SkipEmptyParts));
            });
    connect(qApp, &QApplication::focusChanged, this, &HtmlEditor::onFocusChanged);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);
}

HtmlEditor::~HtmlEditor() = default;

void HtmlEditor::setEditorName(const QString& name) {
    // The focus rests inside the web view, so the view carries the name as well.
    setAccessibleName(name);
    m_view->setAccessibleName(name);
}

void HtmlEditor::setContent(const QString& editorHtml, const QString& stylesheetPath,
                            const QString& baseFolder) {
    m_bodyHtml = editorHtml;
    m_stylesheetPath = stylesheetPath;
    m_baseFolder = baseFolder;
    m_loaded = false;
    m_contentPending = true;
    ++m_generation; // pushes of the previous content are stale from now on

    const QString key = stylesheetPath + QLatin1Char('\n') + baseFolder;
    if (key != m_shellKey) {
        m_shellKey = key;
        loadShell();
    } else if (m_shellReady) {
        applyPendingContent();
    }
    // Otherwise the shell is still loading; onShellReady applies the content.
}

void HtmlEditor::loadShell() {
    m_shellReady = false;
    QString base = m_baseFolder;
    if (!base.endsWith(QLatin1Char('/'))) {
        base += QLatin1Char('/');
    }
    m_page->expectShellLoad();
    m_page->setHtml(shellHtml(++m_shell, m_stylesheetPath, accessibleName()),
                    QUrl::fromLocalFile(base));
}

void HtmlEditor::onShellReady(int shell) {
    // A shell replaced while it was coming up may still announce itself.
    if (shell != m_shell) {
        return;
    }
    m_shellReady = true;
    if (m_contentPending) {
        applyPendingContent();
    }
}

void HtmlEditor::applyPendingContent() {
    m_contentPending = false;
    const int generation = m_generation;
    m_page->runJavaScript(
        callScript(QStringLiteral("setBody"), {m_bodyHtml, generation, m_reportsFormatState}),
        QWebEngineScript::MainWorld, [this, generation](const QVariant& set) {
            if (generation != m_generation) {
                return;
            }
            if (!set.toBool()) {
                // The document went away underneath (a new shell is loading); its
                // announcement brings the content.
                m_contentPending = true;
                return;
            }
            m_loaded = true;
            emit loaded();
        });
}

void HtmlEditor::onContentPushed(int generation, const QString& html) {
    if (generation != m_generation || !m_loaded) {
        return;
    }
    m_bodyHtml = html;
    emit contentChanged(html);
}

void HtmlEditor::execCommand(const QString& command, const QString& value) {
    runJavaScript(callScript(QStringLiteral("execCommand"), {command, value}));
}

void HtmlEditor::call(const QString& operation, const QVariantList& arguments,
                      std::function<void(const QVariant&)> done) {
    const QString js = callScript(QStringLiteral("command"), {operation, QVariant(arguments)});
    QPointer<HtmlEditor> self(this);
    m_page->runJavaScript(js, QWebEngineScript::MainWorld,
                          [self, done = std::move(done)](const QVariant& reply) {
                              if (!self)
                                  return;
                              const QVariantMap map = reply.toMap();
                              self->takeCommandReply(map);
                              if (done)
                                  done(map.value(QStringLiteral("result")));
                          });
}

void HtmlEditor::takeCommandReply(const QVariantMap& reply) {
    const QVariant body = reply.value(QStringLiteral("body"));
    if (!m_loaded || reply.value(QStringLiteral("generation")).toInt() != m_generation ||
        body.userType() != QMetaType::QString)
        return;
    m_bodyHtml = body.toString();
    emit contentChanged(m_bodyHtml);
}

void HtmlEditor::runJavaScript(const QString& js, std::function<void(const QVariant&)> done) {
    if (done) {
        m_page->runJavaScript(js, QWebEngineScript::MainWorld, std::move(done));
    } else {
        m_page->runJavaScript(js, QWebEngineScript::MainWorld);
    }
}

QString HtmlEditor::callScript(const QString& function, const QVariantList& arguments) {
    const QByteArray json =
        QJsonDocument(QJsonArray::fromVariantList(arguments)).toJson(QJsonDocument::Compact);
    return QStringLiteral("window.lumoraEditor.%1.apply(window.lumoraEditor, %2)")
        .arg(function, QString::fromUtf8(json));
}

void HtmlEditor::onFocusChanged(QWidget*, QWidget* now) {
    if (now && (now == m_view || m_view->isAncestorOf(now))) {
        // The view makes the widget that holds its focus when a document first loads.
        if (now != m_focusHolder) {
            m_focusHolder = now;
            now->installEventFilter(this);
        }
        emit focusReceived();
    }
}

bool HtmlEditor::eventFilter(QObject* watched, QEvent* event) {
    // Tab leaves the editor for the form's next control, as it leaves any other field; the
    // document would keep it among its own elements.
    if (watched == m_focusHolder && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool plain =
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        if (plain && (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab)) {
            focusNextPrevChild(key->key() == Qt::Key_Tab &&
                               !(key->modifiers() & Qt::ShiftModifier));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace lumora
