// Create, Remove, Up and Down of the pages, Q&A items or questions and glossary terms, the
// Delete key in the item lists, and the routines that bring a term or an item on screen for the
// choosers. The list operations themselves (their questions, refusals and renumbering) are the
// core's; each handler stores the editor first, runs one, and refills its list from the module.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "content/ListOps.h"
#include "forms/editor/HtmlEditor.h"
#include "forms/main/ListTexts.h"
#include "forms/main/ModuleActions.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace lumora {

namespace {

// The Windows key code of Delete, which the lists' key handlers compare with.
constexpr int kDeleteKeyCode = 46;

// Hands key releases of one list to its KeyUp handler, as the key code the handlers compare.
class KeyUpFilter : public QObject {
  public:
    KeyUpFilter(QObject* parent, std::function<void(int)> keyUp)
        : QObject(parent), keyUp_(std::move(keyUp)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyRelease) {
            auto* key = static_cast<QKeyEvent*>(event);
            if (!key->isAutoRepeat())
                keyUp_(key->key() == Qt::Key_Delete ? kDeleteKeyCode : key->key());
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<void(int)> keyUp_;
};

// Double-clicks anywhere in a list, on a row or below the last one.
class DoubleClickFilter : public QObject {
  public:
    DoubleClickFilter(QObject* parent, std::function<void()> doubleClick)
        : QObject(parent), doubleClick_(std::move(doubleClick)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonDblClick) {
            doubleClick_();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<void()> doubleClick_;
};

} // namespace

void MainForm::connectItemLists() {
    const struct {
        const char* name;
        void (MainForm::*handler)();
    } kButtons[] = {
        {"btnAddPage", &MainForm::btnAddPage_Click},
        {"btnRemovePage", &MainForm::btnRemovePage_Click},
        {"btnUpPage", &MainForm::btnUpPage_Click},
        {"btnDownPage", &MainForm::btnDownPage_Click},
        {"btnAddQuestion", &MainForm::btnAddQuestion_Click},
        {"btnRemoveQuestion", &MainForm::btnRemoveQuestion_Click},
        {"btnUpQuestion", &MainForm::btnUpQuestion_Click},
        {"btnDownQuestion", &MainForm::btnDownQuestion_Click},
        {"btnAddOption", &MainForm::btnAddOption_Click},
        {"btnEditOption", &MainForm::btnEditOption_Click},
        {"btnRemoveOption", &MainForm::btnRemoveOption_Click},
        {"btnUpOption", &MainForm::btnUpOption_Click},
        {"btnDownOption", &MainForm::btnDownOption_Click},
        {"btnAddTerm", &MainForm::btnAddTerm_Click},
        {"btnRemoveTerm", &MainForm::btnRemoveTerm_Click},
    };
    for (const auto& b : kButtons) {
        auto* button = findChild<QPushButton*>(b.name);
        Q_ASSERT(button);
        button->setEnabled(true);
        connect(button, &QPushButton::clicked, this, b.handler);
    }

    const std::pair<QListWidget*, void (MainForm::*)(int)> kLists[] = {
        {lstPages_, &MainForm::lstPages_KeyUp},
        {lstQAndA_, &MainForm::lstQAndA_KeyUp},
        {lstOptions_, &MainForm::lstOptions_KeyUp},
        {lstTerms_, &MainForm::lstTerms_KeyUp},
    };
    for (const auto& [list, keyUp] : kLists)
        list->installEventFilter(
            new KeyUpFilter(list, [this, keyUp = keyUp](int key) { (this->*keyUp)(key); }));
    lstOptions_->viewport()->installEventFilter(
        new DoubleClickFilter(lstOptions_, [this] { lstOptions_DblClick(); }));
}

// --- pages ---------------------------------------------------------------------------------

void MainForm::btnAddPage_Click() {
    saveEditorContent(activeEditor_);
    reportFileErrors(session_.prompt, [&] { session_.addPage(); });
    setPageList();
    // A new page is named first.
    txtPageTitle_->setFocus();
}

void MainForm::btnRemovePage_Click() {
    saveEditorContent(activeEditor_);
    deleteListItem(session_.lists(), "lstPages", lstPages_->currentRow());
    setPageList();
}

void MainForm::btnUpPage_Click() {
    saveEditorContent(activeEditor_);
    moveListItemUp(session_.lists(), "lstPages", lstPages_->currentRow());
    setPageList();
}

void MainForm::btnDownPage_Click() {
    saveEditorContent(activeEditor_);
    moveListItemDown(session_.lists(), "lstPages", lstPages_->currentRow());
    setPageList();
}

void MainForm::lstPages_KeyUp(int keyCode) {
    if (keyCode == kDeleteKeyCode)
        btnRemovePage_Click();
}

// --- glossary ------------------------------------------------------------------------------

void MainForm::btnAddTerm_Click() {
    addBlankTerm(session_.lists());
    setTermList();
    txtTerm_->setFocus();
}

void MainForm::btnRemoveTerm_Click() {
    deleteListItem(session_.lists(), "lstTerms", lstTerms_->currentRow());
    setTermList();
}

void MainForm::lstTerms_KeyUp(int keyCode) {
    if (keyCode == kDeleteKeyCode)
        btnRemoveTerm_Click();
}

void MainForm::showCurrentTerm() {
    // Switching tabs refreshes the list; on the tab already, the refresh is done here.
    if (tabMain_->currentIndex() != 2)
        tabMain_->setCurrentIndex(2);
    else
        setTermList();
    txtTerm_->setFocus();
}

// --- Q&A items and questions -----------------------------------------------------------------

int MainForm::selectedItem() const {
    const QListWidgetItem* row = lstQAndA_->currentItem();
    return row && row->isSelected() ? row->data(Qt::UserRole).toInt() : -1;
}

int MainForm::rowOfItem(int item) const {
    for (int row = 0; row < lstQAndA_->count(); ++row)
        if (lstQAndA_->item(row)->data(Qt::UserRole).toInt() == item)
            return row;
    return -1;
}

void MainForm::showItemEntry(int item) {
    if (item < 0 || item >= static_cast<int>(session_.module.questions.size()))
        return;
    const QString text = QString::fromStdString(getNumberedQuestionText(session_.module, item));
    const int row = rowOfItem(item);
    if (row >= 0) {
        lstQAndA_->item(row)->setText(text);
        return;
    }
    // A new item is listed once it has text, in its place among the others, and selected.
    int at = 0;
    while (at < lstQAndA_->count() && lstQAndA_->item(at)->data(Qt::UserRole).toInt() < item)
        ++at;
    auto* entry = new QListWidgetItem(text);
    entry->setData(Qt::UserRole, item);
    QSignalBlocker block(lstQAndA_);
    lstQAndA_->insertItem(at, entry);
    if (item == session_.CurrentItem)
        lstQAndA_->setCurrentRow(at);
}

void MainForm::btnAddQuestion_Click() {
    saveEditorContent(activeEditor_);
    addBlankQuestion(session_.lists());
    setQAndAList();
    dhtmlQuestionEdit_->setFocus();
}

void MainForm::btnRemoveQuestion_Click() {
    saveEditorContent(activeEditor_);
    deleteListItem(session_.lists(), "lstQAndA", selectedItem());
    setQAndAList();
}

void MainForm::btnUpQuestion_Click() {
    saveEditorContent(activeEditor_);
    moveListItemUp(session_.lists(), "lstQAndA", selectedItem());
    setQAndAList();
}

void MainForm::btnDownQuestion_Click() {
    saveEditorContent(activeEditor_);
    moveListItemDown(session_.lists(), "lstQAndA", selectedItem());
    setQAndAList();
}

void MainForm::lstQAndA_KeyUp(int keyCode) {
    if (keyCode == kDeleteKeyCode)
        btnRemoveQuestion_Click();
}

void MainForm::lstOptions_KeyUp(int keyCode) {
    if (keyCode == kDeleteKeyCode)
        btnRemoveOption_Click();
}

void MainForm::showCurrentItem() {
    if (tabMain_->currentIndex() != 1)
        tabMain_->setCurrentIndex(1);
    else
        setQAndAList();
    dhtmlQuestionEdit_->setFocus();
}

} // namespace lumora
