// Navigation policy of the editor's page.
#include "forms/editor/EditorPage.h"

namespace lumora {

bool EditorPage::acceptNavigationRequest(const QUrl&, NavigationType, bool isMainFrame) {
    // Frames inside content stay empty: their documents could run scripts.
    if (!isMainFrame) {
        return false;
    }
    const bool ours = m_expectShell;
    m_expectShell = false;
    return ours;
}

} // namespace lumora
