// The term chooser; see TermChooser.h.
#include "forms/dialogs/TermChooser.h"

#include "app/Session.h"
#include "forms/main/MainForm.h"

#include <QListWidget>
#include <QPushButton>

namespace lumora {

namespace {

constexpr int kGlossaryTab = 2;

} // namespace

TermChooser::TermChooser(Session& session, MainForm& form, QWidget* parent)
    : InsertChooser(session, form, "frmTermChoose", "Choose Term", "lstTerms", parent) {
    connect(addButton("btnCreateTerm", "Create", "Add a new term to the glossary"),
            &QPushButton::clicked, this, &TermChooser::btnCreateTerm_Click);
    connect(addButton("btnEditTerm", "Edit", "Edit the selected term"), &QPushButton::clicked, this,
            &TermChooser::btnEditTerm_Click);
    QPushButton* insert =
        addButton("btnInsertTerm", "Insert", "Insert a reference to the selected term");
    insert->setDefault(true);
    connect(insert, &QPushButton::clicked, this, &TermChooser::btnInsertTerm_Click);
    connect(addButton("CancelButton", "Cancel", "Cancel without adding a Term reference"),
            &QPushButton::clicked, this, &TermChooser::CancelButton_Click);
    connect(list_, &QListWidget::itemDoubleClicked, this, &TermChooser::btnInsertTerm_Click);
}

void TermChooser::resetPage() {
    setTermList();
}

QStringList TermChooser::rows() const {
    QStringList rows;
    for (const GlossaryTerm& term : session_.module.glossary)
        rows << QString::fromStdString(term.term);
    return rows;
}

void TermChooser::setTermList() {
    fillRows();
    // The bound is the row count, not the last row; a row one past the end selects nothing.
    if (session_.CurrentTerm <= list_->count())
        list_->setCurrentRow(session_.CurrentTerm);
}

void TermChooser::btnCreateTerm_Click() {
    form_.selectMainTab(kGlossaryTab);
    form_.btnAddTerm_Click();
    form_.showCurrentTerm();
    close();
}

void TermChooser::btnEditTerm_Click() {
    const int row = selectedRow();
    if (row < 0) {
        session_.prompt.error("You must select an item");
        return;
    }
    session_.CurrentTerm = static_cast<std::int16_t>(row);
    form_.selectMainTab(kGlossaryTab);
    form_.showCurrentTerm();
    close();
}

void TermChooser::btnInsertTerm_Click() {
    const int row = selectedRow();
    if (row < 0 || row >= static_cast<int>(session_.module.glossary.size())) {
        session_.prompt.error("You must select a term");
        return;
    }
    wrapIntoPage(termLinkFrame(row, session_.module.glossary[row].term), "Unregonized Selection");
}

void TermChooser::CancelButton_Click() {
    close();
}

} // namespace lumora
