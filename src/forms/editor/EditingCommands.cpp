// The editing commands over the three kinds of editor; see EditingCommands.h.
#include "forms/editor/EditingCommands.h"

#include "base/TextUtil.h"
#include "content/SpellCheckBlock.h"
#include "forms/editor/HtmlEditor.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextCursor>

namespace lumora {

namespace {

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

// The plain-text controls' SelText.
QString selectedText(QWidget* editor) {
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        return line->selectedText();
    if (auto* text = qobject_cast<QPlainTextEdit*>(editor))
        return text->textCursor().selectedText().replace(QChar::ParagraphSeparator, '\n');
    return {};
}

bool hasSelectedText(QWidget* editor) {
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        return line->hasSelectedText();
    if (auto* text = qobject_cast<QPlainTextEdit*>(editor))
        return text->textCursor().hasSelection();
    return false;
}

// Setting SelText: the text replaces the selection as an edit of the author's, so the
// control's change handler stores it.
void replaceSelectedText(QWidget* editor, const QString& text) {
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->insert(text);
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(editor))
        plain->insertPlainText(text);
}

void selectAllText(QWidget* editor) {
    if (auto* line = qobject_cast<QLineEdit*>(editor))
        line->selectAll();
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(editor))
        plain->selectAll();
}

bool isPlainText(QWidget* editor) {
    return qobject_cast<QLineEdit*>(editor) || qobject_cast<QPlainTextEdit*>(editor);
}

void finish(const EditingCommands::Done& done) {
    if (done)
        done();
}

} // namespace

EditingCommands::EditingCommands(Prompt& prompt, std::function<void(QWidget*)> saveEditorContent)
    : prompt_(prompt), saveEditorContent_(std::move(saveEditorContent)) {}

void EditingCommands::getSelectionHTML(QWidget* editor, TextDone done) {
    if (auto* html = qobject_cast<HtmlEditor*>(editor)) {
        html->call("getSelectionHTML", {},
                   [done](const QVariant& result) { done(result.toString().toStdString()); });
        return;
    }
    done(trimSpaces(selectedText(editor).toStdString()));
}

void EditingCommands::cutSelectionHTML(QWidget* editor, TextDone done) {
    if (auto* html = qobject_cast<HtmlEditor*>(editor)) {
        QPointer<QWidget> target(editor);
        html->call("cutSelectionHTML", {}, [this, target, done](const QVariant& result) {
            if (target)
                save(target);
            done(result.toString().toStdString());
        });
        return;
    }
    const std::string text = trimSpaces(selectedText(editor).toStdString());
    if (hasSelectedText(editor))
        replaceSelectedText(editor, QString());
    save(editor);
    done(text);
}

void EditingCommands::insertHTMLAtSelection(const std::string& html, QWidget* editor,
                                            InsertDone done) {
    if (auto* widget = qobject_cast<HtmlEditor*>(editor)) {
        QPointer<QWidget> target(editor);
        widget->call("insertHTMLAtSelection", {qs(html)},
                     [this, target, done](const QVariant& inserted) {
                         if (target)
                             save(target);
                         if (done)
                             done(inserted.toBool());
                     });
        return;
    }
    const bool plain = isPlainText(editor);
    if (plain)
        replaceSelectedText(editor, qs(html));
    save(editor);
    if (done)
        done(plain);
}

void EditingCommands::insertText(const std::string& text, QWidget* editor, Done done) {
    if (auto* widget = qobject_cast<HtmlEditor*>(editor)) {
        QPointer<QWidget> target(editor);
        widget->call("insertText", {qs(text)}, [this, target, done](const QVariant&) {
            if (target)
                save(target);
            finish(done);
        });
        return;
    }
    replaceSelectedText(editor, qs(text));
    save(editor);
    finish(done);
}

void EditingCommands::execOnSelection(QWidget* editor, const QString& command, Done done,
                                      const QString& value) {
    auto* widget = qobject_cast<HtmlEditor*>(editor);
    if (!widget) {
        // The plain-text controls have no such commands; the classic control's error for them
        // was ignored as well.
        save(editor);
        finish(done);
        return;
    }
    QPointer<QWidget> target(editor);
    widget->call("execOnSelection", {command, value}, [this, target, done](const QVariant&) {
        if (target)
            save(target);
        finish(done);
    });
}

void EditingCommands::insertHyperlink(QWidget* editor, Done done) {
    const std::string address = trimSpaces(
        prompt_.input("Please enter a URL for the hyperlink:", "Hyperlink URL", "").value_or(""));
    if (address.empty()) {
        prompt_.error("You must provide a URL for the hyperlink.");
        finish(done);
        return;
    }
    if (qobject_cast<HtmlEditor*>(editor)) {
        wrapSelection(editor, linkFrame(address), [done](bool) { finish(done); });
        return;
    }
    getSelectionHTML(editor, [this, editor, address, done](const std::string& selection) {
        const std::string text = selection == "<P>&nbsp;</P>" ? std::string() : selection;
        insertHTMLAtSelection(makeLinkHTML(address, text), editor, [done](bool) { finish(done); });
    });
}

