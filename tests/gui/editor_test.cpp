// The HTML editing widget and the preview/help web view, driven in a real web engine on the
// offscreen platform: the classic content dialect, author edits reaching C++, content scripts
// kept inert, the lumora-file scheme and the viewers' navigation rule.
#include "GuiFixture.h"

#include "forms/editor/HtmlEditor.h"
#include "forms/web/LumoraScheme.h"
#include "forms/web/ModuleWebView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::kWaitMs;
using testing::runScript;
using testing::tinyPng;

void writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
}

std::string str(const QVariant& value) {
    return value.toString().toStdString();
}

// ---- the editing widget ------------------------------------------------------------------

class HtmlEditorTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        writeFile(stylesheet(), "body { font-family: Verdana; }\r\n");
        writeFile(folder.filePath("media/pic.png"), tinyPng());
        editor.resize(640, 480);
        editor.show();
    }

    QString stylesheet() const { return folder.filePath("css/camstyle.css"); }

    void show(const QString& html) {
        QSignalSpy loaded(&editor, &HtmlEditor::loaded);
        editor.setContent(html, stylesheet(), folder.path());
        ASSERT_TRUE(loaded.wait(kWaitMs)) << "the editor never reported its content loaded";
        ASSERT_TRUE(editor.isLoaded());
    }

    QVariant js(const QString& script) { return runScript(editor.view()->page(), script); }

    QString serialised() { return js("lumoraEditor.bodyHTML()").toString(); }

    // Runs an author action in the document and waits for the push it causes; the push may
    // arrive while the script's own result is still on its way back.
    void editAndWait(QSignalSpy& changed, const QString& script) {
        const qsizetype before = changed.size();
        js(script);
        ASSERT_TRUE(QTest::qWaitFor([&] { return changed.size() > before; }, kWaitMs))
            << "no contentChanged after " << script.toStdString();
    }

    // Selects the text `word` inside the first element matching `selector`.
    void selectWord(const QString& selector, const QString& word) {
        js(QStringLiteral("(() => { const el = document.querySelector('%1');"
                          " const node = el.firstChild; const at = node.data.indexOf('%2');"
                          " const r = document.createRange(); r.setStart(node, at);"
                          " r.setEnd(node, at + %3); const s = getSelection();"
                          " s.removeAllRanges(); s.addRange(r); })()")
               .arg(selector, word)
               .arg(word.size()));
    }

    QTemporaryDir folder;
    HtmlEditor editor;
};

// Each content shown in turn: until the author edits, the editor gives back exactly what it
// was given; its serialisation is the classic dialect (upper-case names, quoted values, the
// table body made explicit) keeping bare attributes, raw script text and each content's own
// attribute spellings, never those of the content before.
TEST_F(HtmlEditorTest, SerialisesContentInTheClassicDialect) {
    const QString gif = folder.filePath("app/QAndAStart.gif");
    const std::vector<std::pair<QString, QString>> rows = {
        {"<P>Intro with <b>bold</b> &amp; 3 &lt; 4&nbsp;text</P>\r\n"
         "<TABLE border=1 cellPadding=2><TR><TD nowrap>cell</TD></TR></TABLE>\r\n"
         "<P><IMG src=\"" +
             gif + "\">3</P><BR><!-- note --><P>&nbsp;</P>",
         "<P>Intro with <B>bold</B> &amp; 3 &lt; 4&nbsp;text</P>\r\n"
         "<TABLE border=\"1\" cellPadding=\"2\"><TBODY><TR><TD nowrap>cell</TD></TR></TBODY>"
         "</TABLE>\r\n<P><IMG src=\"" +
             gif + "\">3</P><BR><!-- note --><P>&nbsp;</P>"},
        {"<P><a href=\"#term3\" name=\"term3\" onClick=\"parentRef.showGlossaryPopup('3', 240, "
         "180);\" border=0>term</a></P><SCRIPT language=JavaScript>if (a < b && c) { f(\"q\"); "
         "}</SCRIPT>",
         "<P><A href=\"#term3\" name=\"term3\" onClick=\"parentRef.showGlossaryPopup('3', 240, "
         "180);\" border=\"0\">term</A></P><SCRIPT language=\"JavaScript\">if (a < b && c) { "
         "f(\"q\"); }</SCRIPT>"},
        {"<P><A HREF=\"b.html\" onclick=\"g()\">b</A></P>",
         "<P><A HREF=\"b.html\" onclick=\"g()\">b</A></P>"},
    };
    for (const auto& [page, expected] : rows) {
        show(page);
        EXPECT_EQ(editor.bodyHtml(), page);
        EXPECT_EQ(str(serialised()), expected.toStdString());
    }
}

