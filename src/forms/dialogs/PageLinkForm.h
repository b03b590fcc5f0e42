// frmPageLink: turns the marked text of the lesson page into a link to a page of the same
// module (the page's title when nothing is marked). The link carries the target's position,
// which is also the number of its page file.
#pragma once

#include "forms/dialogs/InsertChooser.h"

namespace lumora {

class PageLinkForm : public InsertChooser {
  public:
    PageLinkForm(Session& session, MainForm& form, QWidget* parent);

    // One row per page, its title; no row is selected.
    void setPageList();

    void btnInsertLink_Click();
    void lstPages_DblClick();
    void CancelButton_Click();

  protected:
    QStringList rows() const override;

  private:
    void insertLink();
};

} // namespace lumora
