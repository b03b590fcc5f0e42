// The program's pictures: the title banner of the splash and start chooser, the logo, and the
// four pictures of the start chooser. The logo is the program's icon (lumora.svg, a resource
// also installed as the desktop icon), so window, About box and menu entry show one design.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace lumora {

inline const QString kProgramDescription =
    QStringLiteral("Used to create Lesson, Evaluation, or Survey modules that comply with "
                   "SCORM 1.2 and AICC standards.");

QPixmap titlePicture(int width);
QPixmap logoPicture(int size);
// The window icon, drawn from the logo at the sizes a desktop asks for.
QIcon programIcon();

enum class ChooserPicture { Edit, Lesson, Evaluation, Survey };
QPixmap chooserPicture(ChooserPicture which, int size);

} // namespace lumora