// Key presses push the new content, and the browser's own undo stays with them (Ctrl+Y redoes);
// setting content pushes nothing: pushes travel in order, so one from setContent would arrive
// before the typing's. (Edits by the browser's commands push too: PushedContentFollows....)
TEST_F(HtmlEditorTest, TypingPushesTheNewContentUndoesAndRedoesAndLoadingPushesNothing) {
    QSignalSpy changed(&editor, &HtmlEditor::contentChanged);
    show("<P>Hello</P>");
    show("<P>x</P>");
    editor.view()->setFocus();
    js("getSelection().collapse(document.querySelector('P').firstChild, 1)");
    QWidget* target = editor.view()->focusProxy() ? editor.view()->focusProxy() : editor.view();
    QTest::keyClicks(target, "ab");
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.bodyHtml() == "<P>xab</P>"; }, kWaitMs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !changed.isEmpty(); }, kWaitMs));
    EXPECT_TRUE(str(changed.first().first()).starts_with("<P>xa")) << "a push from loading";
    QTest::keyClick(target, Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.bodyHtml() == "<P>x</P>"; }, kWaitMs))
        << str(editor.bodyHtml());
    QTest::keyClick(target, Qt::Key_Y, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.bodyHtml() == "<P>xab</P>"; }, kWaitMs))
        << str(editor.bodyHtml());
}

TEST_F(HtmlEditorTest, ContentScriptsAndInlineHandlersNeverRun) {
    const QString page = "<P>x</P><SCRIPT>window.ranScript = 1;</SCRIPT>"
                         "<IMG src=\"missing.png\" onerror=\"window.ranHandler = 1\">"
                         "<A href=\"#\" onClick=\"window.ranClick = 1\">c</A>";
    show(page);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return js("document.querySelector('IMG').complete").toBool(); }, kWaitMs));
    js("document.querySelector('A').click()");
    EXPECT_EQ(
        str(js("typeof window.ranScript + typeof window.ranHandler + typeof window.ranClick")),
        "undefinedundefinedundefined");
    // Inert, yet kept: the handlers come back spelt as written.
    EXPECT_EQ(str(serialised()), page.toStdString());
}

TEST_F(HtmlEditorTest, JustifyNoneRemovesTheAlignmentOfTheSelectedBlocks) {
    show("<P align=center>one</P><DIV style=\"text-align: right; color: red\">two</DIV>"
         "<P align=right>three</P>");
    QSignalSpy changed(&editor, &HtmlEditor::contentChanged);
    js("(() => { const ps = document.querySelectorAll('P, DIV');"
       " getSelection().setBaseAndExtent(ps[0].firstChild, 1, ps[1].firstChild, 1); })()");
    editor.execCommand("JustifyNone");
    ASSERT_TRUE(changed.wait(kWaitMs));
    EXPECT_EQ(str(editor.bodyHtml()),
              "<P>one</P><DIV style=\"color: red;\">two</DIV><P align=\"right\">three</P>");
}

TEST_F(HtmlEditorTest, PastedHtmlReplacesTheSelectionAndKeepsItsSpelling) {
    const QString image = folder.filePath("media/pic.png");
    show("<P>one two</P><P><IMG src=\"" + image + "\"></P>");
    // Pasting replaces the selected image; the attribute spelling of the pasted HTML is kept.
    // (Which selection Cut takes is driven through the Edit menu.)
    js("lumoraEditor.selectNode(document.querySelector('IMG'))");
    QSignalSpy changed(&editor, &HtmlEditor::contentChanged);
    editAndWait(changed, "lumoraEditor.pasteHTML('<a href=\"#term0\" onClick=\"x()\">T</a>')");
    EXPECT_EQ(str(editor.bodyHtml()),
              "<P>one two</P><P><A href=\"#term0\" onClick=\"x()\">T</A></P>");

    // The caret sits after the pasted link: more HTML goes after it.
    editAndWait(changed, "lumoraEditor.pasteHTML('<IMG src=\"b.gif\">')");
    EXPECT_EQ(str(editor.bodyHtml()),
              "<P>one two</P><P><A href=\"#term0\" onClick=\"x()\">T</A><IMG src=\"b.gif\"></P>");

    selectWord("P", "one ");
    editAndWait(changed, "lumoraEditor.clearSelection()");
    EXPECT_EQ(str(editor.bodyHtml()),
              "<P>two</P><P><A href=\"#term0\" onClick=\"x()\">T</A><IMG src=\"b.gif\"></P>");
}

