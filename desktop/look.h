#pragma once

#include <QFont>

namespace desktop {

/// Gives the application the font, colours and style sheet of the screens; the second and later calls do nothing. Needs
/// a QApplication.
void PrepareLook();

/// A font of the screens' size in which digits, commas and blanks are equally wide, so that amounts stand under one
/// another.
const QFont& AmountFont();

}  // namespace desktop
