// The main form over a module copied from a template, the common dialogs answered from a script,
// and the helpers the authoring and editing tests share: clicking the item buttons, releasing
// keys in the lists, reading the lists and pages, selecting in an editor's document and waiting
// for an editing command or an insertion to complete.
#pragma once

#include "GuiFixture.h"

#include "forms/FormDialogs.h"
#include "forms/dialogs/InsertChooser.h"
#include "forms/editor/HtmlEditor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include <deque>
#include <string>
#include <vector>

namespace lumora::testing {

// The file-open and colour dialogs, answered from queues; an empty queue cancels.
class ScriptedDialogs : public FormDialogs {
  public:
    std::deque<QString> files;
    std::deque<QColor> colors;
    std::vector<QColor> initialColors;

    QString openFile(QWidget*, const QString&) override {
        if (files.empty())
            return {};
        QString f = files.front();
        files.pop_front();
        return f;
    }
    std::optional<QColor> color(QWidget*, const QColor& initial) override {
        initialColors.push_back(initial);
        if (colors.empty())
            return std::nullopt;
        QColor c = colors.front();
        colors.pop_front();
        return c;
    }
};

class AuthoringTest : public GuiTest {
  protected:
    void open(const std::string& type) {
        type_ = type;
        form = openModule("Course1", type);
        ASSERT_NE(form, nullptr);
        form->setDialogs(&dialogs);
    }

    void click(const char* button) { control<QAbstractButton>(form, button)->click(); }
    QListWidget* list(const char* name) { return control<QListWidget>(form, name); }
    void showTab(int tab) { control<QTabWidget>(form, "tabMain")->setCurrentIndex(tab); }
    // A selection made as the author makes it: the list's click handler runs.
    void select(const char* listName, int row) { list(listName)->setCurrentRow(row); }

    // A paste into a one-line field (of the main form, or of `in`): one edit that replaces what
    // the field held, every character as it is.
    void paste(const char* name, const QString& text, QWidget* in = nullptr) {
        auto* field = control<QLineEdit>(in ? in : form, name);
        field->selectAll();
        field->insert(text);
    }

    std::vector<QString> rows(const char* listName) {
        std::vector<QString> texts;
        QListWidget* l = list(listName);
        for (int i = 0; i < l->count(); ++i)
            texts.push_back(l->item(i)->text());
        return texts;
    }

    std::vector<std::string> pageContents() const {
        std::vector<std::string> contents;
        for (const LessonPage& p : session.module.pages)
            contents.push_back(p.content);
        return contents;
    }

    HtmlEditor* editor(const char* name) { return control<HtmlEditor>(form, name); }
    // Waits for an editor to show the content it was last given.
    void waitLoaded(const char* editorName) {
        HtmlEditor* e = editor(editorName);
        ASSERT_TRUE(QTest::qWaitFor([&] { return e->isLoaded(); }, kWaitMs));
    }

    QVariant js(HtmlEditor* e, const QString& script) { return runScript(e, script); }
    QVariant js(const char* editorName, const QString& script) {
        return js(editor(editorName), script);
    }

    // The caret at the end of an editor's document.
    void caretAtEnd(const char* editorName) {
        js(editorName, "(() => { document.body.focus();"
                       " getSelection().selectAllChildren(document.body);"
                       " getSelection().collapseToEnd(); })()");
    }

    // Puts `text` into an editor's document as the browser's own editing does ('insertText' for
    // typing, 'insertHTML' for a paste), at the end or over the whole document, and waits until
    // the edit has reached the module.
    void edit(const char* editorName, const char* command, const QString& text, bool whole,
              const std::function<bool()>& arrived) {
        waitLoaded(editorName);
        if (whole)
            js(editorName,
               "document.body.focus(); getSelection().selectAllChildren(document.body)");
        else
            caretAtEnd(editorName);
        js(editorName,
           QStringLiteral("document.execCommand('%1', false, %2)").arg(command, jsString(text)));
        ASSERT_TRUE(QTest::qWaitFor(arrived, kWaitMs)) << "the edit never reached the module";
    }
    void typeInEditor(const char* editorName, const QString& text,
                      const std::function<bool()>& arrived) {
        edit(editorName, "insertText", text, false, arrived);
    }

    // Selects from the first `from` to the end of the last `to` in the text of the elements
    // matching `selector` (`to` defaults to `from`).
    void select(HtmlEditor* e, const QString& selector, const QString& from,
                const QString& to = {}) {
        js(e, QStringLiteral("(() => { const nodes = [];"
                             " for (const e of document.querySelectorAll('%1')) {"
                             "   const w = document.createTreeWalker(e, 4);"
                             "   for (let n = w.nextNode(); n; n = w.nextNode()) nodes.push(n); }"
                             " const a = nodes.find(n => n.data.includes(%2));"
                             " const b = nodes.filter(n => n.data.includes(%3)).pop();"
                             " const r = document.createRange(); r.setStart(a, a.data.indexOf(%2));"
                             " r.setEnd(b, b.data.lastIndexOf(%3) + %3.length);"
                             " getSelection().removeAllRanges(); getSelection().addRange(r); })()")
                  .arg(selector, jsString(from), jsString(to.isEmpty() ? from : to)));
    }

