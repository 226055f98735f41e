#include "screen/user_keys.h"

#include <algorithm>

#include "screen/gesture.h"
#include "screen/user_input.h"

namespace screen {

namespace {

/// The item that hears keys: the focused one, unless it is out of reach.
Control* Hearing(const Form& form) {
    Control* item = form.Focused();
    return item && item->EffectivelyVisible() && item->EffectivelyEnabled() ? item : nullptr;
}

bool IsMemo(const Control& control) {
    return control.Kind() == ControlKind::EntryMemo;
}

/// The text as the item's own editor holds it.
QString EditedText(const Control& entry) {
    return entry.Kind() == ControlKind::EntryNumber ? entry.Text() : entry.RawText();
}

void TypeBehind(Control& entry, const QString& text) {
    UserType(entry, entry.Owner().WholeTextSelected() ? text : EditedText(entry) + text);
}

/// A key that the text item itself takes: Ctrl+A selects the whole, a move of the cursor lifts that.
void NoteSelection(Form& form, const KeyPress& press) {
    const Control* entry = Hearing(form);
    if (!entry || !entry->IsEntry()) return;
    if (press.key == Key::Character && press.ctrl && press.which == u'A') form.SetWholeTextSelected(true);
    if (MovesCursor(*entry, press.key) && !EditedText(*entry).isEmpty()) form.SetWholeTextSelected(false);
}

/// An arrow key inside an option group goes to its next option that can be reached, round the end, and presses it.
void StepOption(Control& from, int step) {
    std::vector<Control*> group;
    for (const auto& control : from.Owner().Controls())
        if (control->Name() == from.Name() && control->EffectivelyVisible() && control->EffectivelyEnabled())
            group.push_back(control.get());
    const auto place = std::find(group.begin(), group.end(), &from);
    if (place == group.end()) return;
    const int count = static_cast<int>(group.size());
    UserClick(*group[static_cast<std::size_t>((place - group.begin() + step + count) % count)]);
}

/// Chooses the place of a drop-down list or strip when it has it and stands elsewhere.
void ChoosePlace(Control& control, int place, qsizetype count) {
    if (place >= 0 && place < count && place != control.ListIndex()) UserChoose(control, place);
}

void SelectRow(Control& list, int row) {
    if (row >= 0 && row < static_cast<int>(list.Rows().size())) UserSelectRow(list, row);
}

/// -1 for a key that goes back or up, 1 for its counterpart, 0 for others.
int StepOf(Key key, Key back, Key ahead) {
    return key == ahead ? 1 : key == back ? -1 : 0;
}

void KeyOnList(Control& list, Key key) {
    const int last = static_cast<int>(list.Rows().size()) - 1;
    if (last < 0) return;
    if (const int step = StepOf(key, Key::Up, Key::Down); step != 0) SelectRow(list, list.ListIndex() + step);
    if (const int step = StepOf(key, Key::PageUp, Key::PageDown); step != 0)
        SelectRow(list, std::clamp(list.ListIndex() + step * kPageStep, 0, last));
    if (key == Key::Home || key == Key::End) SelectRow(list, key == Key::Home ? 0 : last);
}

/// The next entry behind the chosen one, round the end, that begins with the letter or digit; -1 for none.
int EntryBeginning(const Control& list, QChar character) {
    const int count = static_cast<int>(list.Entries().size());
    for (int step = 1; step <= count; ++step) {
        const int entry = (list.ListIndex() + step) % count;
        if (list.Entries()[entry].startsWith(character, Qt::CaseInsensitive)) return entry;
    }
    return -1;
}

void KeyOnChoice(Control& list, const KeyPress& press) {
    const int count = static_cast<int>(list.Entries().size());
    const int step = StepOf(press.key, Key::Up, Key::Down) + StepOf(press.key, Key::PageUp, Key::PageDown);
    if (step != 0) ChoosePlace(list, list.ListIndex() + step, count);
    if (press.key == Key::Home || press.key == Key::End)
        ChoosePlace(list, press.key == Key::Home ? 0 : count - 1, count);
    if (press.key == Key::Character && !press.ctrl)
        ChoosePlace(list, EntryBeginning(list, QChar(static_cast<char16_t>(press.which))), count);
}

/// Turns the strip that the item is, or lies on, to its next page, round the end.
void TurnPage(Control& item, int step) {
    Control* strip = item.Kind() == ControlKind::SSTab ? &item : item.container;
    if (!strip) return;
    const int count = static_cast<int>(strip->pages.size());
    ChoosePlace(*strip, (strip->ListIndex() + step + count) % count, count);
}

void PressEnter(Form& form, Control& control) {
    if (control.IsButton())
        UserClick(control);
    else if (control.Kind() == ControlKind::ListView)
        UserDoubleClick(control);
    else if (Control* next = form.NextInTabOrder(&control, true))
        form.SetFocus(*next);
}

void KeyOnItem(Form& form, Control& control, const KeyPress& press) {
    const bool pressable = control.IsButton() || control.Kind() == ControlKind::CheckBox;
    const int upOrDown = StepOf(press.key, Key::Up, Key::Down);
    const int sideways = StepOf(press.key, Key::Left, Key::Right);
    if (press.key == Key::Ctrl && control.onKeyDown) control.onKeyDown(press.key);
    if (press.key == Key::Enter && !press.ctrl) return PressEnter(form, control);
    switch (control.Kind()) {
        case ControlKind::ListView:
            KeyOnList(control, press.key);
            break;
        case ControlKind::ComboBox:
            KeyOnChoice(control, press);
            break;
        case ControlKind::EntryNumber:
            if (upOrDown != 0) control.SetValue(control.Value() - upOrDown);
            break;
        case ControlKind::SSTab:
            if (sideways != 0) ChoosePlace(control, control.ListIndex() + sideways, control.pages.size());
            break;
        case ControlKind::SSOption:
            if (upOrDown + sideways != 0) StepOption(control, upOrDown + sideways);
            if (press.key == Key::Space && !press.ctrl) UserClick(control);
            break;
        default:
            if (pressable && press.key == Key::Space && !press.ctrl) UserClick(control);
            break;
    }
}

}  // namespace

Control* ShortcutButton(const Form& form, const KeyPress& press) {
    const Control* item = Hearing(form);
    if (press.key == Key::Character && !press.ctrl && item && item->IsEntry()) return nullptr;
    Control* found = nullptr;
    for (const auto& control : form.Controls()) {
        if (control->shortcut.isEmpty() || KeyNamed(control->shortcut) != press) continue;
        if (!found || !found->EffectivelyVisible()) found = control.get();
    }
    return found;
}

bool LeftToItem(const Form& form, const KeyPress& press) {
    if (ShortcutButton(form, press)) return false;
    const Control* item = Hearing(form);
    const bool entry = item && item->IsEntry();
    switch (press.key) {
        case Key::Function:
            return true;
        case Key::Character:
        case Key::Left:
        case Key::Right:
            return entry;
        case Key::Space:
            return entry && item->Kind() != ControlKind::EntryNumber;
        case Key::Enter:
        case Key::Up:
        case Key::Down:
            return entry && IsMemo(*item);
        case Key::Home:
        case Key::End:
        case Key::PageUp:
        case Key::PageDown:
            return !item || (item->Kind() != ControlKind::ListView && item->Kind() != ControlKind::ComboBox);
        default:
            return false;
    }
}

bool MovesCursor(const Control& entry, Key key) {
    switch (key) {
        case Key::Left:
        case Key::Right:
        case Key::Home:
        case Key::End:
            return true;
        case Key::Up:
        case Key::Down:
        case Key::PageUp:
        case Key::PageDown:
            return IsMemo(entry);
        default:
            return false;
    }
}

bool UserFormKey(Form& form, const KeyPress& press) {
    if (LeftToItem(form, press)) {
        NoteSelection(form, press);
        return false;
    }
    const Gesture gesture(form);
    if (Control* button = ShortcutButton(form, press)) {
        UserClick(*button);
        return true;
    }
    Control* item = Hearing(form);
    const bool enterBack = press.key == Key::Enter && press.shift && !press.ctrl && !(item && item->IsButton());
    const bool back = press.key == Key::Backtab || (press.key == Key::Tab && press.shift) || enterBack;
    if (press.key == Key::Escape) {
        // A copy: what it does may take the handler itself away.
        const auto handler = form.Enabled() ? form.onEscape : form.onEscapeDisabled;
        if (!press.ctrl && handler) handler();
    } else if (press.key != Key::Tab && !back) {
        if (item) KeyOnItem(form, *item, press);
    } else if (press.ctrl) {
        if (item) TurnPage(*item, back ? -1 : 1);
    } else if (Control* next = form.NextInTabOrder(form.Focused(), !back)) {
        form.SetFocus(*next);
    }
    return true;
}

void UserKey(Form& form, const KeyPress& press) {
    if (UserFormKey(form, press)) return;
    Control* entry = Hearing(form);
    if (!entry || !entry->IsEntry()) return;
    const bool newLine = press.key == Key::Enter && !press.ctrl;
    const QString typed = newLine ? QStringLiteral("\r\n") : TypedBy(press);
    if (!typed.isEmpty()) TypeBehind(*entry, typed);
}

std::optional<Button> ButtonMeant(const MessageBox& box, const KeyPress& press) {
    const auto offered = [&box](Button button) {
        return std::find(box.buttons.begin(), box.buttons.end(), button) != box.buttons.end();
    };
    if (press == KeyPress(Key::Enter)) return box.defaultButton;
    if (press == KeyPress(Key::Escape)) return offered(Button::No) ? Button::No : Button::OK;
    for (const auto& [letter, button] : {std::pair{u'Y', Button::Yes}, std::pair{u'N', Button::No}})
        if (press.key == Key::Character && press.which == letter && !press.shift && !press.ctrl && offered(button))
            return button;
    return std::nullopt;
}

}  // namespace screen
