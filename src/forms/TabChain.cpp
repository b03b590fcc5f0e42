// Tab chains by name; see TabChain.h.
#include "forms/TabChain.h"

#include <QApplication>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QWidget>

#include <vector>

namespace lumora {

namespace {

// The controls of the chain, in order; resolved on every move, so controls shown, hidden or
// enabled since are taken as they are now.
std::vector<QWidget*> controlsOf(QWidget* form, const QStringList& names) {
    std::vector<QWidget*> controls;
    for (const QString& name : names) {
        auto* control = form->findChild<QWidget*>(name);
        if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
            controls.push_back(tabs->tabBar());
        } else if (auto* bar = qobject_cast<QToolBar*>(control)) {
            for (QAction* action : bar->actions())
                if (QWidget* button = bar->widgetForAction(action))
                    controls.push_back(button);
        } else if (control) {
            controls.push_back(control);
        }
    }
    return controls;
}

// The widget that takes the focus for `control`: itself, or the end of its focus proxies
// (an editor's web view hands it to the view's own widget).
QWidget* focusTaker(QWidget* control) {
    while (control->focusProxy())
        control = control->focusProxy();
    return control;
}

bool takesTabFocus(QWidget* control) {
    QWidget* taker = focusTaker(control);
    return control->isVisible() && control->isEnabled() && taker->isEnabled() &&
           (taker->focusPolicy() & Qt::TabFocus);
}

} // namespace

TabChain::TabChain(QWidget* form, QStringList names) : form_(form), names_(std::move(names)) {}

bool TabChain::move(bool next) const {
    QWidget* focus = QApplication::focusWidget();
    if (!focus || focus->window() != form_)
        return false;
    const std::vector<QWidget*> controls = controlsOf(form_, names_);
    const int count = static_cast<int>(controls.size());
    int at = 0;
    while (at < count && controls[at] != focus && !controls[at]->isAncestorOf(focus))
        ++at;
    if (at == count)
        return false;
    for (int step = 1; step < count; ++step) {
        QWidget* candidate = controls[(at + (next ? step : count - step)) % count];
        if (takesTabFocus(candidate)) {
            candidate->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

} // namespace lumora
