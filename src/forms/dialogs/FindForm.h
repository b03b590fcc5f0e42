// frmFind: find and replace in the page or question editor. The search keeps its ranges in
// the editor's document: where it began (the marked text, the whole document, or the caret to
// the end), what is still to be searched, and the last match, which Replace replaces. Each
// Find Next looks at most 1000 characters ahead of where the search stands.
#pragma once

#include <QDialog>
#include <QPointer>

#include <functional>

class QCheckBox;
class QLineEdit;

namespace lumora {

class HtmlEditor;
class Prompt;

class FindForm : public QDialog {
    Q_OBJECT
  public:
    // saveEditorContent stores the editor's content after a replacement.
    FindForm(Prompt& prompt, std::function<void(QWidget*)> saveEditorContent,
             QWidget* parent = nullptr);

    // Prepares a new search in `editor`: confined to the marked text, or else (after asking)
    // from the beginning or from the caret.
    void resetForm(HtmlEditor* editor);
    // Finds the next match and selects it; at the end, offers to search the whole document.
    void FindInDHTML(bool wholeDocument = false);

    void btnFind_Click();
    void btnReplace_Click();
    void btnCancel_Click();

  signals:
    // A step (the reset, a Find Next with its questions, a Replace) has completed.
    void stepFinished();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    Prompt& prompt_;
    std::function<void(QWidget*)> saveEditorContent_;
    QPointer<HtmlEditor> editor_;
    int flags_ = 0; // 4 match case, 2 whole words
    QLineEdit* txtFind_;
    QLineEdit* txtReplace_;
    QCheckBox* chkCase_;
    QCheckBox* chkWholeWords_;
};

} // namespace lumora
