// The page link dialog; see PageLinkForm.h.
#include "forms/dialogs/PageLinkForm.h"

#include "app/Session.h"

#include <QListWidget>
#include <QPushButton>

namespace lumora {

PageLinkForm::PageLinkForm(Session& session, MainForm& form, QWidget* parent)
    : InsertChooser(session, form, "frmPageLink", "Page Link", "lstPages", parent) {
    QPushButton* insert = addButton("btnInsertLink", "Insert", "Insert in internal hyperlink");
    insert->setDefault(true);
    connect(insert, &QPushButton::clicked, this, &PageLinkForm::btnInsertLink_Click);
    connect(addButton("CancelButton", "Cancel", "Cancel without adding a link"),
            &QPushButton::clicked, this, &PageLinkForm::CancelButton_Click);
    connect(list_, &QListWidget::itemDoubleClicked, this, &PageLinkForm::lstPages_DblClick);
}

QStringList PageLinkForm::rows() const {
    QStringList rows;
    for (const LessonPage& page : session_.module.pages)
        rows << QString::fromStdString(page.title);
    return rows;
}

void PageLinkForm::setPageList() {
    fillRows();
}

void PageLinkForm::btnInsertLink_Click() {
    insertLink();
}

void PageLinkForm::lstPages_DblClick() {
    insertLink();
}

void PageLinkForm::CancelButton_Click() {
    close();
}

void PageLinkForm::insertLink() {
    const int row = selectedRow();
    if (row < 0 || row >= static_cast<int>(session_.module.pages.size())) {
        session_.prompt.error("You must select a page");
        return;
    }
    // A page may link to itself; nothing prevents it.
    wrapIntoPage(pageLinkFrame(row, session_.module.pages[row].title), "Unregonized Selection");
}

} // namespace lumora
