// The order Tab walks a form's controls, written down once per form as a list of names: the
// order a person reads the form in (top to bottom, left to right; a list before its buttons, a
// tool bar before its editor). Qt's own focus chain cannot hold it for a form whose web views
// make their focus widgets when their first document loads: Qt appends those to the end of the
// window's chain. The form hands Tab to the chain instead (focusNextPrevChild).
#pragma once

#include <QStringList>

class QWidget;

namespace lumora {

class TabChain {
  public:
    // `names` are objectNames of controls of `form`. A tab control stands for its row of tabs
    // and a tool bar for its buttons, in their order. A name the form lacks (a control of
    // another module type, or one not built yet) is passed over, so one list serves every
    // state of the form.
    TabChain(QWidget* form, QStringList names);

    // Moves the focus from the control that holds it to the next (or previous) control of the
    // chain that can take it: on screen, enabled, and taking the focus by Tab. False when the
    // focus is on no control of the chain; Qt's own order then applies.
    bool move(bool next) const;

  private:
    QWidget* form_;
    QStringList names_;
};

} // namespace lumora
