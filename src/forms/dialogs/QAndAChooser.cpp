// The Q&A chooser; see QAndAChooser.h.
#include "forms/dialogs/QAndAChooser.h"

#include "app/Session.h"
#include "content/ContentForms.h"
#include "content/ListOps.h"
#include "forms/main/ListTexts.h"
#include "forms/main/MainForm.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>

namespace lumora {

namespace {

constexpr int kQAndATab = 1;

} // namespace

QAndAChooser::QAndAChooser(Session& session, MainForm& form, QWidget* parent)
    : InsertChooser(session, form, "frmQAndAChoose", "Choose Q&A", "lstQAndA", parent) {
    connect(addButton("btnCreateQAndA", "Create", "Create a new Q&A item"), &QPushButton::clicked,
            this, &QAndAChooser::btnCreateQAndA_Click);
    connect(addButton("btnEditQAndA", "Edit", "Edit the selected Q&A item"), &QPushButton::clicked,
            this, &QAndAChooser::btnEditQAndA_Click);
    QPushButton* insert = addButton("btnInsertQAndA", "Insert", "Insert the selected Q&A item");
    insert->setDefault(true);
    connect(insert, &QPushButton::clicked, this, &QAndAChooser::btnInsertQAndA_Click);
    connect(addButton("CancelButton", "Cancel", "Cancel without adding a Q&A item"),
            &QPushButton::clicked, this, &QAndAChooser::CancelButton_Click);
    connect(list_, &QListWidget::itemDoubleClicked, this, &QAndAChooser::btnInsertQAndA_Click);
    list_->installEventFilter(this);
}

void QAndAChooser::resetPage() {
    fillQAndAList();
}

QStringList QAndAChooser::rows() const {
    // Every item has its row, blank ones too: row i is activity i + 1.
    QStringList rows;
    for (std::size_t i = 0; i < session_.module.questions.size(); ++i)
        rows << QString::fromStdString(getNumberedQuestionText(session_.module, i));
    return rows;
}

void QAndAChooser::fillQAndAList() {
    fillRows();
    if (session_.CurrentItem < list_->count())
        list_->setCurrentRow(session_.CurrentItem);
}

std::string QAndAChooser::getQAndALink(int QAndAIndex) const {
    return activityPlaceholder(session_.contentPaths(), QAndAIndex + 1);
}

void QAndAChooser::btnCreateQAndA_Click() {
    close();
    form_.selectMainTab(kQAndATab);
    form_.btnAddQuestion_Click();
    form_.showCurrentItem();
}

void QAndAChooser::btnEditQAndA_Click() {
    const int row = selectedRow();
    if (row < 0) {
        session_.prompt.error("You must select an item");
        return;
    }
    session_.CurrentItem = static_cast<std::int16_t>(row);
    form_.selectMainTab(kQAndATab);
    form_.showCurrentItem();
    close();
}

void QAndAChooser::btnInsertQAndA_Click() {
    const int row = selectedRow();
    if (row < 0 || row >= static_cast<int>(session_.module.questions.size())) {
        session_.prompt.error("You must select a Q&A item");
        return;
    }
    insertIntoPage(getQAndALink(row), "Unrecognized Selection");
}

void QAndAChooser::CancelButton_Click() {
    close();
}

void QAndAChooser::lstQAndA_KeyUp(int key) {
    if (key != Qt::Key_Delete)
        return;
    const int row = selectedRow();
    const QStringList before = rows();
    deleteListItem(session_.lists(), "lstQAndA", row);
    if (rows() == before) {
        // Declined: the list stays as the author left it.
        return;
    }
    form_.setQAndAList();
    // A deleted activity's placeholders leave the pages and the later ones are renumbered:
    // the page in the editor is shown again from the module.
    form_.tabLessonPage_Click();
    fillQAndAList();
}

bool QAndAChooser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyRelease)
        lstQAndA_KeyUp(static_cast<QKeyEvent*>(event)->key());
    return InsertChooser::eventFilter(watched, event);
}

} // namespace lumora
