// Answers the Spell Check dialog (frmSpell) while it is up, as the author would: one answer
// per doubtful word, in order, through the dialog's own controls. Create it before the command
// that opens the dialog; it records the words it was asked about. Should the dialog ask more
// than there are answers, it is cancelled, so a test fails instead of hanging.
#pragma once

#include "forms/dialogs/SpellCheckDialog.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace lumora::testing {

using SpellAnswer = std::function<void(SpellCheckDialog&)>;

// Clicks one of the dialog's buttons (cmdChange, cmdChangeAll, cmdIgnore, cmdIgnoreAll, cmdAdd,
// cmdCancel).
inline SpellAnswer press(const char* button) {
    return [button](SpellCheckDialog& dialog) { dialog.findChild<QPushButton*>(button)->click(); };
}

// A key pressed where the focus is, as the author's keyboard would send it.
inline SpellAnswer key(Qt::Key k) {
    return [k](SpellCheckDialog& dialog) {
        QWidget* focus = dialog.focusWidget();
        QTest::keyClick(focus ? focus : &dialog, k);
    };
}

// A double-click on the suggestion in that row: the click a double-click starts with, then the
// second one (QTest sends a widget only the second).
inline SpellAnswer doubleClickSuggestion(int row) {
    return [row](SpellCheckDialog& dialog) {
        auto* list = dialog.findChild<QListWidget*>("lstSuggestions");
        const QPoint at = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    };
}

class SpellAnswers {
  public:
    explicit SpellAnswers(std::vector<SpellAnswer> answers) : answers_(std::move(answers)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { step(); });
        timer_.start(5);
    }

    std::vector<std::string> asked; // the doubtful words, in the order shown

  private:
    void step() {
        auto* dialog = qobject_cast<SpellCheckDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        asked.push_back(dialog->word().toStdString());
        if (next_ < answers_.size())
            answers_[next_++](*dialog);
        else
            dialog->reject();
    }

    std::vector<SpellAnswer> answers_;
    std::size_t next_ = 0;
    QTimer timer_;
};

} // namespace lumora::testing
