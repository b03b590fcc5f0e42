// Icons drawn in the desktop's colours. The formatting icons are single-colour line drawings
// whose colour is written into the SVG; drawn as written they vanish on a dark theme.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace lumora {

// The SVG icon at `resource` with its text colour (the ".ColorScheme-Text" colour the drawings
// are made with) replaced by the palette's button text colour.
QIcon paletteIcon(const QString& resource, const QPalette& palette);

} // namespace lumora
