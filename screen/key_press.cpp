#include "screen/key_press.h"

#include <QHash>

namespace screen {

namespace {

/// Takes the word off the front of the name. True when it stood there.
bool TakeFront(QString& name, const QString& word) {
    if (!name.startsWith(word)) return false;
    name.remove(0, word.size());
    return true;
}

std::optional<KeyPress> BareKeyNamed(const QString& name) {
    static const QHash<QString, Key> keys{
        {"Tab", Key::Tab},          {"Backtab", Key::Backtab}, {"Enter", Key::Enter}, {"Escape", Key::Escape},
        {"Space", Key::Space},      {"Up", Key::Up},           {"Down", Key::Down},   {"Left", Key::Left},
        {"Right", Key::Right},      {"Home", Key::Home},       {"End", Key::End},     {"PageUp", Key::PageUp},
        {"PageDown", Key::PageDown}};
    if (const auto found = keys.constFind(name); found != keys.cend()) return *found;
    KeyPress press(Key::Character);
    if (name.size() == 1) {
        press.which = name.front().toUpper().unicode();
        const bool letter = press.which >= u'A' && press.which <= u'Z';
        const bool digit = press.which >= u'0' && press.which <= u'9';
        return letter || digit ? std::optional(press) : std::nullopt;
    }
    constexpr int kFunctionKeys = 12;
    press.key = Key::Function;
    for (press.which = 1; press.which <= kFunctionKeys; ++press.which)
        if (name == u'F' + QString::number(press.which)) return press;
    return std::nullopt;
}

}  // namespace

std::optional<KeyPress> KeyNamed(const QString& name) {
    if (name == QStringLiteral("Ctrl")) return Key::Ctrl;
    QString bare = name;
    const bool shift = TakeFront(bare, QStringLiteral("Shift+"));
    const bool ctrl = !shift && TakeFront(bare, QStringLiteral("Ctrl+"));
    std::optional<KeyPress> press = BareKeyNamed(bare);
    if (press) {
        press->shift = shift;
        press->ctrl = ctrl;
    }
    return press;
}

QString TypedBy(const KeyPress& press) {
    if (press.ctrl) return {};
    if (press.key == Key::Space) return QStringLiteral(" ");
    if (press.key != Key::Character) return {};
    const QChar character(static_cast<char16_t>(press.which));
    if (!character.isDigit()) return press.shift ? character : character.toLower();
    static const QString shifted = QStringLiteral("!\"#$%&'()");
    const int digit = character.digitValue();
    if (!press.shift) return character;
    return digit == 0 ? QString() : QString(shifted[digit - 1]);
}

}  // namespace screen
