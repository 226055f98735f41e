#pragma once

namespace desktop {

/// Gives the application the font, colours and style sheet of the screens; the second and later calls do nothing. Needs
/// a QApplication.
void PrepareLook();

}  // namespace desktop
