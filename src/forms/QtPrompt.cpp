// Message boxes and input dialogs for the core's questions. Texts are shown as plain text: the
// system's messages hold characters such as < and > that must never be read as markup.
#include "forms/QtPrompt.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace lumora {

QString messageText(const std::string& text) {
    QString shown = QString::fromStdString(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

QString messageTitle(const std::string& title) {
    return title.empty() ? QStringLiteral("Lumora") : QString::fromStdString(title);
}

namespace {

QMessageBox::Icon boxIcon(Icon icon) {
    switch (icon) {
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

Answer QtPrompt::message(const std::string& text, const std::string& title, Icon icon,
                         Buttons buttons, Answer defaultButton) {
    QMessageBox box(boxIcon(icon), messageTitle(title), messageText(text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    if (buttons == Buttons::YesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(defaultButton == Answer::No ? QMessageBox::No : QMessageBox::Yes);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
    }
    int chosen = box.exec();
    if (buttons == Buttons::OK)
        return Answer::OK;
    // Closing the box with Escape or the title bar counts as No, like any answer but Yes.
    return chosen == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

std::optional<std::string> QtPrompt::input(const std::string& prompt, const std::string& title,
                                           const std::string& defaultText) {
    bool accepted = false;
    QString answer = QInputDialog::getText(QApplication::activeWindow(), messageTitle(title),
                                           messageText(prompt), QLineEdit::Normal,
                                           QString::fromStdString(defaultText), &accepted);
    if (!accepted)
        return std::nullopt;
    return answer.toStdString();
}

} // namespace lumora
