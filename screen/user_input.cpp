#include "screen/user_input.h"

#include <QStringView>
#include <algorithm>

#include "items/text_rules.h"

namespace screen {

namespace {

/// Tells the form at the end of a gesture that it was carried out.
class Gesture {
  public:
    explicit Gesture(Form& form) : form_(form) { ++form_.gesturesUnderWay; }
    ~Gesture() {
        --form_.gesturesUnderWay;
        if (form_.onUserActed) form_.onUserActed();
    }
    Gesture(const Gesture&) = delete;
    Gesture& operator=(const Gesture&) = delete;

  private:
    Form& form_;
};

bool IsButton(const Control& control) {
    return control.Kind() == ControlKind::CommandButton || control.Kind() == ControlKind::SSCommand;
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

/// The focus goes where the mouse went. False when the handler of the item that was left put this one out of reach.
bool FocusByMouse(Control& control) {
    UserFocus(control);
    return control.EffectivelyEnabled() && control.EffectivelyVisible();
}

void StepArrow(Control& control, int step) {
    switch (control.Kind()) {
        case ControlKind::EntryNumber:
            control.SetValue(control.Value() - step);
            break;
        case ControlKind::ComboBox:
            if (const int entry = control.ListIndex() + step; entry >= 0 && entry < control.Entries().size())
                UserChoose(control, entry);
            break;
        case ControlKind::ListView:
            if (const int row = control.ListIndex() + step; row >= 0 && row < static_cast<int>(control.Rows().size()))
                UserSelectRow(control, row);
            break;
        case ControlKind::SSOption:
            StepOption(control, step);
            break;
        default:
            break;
    }
}

void TypeBehind(Control& control, const QString& text) {
    const bool replaces = control.Owner().WholeTextSelected();
    UserType(control, replaces ? text : control.RawText() + text);
}

void PressEnter(Form& form, Control& control) {
    if (IsButton(control)) {
        UserClick(control);
    } else if (control.Kind() == ControlKind::EntryMemo) {
        TypeBehind(control, QStringLiteral("\r\n"));
    } else if (control.Kind() == ControlKind::ListView) {
        UserDoubleClick(control);
    } else if (Control* next = form.NextInTabOrder(&control, true)) {
        form.SetFocus(*next);
    }
}

void PressSpace(Control& control) {
    if (control.IsEntry() && control.Kind() != ControlKind::EntryNumber) {
        TypeBehind(control, QStringLiteral(" "));
    } else if (IsButton(control) || control.Kind() == ControlKind::SSOption ||
               control.Kind() == ControlKind::CheckBox) {
        UserClick(control);
    }
}

}  // namespace

bool UserFocus(Control& control) {
    const Gesture gesture(control.Owner());
    return control.Owner().SetFocus(control);
}

QString AcceptedText(const Control& control, const QString& typed) {
    QString text = typed;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    // No database text can hold a zero character; a statement with one would fail as a whole.
    text.remove(QChar(u'\0'));
    if (control.Kind() == ControlKind::EntryMemo)
        text.replace(u'\n', QStringLiteral("\r\n"));
    else
        text.remove(u'\n');
    if (control.Kind() == ControlKind::EntryPhone || control.Kind() == ControlKind::EntryPostcode)
        text = items::WithoutQuotes(text);
    if (control.use == EntryUse::Code) text = items::FoldFullWidthDigits(text);
    if (control.enforcesMaxLength && control.maxLength > 0) text = items::TruncateToBytes(text, control.maxLength);
    return text;
}

void UserType(Control& control, const QString& text) {
    const Gesture gesture(control.Owner());
    if (control.readOnly) return;
    control.Owner().SetWholeTextSelected(false);
    const QString accepted = AcceptedText(control, text);
    if (control.Kind() == ControlKind::EntryNumber)
        control.SetValue(items::Val16(accepted));
    else
        control.SetText(accepted);
}

void UserKey(Form& form, Key key) {
    const Gesture gesture(form);
    Control* control = form.Focused();
    if (key == Key::Escape) {
        // A copy: what it does may take the handler itself away.
        const auto handler = form.Enabled() ? form.onEscape : form.onEscapeDisabled;
        if (handler) handler();
        return;
    }
    if (key == Key::Tab || key == Key::Backtab) {
        if (Control* next = form.NextInTabOrder(control, key == Key::Tab)) form.SetFocus(*next);
        return;
    }
    if (!control || !control->EffectivelyEnabled()) return;
    switch (key) {
        case Key::Ctrl:
            if (control->onKeyDown) control->onKeyDown(key);
            break;
        case Key::Enter:
            PressEnter(form, *control);
            break;
        case Key::Down:
        case Key::Up:
            StepArrow(*control, key == Key::Down ? 1 : -1);
            break;
        case Key::Space:
            PressSpace(*control);
            break;
        default:
            break;
    }
}

void UserClick(Control& control) {
    const Gesture gesture(control.Owner());
    if (control.TakesFocus() && !FocusByMouse(control)) return;
    if (control.Kind() == ControlKind::SSOption) control.SetValue(1);
    if (control.Kind() == ControlKind::CheckBox) control.SetValue(control.Value() == 0 ? 1 : 0);
    if (control.onClick) control.onClick();
}

void UserDoubleClick(Control& control) {
    const Gesture gesture(control.Owner());
    if (control.TakesFocus() && !FocusByMouse(control)) return;
    if (control.onDoubleClick) control.onDoubleClick();
}

void UserChoose(Control& control, int entry) {
    const Gesture gesture(control.Owner());
    if (!FocusByMouse(control)) return;
    control.SetListIndex(entry);
    if (control.onClick) control.onClick();
}

void UserSetValue(Control& control, int value) {
    const Gesture gesture(control.Owner());
    if (FocusByMouse(control)) control.SetValue(value);
}

void UserSelectRow(Control& control, int row) {
    if (!FocusByMouse(control)) return;
    control.SetListIndex(row);
    if (control.onClick) control.onClick();
}

void UserClickHeader(Control& control, int column) {
    if (control.onHeaderClick) control.onHeaderClick(column);
}

void UserGivePaths(Control& control, const QStringList& paths) {
    if (paths.isEmpty() || !FocusByMouse(control)) return;
    if (control.onPathsGiven) control.onPathsGiven(paths);
}

}  // namespace screen
