// The main form over an open Lesson with its page and question editors loaded, the common
// dialogs answered from a script, and helpers that select in an editor's document and wait for
// an editing command to complete.
#pragma once

#include "GuiFixture.h"

#include "forms/FormDialogs.h"
#include "forms/editor/HtmlEditor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTabWidget>

#include <deque>

namespace lumora::testing {

// The file-open and colour dialogs, answered from queues; an empty queue cancels.
class ScriptedDialogs : public FormDialogs {
  public:
    std::deque<QString> files;
    std::deque<QColor> colors;
    std::vector<QString> filters;
    std::vector<QColor> initialColors;

    QString openFile(QWidget*, const QString& filter) override {
        filters.push_back(filter);
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

class EditingTest : public GuiTest {
  protected:
    void SetUp() override {
        GuiTest::SetUp();
        form = openModule("Course1", "Lesson");
        ASSERT_NE(form, nullptr);
        form->setDialogs(&dialogs);
        page = control<HtmlEditor>(form, "dhtmlLessonEdit");
        question = control<HtmlEditor>(form, "dhtmlQuestionEdit");
        ASSERT_TRUE(QTest::qWaitFor([&] { return page->isLoaded(); }, kWaitMs));
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
        control<QTabWidget>(form, "tabMain")->setCurrentIndex(1);
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

    QVariant js(HtmlEditor* editor, const QString& script) { return runScript(editor, script); }

    // Selects from the first `from` to the end of the last `to` in the text of the elements
    // matching `selector` (`to` defaults to `from`).
    void select(HtmlEditor* editor, const QString& selector, const QString& from,
                const QString& to = {}) {
        js(editor,
           QStringLiteral("(() => { const nodes = [];"
                          " for (const e of document.querySelectorAll('%1')) {"
                          "   const w = document.createTreeWalker(e, 4);"
                          "   for (let n = w.nextNode(); n; n = w.nextNode()) nodes.push(n); }"
                          " const a = nodes.find(n => n.data.includes(%2));"
                          " const b = nodes.filter(n => n.data.includes(%3)).pop();"
                          " const r = document.createRange(); r.setStart(a, a.data.indexOf(%2));"
                          " r.setEnd(b, b.data.lastIndexOf(%3) + %3.length);"
                          " getSelection().removeAllRanges(); getSelection().addRange(r); })()")
               .arg(selector, quoted(from), quoted(to.isEmpty() ? from : to)));
    }
    // The caret inside `word`, after its first character.
    void caretIn(HtmlEditor* editor, const QString& word) {
        js(editor, QStringLiteral("(() => { const w = document.createTreeWalker(document.body, 4);"
                                  " for (let n = w.nextNode(); n; n = w.nextNode())"
                                  "   if (n.data.includes(%1)) {"
                                  "     getSelection().collapse(n, n.data.indexOf(%1) + 1);"
                                  "     return; } })()")
                       .arg(quoted(word)));
    }
    // A click on the first element matching `selector` (an image or table: selected whole).
    void clickOn(HtmlEditor* editor, const QString& selector) {
        js(editor, QStringLiteral("document.querySelector('%1').click()").arg(selector));
    }
    static QString quoted(const QString& text) { return jsString(text); }

    // Runs an action that ends in commandFinished and waits for it.
    void run(const std::function<void()>& action) {
        QSignalSpy finished(form, &MainForm::commandFinished);
        action();
        ASSERT_TRUE(finished.count() > 0 || finished.wait(kWaitMs))
            << "the command never completed";
    }

    void click(const char* button) {
        run([&] { control<QAbstractButton>(form, button)->click(); });
    }

    static void clipboardText(const QString& text) { QApplication::clipboard()->setText(text); }
    static QString clipboardText() { return QApplication::clipboard()->text(); }

    const std::string& pageContent() { return session.module.pages[0].content; }

    MainForm* form = nullptr;
    HtmlEditor* page = nullptr;
    HtmlEditor* question = nullptr;
    ScriptedDialogs dialogs;
};

} // namespace lumora::testing
