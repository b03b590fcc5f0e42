// The HTML editing widget: a web view whose document body is editable, driven by our own
// JavaScript (editor.js) through a web channel. It keeps the body HTML that the author's last
// edit produced, serialised in the classic dialect, so that storing the editor's content is
// a synchronous read.
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <functional>

class QWebChannel;
class QWebEngineView;

namespace lumora {

class EditorBridge;
class EditorPage;

class HtmlEditor : public QWidget {
    Q_OBJECT
  public:
    explicit HtmlEditor(QWidget* parent = nullptr);
    ~HtmlEditor() override;

    // Shows editor-form content (absolute local media paths, activity placeholder images)
    // with the module's stylesheet attached, after the player's layout stylesheet beside it
    // when there is one, as the module's pages load them. baseFolder is the module folder;
    // relative and absolute local paths load from it. Does not emit contentChanged.
    void setContent(const QString& editorHtml, const QString& stylesheetPath,
                    const QString& baseFolder);

    // The content as last given to setContent, or as the author's last edit left it.
    QString bodyHtml() const { return m_bodyHtml; }
    bool isLoaded() const { return m_loaded; }

    // Runs an editing command ("Bold", "FontName", "ForeColor", ...) on the selection; the
    // resulting content is pushed back as contentChanged when it changed anything.
    void execCommand(const QString& command, const QString& value = {});

    // Runs one operation of window.lumoraEditor (editor.js: the selection, the editing
    // commands, text ranges, find) as a single script call. When it changed the document,
    // bodyHtml() and contentChanged carry the new content before `done` gets the operation's
    // result, so whoever stores the content on contentChanged holds the command's outcome by
    // then. `done` gets an invalid value when the document could not run it (still loading).
    void call(const QString& operation, const QVariantList& arguments = {},
              std::function<void(const QVariant&)> done = {});

    // Runs JavaScript in the editor's document (tests, and reads that change nothing).
    void runJavaScript(const QString& js, std::function<void(const QVariant&)> done = {});

    // JavaScript source that calls lumoraEditor.<function> with the given arguments, each
    // passed as a JSON value so that any text arrives unchanged.
    static QString callScript(const QString& function, const QVariantList& arguments);

    QWebEngineView* view() const { return m_view; }

    // What the editor edits ("Page editor"), as screen readers announce it: the accessible name
    // of the widget and its view, and the title of the document loaded from then on.
    void setEditorName(const QString& name);

    // Whether formatStateChanged is reported (for an editor with a toolbar); off by default,
    // so an editor without one spends nothing on it. Takes effect with the next setContent.
    void setReportsFormatState(bool reports) { m_reportsFormatState = reports; }

  signals:
    void contentChanged(const QString& bodyHtml);
    // The on/off commands that hold at the caret ("Bold", "Italic", "Underline", "Subscript",
    // "Superscript", "JustifyLeft", "JustifyCenter", "JustifyRight", "InsertUnorderedList"),
    // each time the caret or selection moves somewhere they differ.
    void formatStateChanged(const QStringList& commands);
    void loaded();
    void focusReceived();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void loadShell();
    void applyPendingContent();
    void onShellReady(int shell);
    void onContentPushed(int generation, const QString& html);
    void takeCommandReply(const QVariantMap& reply);
    void onFocusChanged(QWidget* old, QWidget* now);

    QWebEngineView* m_view = nullptr;
    EditorPage* m_page = nullptr;
    QWebChannel* m_channel = nullptr;
    EditorBridge* m_bridge = nullptr;
    QPointer<QWidget> m_focusHolder; // the view's widget that takes the keys

    QString m_bodyHtml;
    QString m_stylesheetPath;
    QString m_baseFolder;
    QString m_shellKey; // stylesheet and base of the shell that is loaded or loading
    bool m_shellReady = false;
    bool m_loaded = false;
    bool m_contentPending = false;
    bool m_reportsFormatState = false;
    int m_generation = 0; // which setContent the document shows or is about to show
    int m_shell = 0;      // which shell document is loading or loaded
};

} // namespace lumora