// Each block's serialisation is reused until something inside it changes; after edits,
// undo and redo the pushed content must equal a serialisation made from scratch (the HTML of
// a selection of everything).
TEST_F(HtmlEditorTest, PushedContentFollowsEditsUndoAndRedo) {
    show("<P>alpha</P><P>beta</P><P>gamma delta</P><UL><LI>one</LI></UL>");
    QSignalSpy changed(&editor, &HtmlEditor::contentChanged);
    const QString fromScratch =
        "getSelection().selectAllChildren(document.body); lumoraEditor.selectionHTML()";
    const QStringList steps = {
        "(() => { const t = document.querySelectorAll('P')[1].firstChild;"
        " getSelection().collapse(t, 4); document.execCommand('insertText', false, 'X'); })()",
        "(() => { const t = document.querySelectorAll('P')[2].firstChild;"
        " getSelection().setBaseAndExtent(t, 0, t, 5); document.execCommand('bold'); })()",
        "(() => { const ps = document.querySelectorAll('P');"
        " getSelection().setBaseAndExtent(ps[0].firstChild, 2, ps[1].firstChild, 2);"
        " document.execCommand('delete'); })()",
        "document.execCommand('undo')",
        "document.execCommand('undo')",
        "document.execCommand('redo')",
        "(() => { const li = document.querySelector('LI').firstChild;"
        " getSelection().collapse(li, 3); document.execCommand('insertParagraph'); })()",
    };
    for (const QString& step : steps) {
        editAndWait(changed, step);
        EXPECT_EQ(str(editor.bodyHtml()), str(js(fromScratch))) << step.toStdString();
    }
    EXPECT_EQ(
        str(editor.bodyHtml()),
        "<P>alpha</P><P>betaX</P><P><B>gamma</B> delta</P><UL><LI>one</LI><LI><BR></LI></UL>");
}

// Over the whole body: the last "two" lies more than 1000 characters beyond the start of the
// search, and a match never runs from one paragraph into the next. (Searching a selection and
// replacing a match are driven through the find dialog.)
TEST_F(HtmlEditorTest, TextRangeSearchStopsAtTheCountAndAtParagraphs) {
    show("<P>one two one two</P><P>" + QString(1200, QChar('x')) + " two</P>");
    const std::vector<std::tuple<QString, int, bool>> searches = {
        {"one two one", 1000, true}, {" two", 5, false},    {"x two", 1000, false},
        {"x two", 2000, true},       {"twox", 2000, false},
    };
    for (const auto& [text, count, found] : searches)
        EXPECT_EQ(js(QStringLiteral("lumoraEditor.rangeCreate('all', 'body');"
                                    " lumoraEditor.rangeFindText('all', '%1', %2, 0)")
                         .arg(text)
                         .arg(count))
                      .toBool(),
                  found)
            << text.toStdString() << " within " << count;
}

// Selecting one item after another faster than the engine loads: only the last content is
// shown and reported loaded, whether or not the shell had to be replaced on the way.
TEST_F(HtmlEditorTest, RapidSetContentShowsTheLastContent) {
    QTemporaryDir otherFolder;
    QSignalSpy loaded(&editor, &HtmlEditor::loaded);
    editor.setContent("<P>one</P>", stylesheet(), folder.path());
    editor.setContent("<P>two</P>", stylesheet(), otherFolder.path());
    editor.setContent("<P>three</P>", stylesheet(), otherFolder.path());
    ASSERT_TRUE(loaded.wait(kWaitMs));
    EXPECT_EQ(str(serialised()), "<P>three</P>");
    EXPECT_EQ(str(editor.bodyHtml()), "<P>three</P>");

    show("<P>four</P>"); // back to the first folder: a new shell again
    EXPECT_EQ(str(serialised()), "<P>four</P>");
    EXPECT_EQ(str(js("document.baseURI")),
              QUrl::fromLocalFile(folder.path() + "/").toString().toStdString());
    EXPECT_EQ(loaded.size(), 2);
}

TEST(HtmlEditorFocus, ReportsWhenTheEditorGetsTheFocus) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* field = new QLineEdit(&window);
    auto* editor = new HtmlEditor(&window);
    layout->addWidget(field);
    layout->addWidget(editor);
    window.show();
    QApplication::setActiveWindow(&window);
    QSignalSpy loaded(editor, &HtmlEditor::loaded);
    editor->setContent("<P>x</P>", {}, QDir::tempPath());
    ASSERT_TRUE(loaded.wait(kWaitMs));

    field->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return field->hasFocus(); }, kWaitMs));
    QSignalSpy focused(editor, &HtmlEditor::focusReceived);
    editor->view()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !focused.isEmpty(); }, kWaitMs));

    field->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return field->hasFocus(); }, kWaitMs));
    EXPECT_EQ(focused.size(), 1) << "leaving the editor is not a focus of the editor";
}

// ---- the lumora-file scheme ----------------------------------------------------------------

