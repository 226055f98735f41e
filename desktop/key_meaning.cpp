#include "desktop/key_meaning.h"

#include <QHash>
#include <QKeyEvent>

namespace desktop {

using screen::Control;
using screen::ControlKind;
using screen::Key;
using screen::KeyPress;

std::optional<KeyPress> PressOf(const QKeyEvent& event) {
    static const QHash<int, Key> keys{
        {Qt::Key_Tab, Key::Tab},       {Qt::Key_Backtab, Key::Backtab},  {Qt::Key_Return, Key::Enter},
        {Qt::Key_Enter, Key::Enter},   {Qt::Key_Escape, Key::Escape},    {Qt::Key_Space, Key::Space},
        {Qt::Key_Up, Key::Up},         {Qt::Key_Down, Key::Down},        {Qt::Key_Left, Key::Left},
        {Qt::Key_Right, Key::Right},   {Qt::Key_Home, Key::Home},        {Qt::Key_End, Key::End},
        {Qt::Key_PageUp, Key::PageUp}, {Qt::Key_PageDown, Key::PageDown}};
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) return std::nullopt;
    const int key = event.key();
    KeyPress press(Key::Character);
    if (const auto found = keys.constFind(key); found != keys.cend()) {
        press.key = *found;
    } else if (key >= Qt::Key_F1 && key <= Qt::Key_F12) {
        press.key = Key::Function;
        press.which = key - Qt::Key_F1 + 1;
    } else if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        press.which = key;
    } else {
        return std::nullopt;
    }
    press.shift = event.modifiers() & Qt::ShiftModifier;
    press.ctrl = event.modifiers() & Qt::ControlModifier;
    return press;
}

bool MeansNothing(const QKeyEvent& event, const Control* control) {
    if (!control || control->IsEntry() || control->Kind() == ControlKind::ComboBox) return false;
    return event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
}

}  // namespace desktop
