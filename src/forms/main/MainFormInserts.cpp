// The main form's doors to the dialogs that insert references into a lesson page (the term
// chooser, the Q&A chooser and the page link dialog) and to the colour scheme dialog.
#include "forms/main/MainForm.h"

#include "app/Session.h"
#include "content/InsertRefusals.h"
#include "forms/editor/HtmlEditor.h"

#include <QPlainTextEdit>
#include <QTabWidget>

namespace lumora {

namespace {

// The choosers are modeless: one of each kind, brought forward again when it is open already.
// One that was closed is on its way out (it deletes itself) and is not shown again.
template <class Form> Form* showOver(QPointer<Form>& form, Session& session, MainForm* owner) {
    if (!form || !form->isVisible())
        form = new Form(session, *owner, owner);
    form->show();
    form->raise();
    form->activateWindow();
    return form;
}

} // namespace

QWidget* MainForm::lessonPageEditor() const {
    return tabLessonPage_->currentIndex() <= 0 ? static_cast<QWidget*>(dhtmlLessonEdit_)
                                               : txtLessonEdit_;
}

void MainForm::selectMainTab(int tab) {
    tabMain_->setCurrentIndex(tab);
}

void MainForm::btnInsertTerm_Click() {
    if (!termsToInsert(session_.module, session_.prompt))
        return;
    showOver(frmTermChoose_, session_, this)->resetPage();
}

void MainForm::btnInsertQAndA_Click() {
    if (!activitiesToInsert(session_.module, session_.prompt))
        return;
    showOver(frmQAndAChoose_, session_, this)->resetPage();
}

void MainForm::Command1_Click() {
    showOver(frmPageLink_, session_, this)->setPageList();
}

void MainForm::mnuColors_Click() {
    // Window-modal: the scheme is edited in place until Save or Cancel.
    if (frmColors_)
        frmColors_->close();
    frmColors_ = new ColorsForm(session_, *dialogs_, this);
    frmColors_->open();
    frmColors_->resetColors();
}

} // namespace lumora