    // Runs a chooser's action that inserts and waits until the insertion has completed.
    void inserting(InsertChooser* chooser, const std::function<void()>& action) {
        QSignalSpy finished(chooser, &InsertChooser::insertFinished);
        action();
        ASSERT_TRUE(finished.count() > 0 || finished.wait(kWaitMs)) << "no insertion";
        EXPECT_TRUE(finished.front().front().toBool());
    }
    // A double-click on a chooser's row, which inserts. A widget's double-click event comes after
    // the press and release of the first click.
    void doubleClickRow(InsertChooser* chooser, int row) {
        auto* l = chooser->findChild<QListWidget*>();
        const QPoint at = l->visualItemRect(l->item(row)).center();
        inserting(chooser, [&] {
            QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(l->viewport(), Qt::LeftButton, {}, at);
        });
    }

    // Closes the module and opens it again from its files, as Open does.
    void reopen() {
        session.ResetModule();
        session.module.moduleType = type_;
        session.module.folderName = "Course1";
        ASSERT_TRUE(session.LoadModule());
        form->showLoadedModule();
    }

    MainForm* form = nullptr;
    ScriptedDialogs dialogs;
    std::string type_ = kLesson;
};

// The main form over an open Lesson with its page and question editors loaded.
class EditingTest : public AuthoringTest {
  protected:
    void SetUp() override {
        AuthoringTest::SetUp();
        open(kLesson);
        page = editor("dhtmlLessonEdit");
        question = editor("dhtmlQuestionEdit");
        waitLoaded("dhtmlLessonEdit");
    }

    // Shows `html` (editor form) as the first page's content in the design view.
    void showPage(const std::string& html) {
        session.module.pages[0].content = html;
        session.CurrentPage = 0;
        QSignalSpy loaded(page, &HtmlEditor::loaded);
        form->tabLessonPage_Click();
        ASSERT_TRUE(loaded.wait(kWaitMs));
        session.ModuleChanged = false;
    }

    // Shows `html` as the text of the first Q&A item in the question editor.
    void showQuestion(const std::string& html) {
        showTab(1);
        session.module.questions[0].questionText = html;
        session.CurrentItem = 0;
        QSignalSpy loaded(question, &HtmlEditor::loaded);
        form->setQAndAList();
        ASSERT_TRUE(loaded.wait(kWaitMs));
    }

    // The source view of the page showing `text`, the characters from `from` to `to` selected.
    QPlainTextEdit* showSource(const QString& text, int from = 0, int to = 0) {
        control<QTabWidget>(form, "tabLessonPage")->setCurrentIndex(1);
        auto* source = control<QPlainTextEdit>(form, "txtLessonEdit");
        source->setPlainText(text);
        QTextCursor cursor = source->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        source->setTextCursor(cursor);
        return source;
    }

    // The caret inside `word`, after its first character.
    void caretIn(HtmlEditor* e, const QString& word) {
        js(e, QStringLiteral("(() => { const w = document.createTreeWalker(document.body, 4);"
                             " for (let n = w.nextNode(); n; n = w.nextNode())"
                             "   if (n.data.includes(%1)) {"
                             "     getSelection().collapse(n, n.data.indexOf(%1) + 1);"
                             "     return; } })()")
                  .arg(jsString(word)));
    }
    // A click on the first element matching `selector` (an image or table: selected whole).
    void clickOn(HtmlEditor* e, const QString& selector) {
        js(e, QStringLiteral("document.querySelector('%1').click()").arg(selector));
    }

    // Runs an action that ends in commandFinished and waits for it.
    void run(const std::function<void()>& action) {
        QSignalSpy finished(form, &MainForm::commandFinished);
        action();
        ASSERT_TRUE(finished.count() > 0 || finished.wait(kWaitMs))
            << "the command never completed";
    }
    // A command button, waited for.
    void click(const char* button) {
        run([&] { AuthoringTest::click(button); });
    }

    static void clipboardText(const QString& text) { QApplication::clipboard()->setText(text); }
    static QString clipboardText() { return QApplication::clipboard()->text(); }

    const std::string& pageContent() { return session.module.pages[0].content; }

    HtmlEditor* page = nullptr;
    HtmlEditor* question = nullptr;
};

} // namespace lumora::testing
