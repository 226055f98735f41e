#pragma once

#include <optional>

#include "screen/form.h"

class QKeyEvent;

namespace desktop {

/// The key of an event as the screens know it; nothing for other keys, and for those with Alt or the desktop's own key.
std::optional<screen::KeyPress> PressOf(const QKeyEvent& event);

/// True for keys by which the toolkit would move the focus on its own.
bool MeansNothing(const QKeyEvent& event, const screen::Control* control);

}  // namespace desktop
