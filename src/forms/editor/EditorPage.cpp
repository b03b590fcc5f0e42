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

void EditorPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
                                          const QString& message, int lineNumber,
                                          const QString& sourceId) {
    // Content handlers refused by the document's policy are the intended outcome, one per
    // click on a term link; only failures of our own script are worth a line.
    if (level != ErrorMessageLevel || message.startsWith(QLatin1String("Refused to"))) {
        return;
    }
    qWarning("editor: %s (%s:%d)", qPrintable(message), qPrintable(sourceId), lineNumber);
}

} // namespace lumora
