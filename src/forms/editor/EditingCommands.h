// The editing commands on the selection of one of the main form's editors — the HTML editing
// widget (HtmlEditor), the source view (QPlainTextEdit) or a field (QLineEdit, QPlainTextEdit)
// — with the differences between them hidden. Toolbars, the Edit menu and the dialogs that
// insert links, terms, activities and media all go through here.
//
// On the HTML editing widget each command is one call into its script, so it runs as one step
// that nothing the author does can split; `done` runs when it has completed. Every command that
// changes content ends with saveEditorContent on the editor, so the module holds the result by
// the time `done` runs. On the plain-text controls the selection is the control's selected text
// (markup shows as text there) and the commands complete at once. Controls of any other kind
// are left alone.
#pragma once

#include "base/Prompt.h"
#include "content/EditingText.h"
#include "forms/SpellingDialog.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <string>

class QWidget;

namespace lumora {

class HtmlEditor;

class EditingCommands {
  public:
    using Done = std::function<void()>;
    using TextDone = std::function<void(const std::string&)>;
    // Whether something was inserted (the selection was of a kind that can be replaced).
    using InsertDone = std::function<void(bool)>;

    // saveEditorContent copies an editor's content into the current page or question.
    EditingCommands(Prompt& prompt, std::function<void(QWidget* editor)> saveEditorContent);

    // The selection's HTML: for the HTML editor the fragment ("Text", untrimmed), the element
    // ("Control", an image or table selected whole) or "" ("None"); for the plain-text
    // controls the selected text, trimmed.
    void getSelectionHTML(QWidget* editor, TextDone done);
    // The same, with the selection removed (the Cut command).
    void cutSelectionHTML(QWidget* editor, TextDone done);
    // HTML in place of the selection (as text in the plain-text controls). In the HTML editor
    // a selection inside a link is unlinked first when the HTML holds "href", and a selected
    // image or table is replaced.
    void insertHTMLAtSelection(const std::string& html, QWidget* editor, InsertDone done = {});
    // Plain text in place of the selection (Paste Unformatted); line breaks stay line breaks.
    void insertText(const std::string& text, QWidget* editor, Done done = {});

    // One editing command of the browser's vocabulary ("Bold", "Indent", "FontSize" with its
    // value, ...) on the HTML editor's selection; a command the editor refuses does nothing.
    void execOnSelection(QWidget* editor, const QString& command, Done done = {},
                         const QString& value = {});
    // Asks for an address ("Hyperlink URL") and turns the selection into an external link,
    // keeping the selection's bold, italic, underline, font and colour around it. Without a
    // selection the link's text is the address's last component.
    void insertHyperlink(QWidget* editor, Done done = {});
    // The selection wrapped in frame.open + text + frame.close, in one call: its links and
    // formatting come off, its HTML (without its wrapping paragraph) becomes the text, or
    // frame.emptyText when nothing is marked, and the formatting goes back around the result.
    // On a plain-text control: the selected text, trimmed, wrapped. The page link and term
    // choosers build on this.
    void wrapSelection(QWidget* editor, const LinkFrame& frame, InsertDone done = {});

    // After the "Warning" question, removes formatting, alignment and links from the HTML
    // editor's selection (the Clear Format buttons).
    void clearFormat(QWidget* editor, Done done = {});
    // Reduces the HTML editor's whole document to its plain text after the "Warning" question
    // that begins with `caption` (the Edit menu's clear item); the text is handed to `done`,
    // which the menu puts on the clipboard. Nothing happens unless the answer is Yes.
    void clearToPlainText(HtmlEditor* editor, const QString& caption, TextDone done);
    void setFontName(QWidget* editor, const QString& name, Done done = {});
    // The font size of the selection (2 when it is mixed) plus step.
    void fontSizeStep(HtmlEditor* editor, int step, Done done = {});

    // The formatting of the selection as text ("tBoldFontNameArial-ForeColor255") and back.
    void getFormatState(HtmlEditor* editor, TextDone done);
    void applyFormatState(HtmlEditor* editor, const std::string& state, Done done = {});
    // The editor's answer for a command: true/false for on/off commands, the colour number for
    // "ForeColor", the face for "FontName", the size 1-7 for "FontSize"; null (an invalid
    // QVariant) when the selection mixes values.
    void queryCommandValue(HtmlEditor* editor, const QString& command,
                           std::function<void(const QVariant&)> done);

    // The spell check of the editor's selection, or of all its content when nothing is
    // selected, through the checking dialog; the corrected text is put back in place.
    void spellCheckEditor(QWidget* parent, QWidget* editor, const SpellingDialog& dialog,
                          Done done = {});

  private:
    void save(QWidget* editor) const { saveEditorContent_(editor); }

    Prompt& prompt_;
    std::function<void(QWidget*)> saveEditorContent_;
};

} // namespace lumora