TEST(LumoraScheme, ResolvesOnlyInsideTheRootWithMimeTypesByExtension) {
    EXPECT_EQ(resolveInsideRoot("/m/Lesson1", "/media/a b.png"), "/m/Lesson1/media/a b.png");
    EXPECT_EQ(resolveInsideRoot("/m/Lesson1", "/scripts/../page0.html"), "/m/Lesson1/page0.html");
    for (const char* outside : {"/../Lesson2/page0.html", "/../Lesson1x/page0.html", "/"})
        EXPECT_EQ(resolveInsideRoot("/m/Lesson1", outside), "") << outside;

    EXPECT_EQ(mimeTypeForFile("lessonframeset.html"), "text/html");
    EXPECT_EQ(mimeTypeForFile("scripts/inc_ModuleInfo.js"), "text/javascript");
    EXPECT_EQ(mimeTypeForFile("a.GIF"), "image/gif");
    EXPECT_EQ(mimeTypeForFile("a.svg"), "image/svg+xml");
    EXPECT_EQ(mimeTypeForFile("README"), "application/octet-stream");
}

TEST(LumoraScheme, EachFolderIsOneOriginAndMapsBack) {
    const QUrl frameset = lumoraUrlForFile("/work/MyContent/L1/lessonframeset.html");
    const QUrl other = lumoraUrlForFile("/work/MyContent/L2/lessonframeset.html");
    EXPECT_EQ(frameset.scheme(), "lumora-file");
    EXPECT_NE(frameset.host(), other.host());
    QUrl page = frameset.resolved(QUrl("media/a%20b.png"));
    EXPECT_EQ(page.host(), frameset.host());
    EXPECT_EQ(localFileForLumoraUrl(page), "/work/MyContent/L1/media/a b.png");
    EXPECT_EQ(localFileForLumoraUrl(QUrl("lumora-file://unknown/x.html")), "");
    EXPECT_EQ(localFileForLumoraUrl(QUrl("file:///work/MyContent/L1/page0.html")), "");
}

// ---- preview and help --------------------------------------------------------------------

class ModuleWebViewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        view.resize(640, 480);
        view.show();
    }

    QVariant js(const QString& script) { return runScript(view.page(), script); }

    QString module(const QString& name) const { return folder.filePath("Lesson1/" + name); }

    QTemporaryDir folder;
    ModuleWebView view;
};

TEST_F(ModuleWebViewTest, FramesOfAModuleScriptEachOther) {
    writeFile(module("scripts/inc_ModuleInfo.js"), "var modTitle = \"Frames\";\r\n");
    writeFile(module("lessonframeset.html"),
              "<html><head><script src=\"scripts/inc_ModuleInfo.js\"></script>"
              "<script>var secret = 42;</script></head>"
              "<frameset rows=\"*\"><frame src=\"page0.html\"></frameset></html>");
    writeFile(module("page0.html"),
              "<html><body><img id=\"ok\" src=\"media/pic.png\" onload=\"parent.picLoaded = 1\">"
              "<img src=\"media/none.png\" onerror=\"parent.missingFailed = 1\">"
              "<script>parent.childSaw = parent.secret + ':' + parent.modTitle;</script>"
              "</body></html>");
    writeFile(module("media/pic.png"), tinyPng());

    QSignalSpy finished(&view, &QWebEngineView::loadFinished);
    view.navigateTo(module("lessonframeset.html"));
    ASSERT_TRUE(finished.wait(kWaitMs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return js("window.childSaw").isValid(); }, kWaitMs));
    EXPECT_EQ(str(js("window.childSaw")), "42:Frames");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return js("!!(window.picLoaded && window.missingFailed)").toBool(); }, kWaitMs))
        << "an existing image loads and a missing one fails";
}

TEST_F(ModuleWebViewTest, SameTargetReloadsFromDiskAndWaitsWhileLoading) {
    const QString frameset = module("lessonframeset.html");
    writeFile(frameset, "<html><body>first</body></html>");
    QSignalSpy finished(&view, &QWebEngineView::loadFinished);

    EXPECT_EQ(view.navigateTo(frameset), ModuleWebView::NavigationAction::Navigated);
    EXPECT_EQ(view.locationText(), frameset);
    EXPECT_EQ(view.navigateTo(frameset), ModuleWebView::NavigationAction::Ignored);
    ASSERT_TRUE(finished.wait(kWaitMs));
    EXPECT_EQ(str(js("document.body.textContent")), "first");
    EXPECT_EQ(view.locationText(), frameset);

    // Saved since the last preview: the same target shows the file as it is now.
    writeFile(frameset, "<html><body>second</body></html>");
    EXPECT_EQ(view.navigateTo(frameset), ModuleWebView::NavigationAction::Reloaded);
    ASSERT_TRUE(finished.wait(kWaitMs));
    EXPECT_EQ(str(js("document.body.textContent")), "second");
}

} // namespace
} // namespace lumora
