#pragma once

#include <QString>
#include <optional>

namespace screen {

/// The keys that mean something to a screen.
enum class Key {
    Tab,
    Backtab,
    Enter,
    Escape,
    Ctrl,  ///< alone
    Space,
    Up,
    Down,
    Left,
    Right,
    Home,
    End,
    PageUp,
    PageDown,
    Function,   ///< F1 to F12
    Character,  ///< a letter or a digit
};

/// A key with what is held beside it.
struct KeyPress {
    /// A key alone.
    KeyPress(Key pressed) : key(pressed) {}
    bool operator==(const KeyPress&) const = default;

    Key key;
    bool shift = false;
    bool ctrl = false;
    /// Key::Function: its number, 1 to 12. Key::Character: its digit, or its letter as a capital.
    int which = 0;
};

/// The key of that name: "Tab", "Backtab", "Enter", "Escape", "Space", "Up", "Down", "Left", "Right", "Home", "End",
/// "PageUp", "PageDown", "F1" to "F12", a letter or digit, each also with "Shift+" or "Ctrl+" before it, and "Ctrl"
/// alone. Nothing for other names.
std::optional<KeyPress> KeyNamed(const QString& name);

/// What a text item gets from a letter, digit or Space, on a Japanese keyboard; empty for other keys.
QString TypedBy(const KeyPress& press);

}  // namespace screen
