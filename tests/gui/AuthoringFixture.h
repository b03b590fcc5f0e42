// The main form over a module copied from a template, with the helpers the authoring tests
// share: clicking the item buttons, releasing keys in the lists, reading the lists and pages.
#pragma once

#include "GuiFixture.h"

#include "forms/editor/HtmlEditor.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include <string>
#include <vector>

namespace lumora::testing {

class AuthoringTest : public GuiTest {
  protected:
    void open(const std::string& type) {
        type_ = type;
        form = openModule("Course1", type);
        ASSERT_NE(form, nullptr);
    }

    void click(const char* button) { control<QPushButton>(form, button)->click(); }
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
    // Waits for an editor to show the content it was last given.
    void waitLoaded(const char* editorName) {
        auto* editor = control<HtmlEditor>(form, editorName);
        ASSERT_TRUE(QTest::qWaitFor([&] { return editor->isLoaded(); }, kWaitMs));
    }

    QVariant js(const char* editorName, const QString& script) {
        return runScript(control<HtmlEditor>(form, editorName), script);
    }

    // Types into an editor's document as the browser's own typing does, at the end of its text,
    // and waits until the text has reached the module.
    void typeInEditor(const char* editorName, const QString& text,
                      const std::function<bool()>& arrived) {
        waitLoaded(editorName);
        js(editorName, QStringLiteral("(() => { document.body.focus();"
                                      " getSelection().selectAllChildren(document.body);"
                                      " getSelection().collapseToEnd();"
                                      " document.execCommand('insertText', false, %1); })()")
                           .arg(jsString(text)));
        ASSERT_TRUE(QTest::qWaitFor(arrived, kWaitMs)) << "the typing never reached the module";
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
    std::string type_ = kLesson;
};

} // namespace lumora::testing
