// The common part of the choosers that insert references into a lesson page; see
// InsertChooser.h.
#include "forms/dialogs/InsertChooser.h"

#include "app/Session.h"
#include "forms/main/MainForm.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumora {

InsertChooser::InsertChooser(Session& session, MainForm& form, const char* formName,
                             const QString& caption, const char* listName, QWidget* parent)
    : QDialog(parent), session_(session), form_(form) {
    setObjectName(formName);
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);

    list_ = new QListWidget(this);
    list_->setObjectName(listName);
    list_->setAccessibleName(caption);
    // The buttons stand together at the top of their column.
    buttons_ = new QVBoxLayout;
    buttons_->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons_);
    resize(420, 300);
}

QPushButton* InsertChooser::addButton(const char* name, const QString& caption,
                                      const QString& tip) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setToolTip(tip);
    buttons_->insertWidget(buttons_->count() - 1, button);
    return button;
}

void InsertChooser::fillRows() {
    list_->clear();
    list_->addItems(rows());
}

void InsertChooser::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow())
        return;
    const QStringList now = rows();
    QStringList shown;
    for (int i = 0; i < list_->count(); ++i)
        shown << list_->item(i)->text();
    if (now == shown)
        return;
    const int kept = selectedRow();
    fillRows();
    if (kept >= 0 && kept < list_->count())
        list_->setCurrentRow(kept);
}

int InsertChooser::selectedRow() const {
    QListWidgetItem* current = list_->currentItem();
    return current && current->isSelected() ? list_->row(current) : -1;
}

void InsertChooser::wrapIntoPage(const LinkFrame& frame, const std::string& failure) {
    runInsert(failure, [this, frame](QWidget* editor, EditingCommands::InsertDone done) {
        form_.editing().wrapSelection(editor, frame, std::move(done));
    });
}

void InsertChooser::insertIntoPage(const std::string& html, const std::string& failure) {
    runInsert(failure, [this, html](QWidget* editor, EditingCommands::InsertDone done) {
        form_.editing().insertHTMLAtSelection(html, editor, std::move(done));
    });
}

void InsertChooser::runInsert(
    const std::string& failure,
    const std::function<void(QWidget*, EditingCommands::InsertDone)>& command) {
    if (inserting_)
        return;
    inserting_ = true;
    QWidget* editor = form_.lessonPageEditor();
    QPointer<InsertChooser> self(this);
    QPointer<QWidget> target(editor);
    command(editor, [self, target, failure](bool inserted) {
        if (self)
            self->finishInsert(target, inserted, failure);
    });
}

void InsertChooser::finishInsert(QWidget* editor, bool inserted, const std::string& failure) {
    inserting_ = false;
    if (!inserted) {
        session_.prompt.error(failure);
        emit insertFinished(false);
        return;
    }
    emit insertFinished(true);
    emit form_.commandFinished();
    close();
    // The author goes on writing where the reference went in.
    if (editor)
        editor->setFocus();
}

} // namespace lumora
