// The program's pictures, drawn rather than shipped: the title banner of the splash and About
// box, the logo, and the four pictures of the start chooser.
#pragma once

#include <QPixmap>
#include <QString>

namespace lumora {

inline const QString kProgramDescription =
    QStringLiteral("Used to create Lesson, Evaluation, or Survey modules that comply with "
                   "SCORM 1.2 and AICC standards.");

QPixmap titlePicture(int width);
QPixmap logoPicture(int size);

enum class ChooserPicture { Edit, Lesson, Evaluation, Survey };
QPixmap chooserPicture(ChooserPicture which, int size);

} // namespace lumora
