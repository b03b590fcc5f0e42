// The simple combo box; see SimpleComboBox.h.
#include "forms/dialogs/SimpleComboBox.h"

#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace lumora {

SimpleComboBox::SimpleComboBox(QWidget* parent) : QWidget(parent) {
    edit_ = new QLineEdit(this);
    list_ = new QListWidget(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(edit_);
    layout->addWidget(list_, 1);
    setFocusProxy(edit_);

    connect(list_, &QListWidget::currentTextChanged, this, [this](const QString& text) {
        if (!text.isEmpty() && !edit_->hasFocus())
            edit_->setText(text);
    });
    connect(list_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { edit_->setText(item->text()); });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        edit_->setText(item->text());
        emit itemDoubleClicked(item->text());
    });
    connect(edit_, &QLineEdit::textEdited, this, &SimpleComboBox::followTyping);
}

QString SimpleComboBox::currentText() const {
    return edit_->text();
}

void SimpleComboBox::setCurrentText(const QString& text) {
    edit_->setText(text);
    followTyping(text);
}

void SimpleComboBox::addItem(const QString& text) {
    list_->addItem(text);
}

void SimpleComboBox::clear() {
    list_->clear();
    edit_->clear();
}

int SimpleComboBox::count() const {
    return list_->count();
}

// The list shows the first name that begins with what was typed, without changing the text.
void SimpleComboBox::followTyping(const QString& text) {
    QSignalBlocker block(list_);
    list_->clearSelection();
    if (text.isEmpty())
        return;
    for (int row = 0; row < list_->count(); ++row) {
        if (list_->item(row)->text().startsWith(text, Qt::CaseInsensitive)) {
            list_->setCurrentRow(row);
            list_->scrollToItem(list_->item(row));
            return;
        }
    }
}

} // namespace lumora
