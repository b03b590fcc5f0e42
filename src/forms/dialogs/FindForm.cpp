// The find and replace dialog; see FindForm.h.
#include "forms/dialogs/FindForm.h"

#include "base/Prompt.h"
#include "forms/editor/HtmlEditor.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace lumora {

namespace {

// How far one Find Next looks ahead of where the search stands, in characters.
constexpr int kSearchCount = 1000;

} // namespace

FindForm::FindForm(Prompt& prompt, std::function<void(QWidget*)> saveEditorContent, QWidget* parent)
    : QDialog(parent), prompt_(prompt), saveEditorContent_(std::move(saveEditorContent)) {
    setObjectName("frmFind");
    setWindowTitle("Find and Replace");
    setAttribute(Qt::WA_DeleteOnClose);

    txtFind_ = new QLineEdit(this);
    txtFind_->setObjectName("txtFind");
    txtReplace_ = new QLineEdit(this);
    txtReplace_->setObjectName("txtReplace");
    chkCase_ = new QCheckBox("Match Case", this);
    chkCase_->setObjectName("chkCase");
    chkWholeWords_ = new QCheckBox("Match Whole Words Only", this);
    chkWholeWords_->setObjectName("chkWholeWords");
    auto* btnFind = new QPushButton("Find Next", this);
    btnFind->setObjectName("btnFind");
    btnFind->setDefault(true);
    auto* btnReplace = new QPushButton("Replace", this);
    btnReplace->setObjectName("btnReplace");
    auto* btnCancel = new QPushButton("Cancel", this);
    btnCancel->setObjectName("btnCancel");
    connect(btnFind, &QPushButton::clicked, this, &FindForm::btnFind_Click);
    connect(btnReplace, &QPushButton::clicked, this, &FindForm::btnReplace_Click);
    connect(btnCancel, &QPushButton::clicked, this, &FindForm::btnCancel_Click);

    auto* findLabel = new QLabel("Find what:", this);
    findLabel->setBuddy(txtFind_);
    auto* replaceLabel = new QLabel("Replace with:", this);
    replaceLabel->setBuddy(txtReplace_);
    txtFind_->setAccessibleName("Find what");
    txtReplace_->setAccessibleName("Replace with");

    auto* layout = new QGridLayout(this);
    layout->addWidget(findLabel, 0, 0);
    layout->addWidget(txtFind_, 0, 1);
    layout->addWidget(btnFind, 0, 2);
    layout->addWidget(replaceLabel, 1, 0);
    layout->addWidget(txtReplace_, 1, 1);
    layout->addWidget(btnReplace, 1, 2);
    layout->addWidget(chkCase_, 2, 1);
    layout->addWidget(btnCancel, 2, 2);
    layout->addWidget(chkWholeWords_, 3, 1);
    layout->setColumnStretch(1, 1);
}

void FindForm::resetForm(HtmlEditor* editor) {
    editor_ = editor;
    if (!editor_)
        return;
    QPointer<FindForm> self(this);
    editor_->call("findReset", {}, [self](const QVariant& confined) {
        if (!self || !self->editor_)
            return;
        if (confined.toBool()) {
            emit self->stepFinished();
            return;
        }
        const bool beginning = self->prompt_.ask(
            std::string("No selection was made.  Would you like to begin searching from the "
                        "beginning of the document?") +
                kCrLf + "(If \"No\" search will begin from the cursor location)",
            "Search from Beginning", Icon::Question);
        if (!self || !self->editor_)
            return;
        self->editor_->call("findResetFrom", {beginning}, [self](const QVariant&) {
            if (self)
                emit self->stepFinished();
        });
    });
}

void FindForm::btnFind_Click() {
    flags_ = (chkCase_->isChecked() ? 4 : 0) + (chkWholeWords_->isChecked() ? 2 : 0);
    FindInDHTML();
}

void FindForm::FindInDHTML(bool wholeDocument) {
    if (!editor_)
        return;
    QPointer<FindForm> self(this);
    editor_->call("findNext", {txtFind_->text(), kSearchCount, flags_, wholeDocument},
                  [self](const QVariant& found) {
                      if (!self)
                          return;
                      if (found.toBool()) {
                          emit self->stepFinished();
                          return;
                      }
                      // A text found nowhere asks again after each whole-document search.
                      if (self->prompt_.ask(std::string("Could not find the specified text.") +
                                                kCrLf +
                                                "Would you like to search from the beginning?",
                                            "Not Found", Icon::Question)) {
                          if (self)
                              self->FindInDHTML(true);
                          return;
                      }
                      if (!self)
                          return;
                      emit self->stepFinished();
                      self->close();
                  });
}

void FindForm::btnReplace_Click() {
    if (!editor_)
        return;
    QPointer<FindForm> self(this);
    QPointer<HtmlEditor> editor = editor_;
    // Only the match Find Next highlighted is replaced, and only while it is still selected;
    // the search does not move on.
    editor_->call("findReplace", {txtFind_->text(), txtReplace_->text()},
                  [self, editor](const QVariant& replaced) {
                      if (!self)
                          return;
                      if (replaced.toBool() && editor)
                          self->saveEditorContent_(editor);
                      emit self->stepFinished();
                  });
}

void FindForm::btnCancel_Click() {
    close();
}

void FindForm::closeEvent(QCloseEvent* event) {
    if (editor_)
        editor_->call("findEnd");
    QDialog::closeEvent(event);
}

} // namespace lumora
