// frmSpell, the Spell Check dialog: the doubtful word highlighted in its sentence, a Change To
// field, the engine's suggestions, and Change, Change All, Ignore, Ignore All, Add and Cancel.
// runSpellCheck is the one way into it.
#pragma once

#include <QDialog>

#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextEdit;

namespace lumora {

class SpellCheckRun;
class SpellingEngine;

// Checks the spelling of a text block with the author, modal over `parent`, and returns the
// block as corrected: equal to `block` when nothing was changed (then no dialog was needed, or
// every doubtful word was ignored or added). No value when the author cancelled, when the
// engine has no dictionary (`engine.available()` is false) or when the engine failed: the
// caller then keeps its content as it stands.
//
// `html` true: `block` is HTML; only the words a reader sees are checked, never tags,
// attribute values, script or style text or character references, and corrections are
// written as HTML text. `html` false: every word of the plain text is checked. Corrections may
// make the block at most 200 characters longer; beyond that the corrections are cut short.
// Words added go to the engine's user dictionary; an unwritable dictionary is reported as a
// file error and the word is still accepted for this run.
//
// Tests answer the dialog through its controls: while it is up, QApplication::
// activeModalWidget() is the SpellCheckDialog "frmSpell"; word() is the doubtful word, the
// buttons are cmdChange, cmdChangeAll, cmdIgnore, cmdIgnoreAll, cmdAdd and cmdCancel, the
// field txtChangeTo and the list lstSuggestions (tests/gui/SpellAnswers.h does this).
std::optional<std::string> runSpellCheck(QWidget* parent, SpellingEngine& engine,
                                         const std::string& block, bool html);

class SpellCheckDialog : public QDialog {
    Q_OBJECT
  public:
    // The run must stand on a doubtful word.
    SpellCheckDialog(SpellCheckRun& run, SpellingEngine& engine, QWidget* parent = nullptr);

    QString word() const;
    // The engine threw while the dialog was up; the dialog was closed as if cancelled.
    bool failed() const { return failed_; }

    void cmdChange_Click();
    void cmdChangeAll_Click();
    void cmdIgnore_Click();
    void cmdIgnoreAll_Click();
    void cmdAdd_Click();

  private:
    void build();
    void showWord();
    // Runs an answer on the run; shows the next word, or closes when the block is done.
    template <class Answer> void answer(Answer&& step);

    SpellCheckRun& run_;
    SpellingEngine& engine_;
    bool failed_ = false;
    QTextEdit* txtContext_ = nullptr;
    QLineEdit* txtChangeTo_ = nullptr;
    QListWidget* lstSuggestions_ = nullptr;
};

} // namespace lumora
