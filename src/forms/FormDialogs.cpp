// The common dialogs; see FormDialogs.h.
#include "forms/FormDialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>

namespace lumora {

QString QtFormDialogs::openFile(QWidget* parent, const QString& filter) {
    // Every use starts with an empty name; shortcuts are taken as the files they are.
    QFileDialog dialog(parent, QString(), lastFolder_, filter);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontResolveSymlinks);
    dialog.selectNameFilter(filter.section(QStringLiteral(";;"), 0, 0));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString chosen = dialog.selectedFiles().first();
    lastFolder_ = QFileInfo(chosen).absolutePath();
    return chosen;
}

std::optional<QColor> QtFormDialogs::color(QWidget* parent, const QColor& initial) {
    const QColor chosen = QColorDialog::getColor(initial, parent);
    if (!chosen.isValid())
        return std::nullopt;
    return chosen;
}

} // namespace lumora