void EditingCommands::wrapSelection(QWidget* editor, const LinkFrame& frame, InsertDone done) {
    if (auto* widget = qobject_cast<HtmlEditor*>(editor)) {
        QPointer<QWidget> target(editor);
        widget->call("wrapSelection", {qs(frame.open), qs(frame.close), qs(frame.emptyText)},
                     [this, target, done](const QVariant& inserted) {
                         if (target)
                             save(target);
                         if (done)
                             done(inserted.toBool());
                     });
        return;
    }
    getSelectionHTML(editor, [this, editor, frame, done](const std::string& selection) {
        const std::string text = linkTextOfSelection(selection);
        insertHTMLAtSelection(frame.open + (text.empty() ? frame.emptyText : text) + frame.close,
                              editor, done);
    });
}

void EditingCommands::clearFormat(QWidget* editor, Done done) {
    auto* widget = qobject_cast<HtmlEditor*>(editor);
    if (!widget || !prompt_.ask(std::string("Clear Format removes all images, links, and scripts "
                                            "as well as formatting from your selection.") +
                                    kCrLf + "Do you want to continue?",
                                "Warning", Icon::Exclamation)) {
        finish(done);
        return;
    }
    QPointer<QWidget> target(editor);
    widget->call("clearFormat", {}, [this, target, done](const QVariant&) {
        if (target)
            save(target);
        finish(done);
    });
}

void EditingCommands::clearToPlainText(HtmlEditor* editor, const QString& caption, TextDone done) {
    if (!prompt_.ask(caption.toStdString() +
                         " removes all images, links, and scripts as well as formatting." + kCrLf +
                         "Do you want to continue?",
                     "Warning", Icon::Exclamation))
        return;
    QPointer<QWidget> target(editor);
    editor->call("clearToPlainText", {}, [this, target, done](const QVariant& text) {
        if (!target)
            return;
        save(target);
        done(text.toString().toStdString());
    });
}

void EditingCommands::setFontName(QWidget* editor, const QString& name, Done done) {
    execOnSelection(editor, "FontName", std::move(done), name);
}

void EditingCommands::fontSizeStep(HtmlEditor* editor, int step, Done done) {
    QPointer<QWidget> target(editor);
    editor->call("fontSizeStep", {step}, [this, target, done](const QVariant&) {
        if (target)
            save(target);
        finish(done);
    });
}

void EditingCommands::getFormatState(HtmlEditor* editor, TextDone done) {
    editor->call("getFormatState", {},
                 [done](const QVariant& state) { done(state.toString().toStdString()); });
}

void EditingCommands::applyFormatState(HtmlEditor* editor, const std::string& state, Done done) {
    QPointer<QWidget> target(editor);
    editor->call("applyFormatState", {qs(state)}, [this, target, done](const QVariant&) {
        if (target)
            save(target);
        finish(done);
    });
}

void EditingCommands::queryCommandValue(HtmlEditor* editor, const QString& command,
                                        std::function<void(const QVariant&)> done) {
    editor->call("queryCommandValue", {command},
                 [done](const QVariant& value) { done(value.isNull() ? QVariant() : value); });
}

void EditingCommands::spellCheckEditor(QWidget* parent, QWidget* editor,
                                       const SpellingDialog& dialog, Done done) {
    const auto noErrors = [this] {
        prompt_.message("No errors were found", "No Errors", Icon::Information, Buttons::OK);
    };
    auto* widget = qobject_cast<HtmlEditor*>(editor);
    if (!widget) {
        if (!isPlainText(editor)) {
            finish(done);
            return;
        }
        // The selection when there is one, else everything, checked as plain text.
        if (!hasSelectedText(editor))
            selectAllText(editor);
        const std::string block = selectedText(editor).toStdString();
        const std::optional<std::string> corrected = dialog(parent, block, false);
        if (corrected && *corrected == block)
            noErrors();
        else if (corrected)
            replaceSelectedText(editor, qs(withinSpellingRoom(block, *corrected)));
        save(editor);
        finish(done);
        return;
    }

    QPointer<HtmlEditor> target(widget);
    QPointer<QWidget> owner(parent);
    widget->call("spellCheckBlock", {}, [=, this](const QVariant& reply) {
        if (!target || !reply.isValid()) {
            finish(done);
            return;
        }
        const QVariantMap taken = reply.toMap();
        const QString type = taken.value("type").toString();
        const std::string block = spellingBlock(taken.value("text").toString().toStdString());
        if (startsInTableBody(block)) {
            prompt_.message("Please select a larger area around the table.", "Expand Selection",
                            Icon::Exclamation, Buttons::OK);
            finish(done);
            return;
        }
        const std::optional<std::string> corrected = dialog(owner, block, true);
        if (!target) {
            finish(done);
            return;
        }
        const std::string text = corrected ? withinSpellingRoom(block, *corrected) : block;
        if (!corrected || text == block) {
            // The engine's failure leaves the content as it is; no change is worth saying.
            if (corrected)
                noErrors();
            save(target);
            finish(done);
            return;
        }
        target->call("spellCheckPutBack", {type, qs(text)}, [this, target, done](const QVariant&) {
            if (target)
                save(target);
            finish(done);
        });
    });
}

} // namespace lumora
