#include "screen/user_input.h"

#include "items/text_rules.h"
#include "screen/gesture.h"

namespace screen {

namespace {

/// The focus goes where the mouse went. False when the handler of the item that was left put this one out of reach.
bool FocusByMouse(Control& control) {
    UserFocus(control);
    return control.EffectivelyEnabled() && control.EffectivelyVisible();
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

void UserClick(Control& control) {
    const Gesture gesture(control.Owner());
    if (!control.EffectivelyEnabled()) {
        if (control.EffectivelyVisible() && control.Owner().Enabled() && control.onRefused) control.onRefused();
        return;
    }
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
    if (!FocusByMouse(control)) return;
    control.Owner().SetWholeTextSelected(false);
    control.SetValue(value);
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
