#include "screen/control.h"

#include <algorithm>

#include "items/display_forms.h"
#include "screen/form.h"

namespace screen {

QString KindName(ControlKind kind) {
    static const char* const names[] = {"CommandButton", "SSCommand",     "SSPanel",     "SSOption",
                                        "CheckBox",      "ComboBox",      "ListView",    "SSTab",
                                        "EntryField",    "EntrySecret",   "EntryNumber", "EntryMemo",
                                        "EntryKana",     "EntryPostcode", "EntryPhone",  "CaptionLabel"};
    return QString::fromLatin1(names[static_cast<int>(kind)]);
}

Control::Control(Form& form, ControlKind kind, QString name, int index)
    : form_(form), kind_(kind), name_(std::move(name)), index_(index) {
    tabStop_ = TakesFocus();
    if (kind == ControlKind::SSTab) listIndex_ = 0;
}

void Control::Changed() {
    if (form_.watcher) form_.watcher->ControlChanged(*this);
}

void Control::SetCaption(const QString& caption) {
    if (caption == caption_) return;
    caption_ = caption;
    Changed();
}

QString Control::Text() const {
    if (kind_ == ControlKind::EntryNumber) return QString::number(value_);
    if (kind_ == ControlKind::EntryPostcode) return items::PostcodeEntryText(text_);
    return text_;
}

void Control::SetText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    Changed();
    if (onChange) onChange();
}

void Control::SetValue(int value) {
    if (kind_ == ControlKind::EntryNumber) value = std::clamp(value, minimum, maximum);
    if (value == value_) return;
    value_ = value;
    onlyPressed_ = false;
    if (kind_ == ControlKind::SSOption && value != 0)
        for (const auto& other : form_.Controls())
            if (other.get() != this && other->Name() == name_) other->SetValue(0);
    Changed();
    if (onChange) onChange();
}

void Control::SetChosen(bool chosen) {
    if (onlyPressed_ == !chosen) return;
    onlyPressed_ = !chosen;
    Changed();
}

void Control::SetListIndex(int index) {
    const auto count = kind_ == ControlKind::ComboBox   ? static_cast<int>(entries_.size())
                       : kind_ == ControlKind::ListView ? static_cast<int>(rows_.size())
                                                        : index + 1;
    if (index < 0 || index >= count) index = -1;
    if (index == listIndex_) return;
    listIndex_ = index;
    Changed();
    if (onChange) onChange();
}

void Control::SetEntries(const QStringList& entries) {
    entries_ = entries;
    if (listIndex_ >= entries.size()) listIndex_ = -1;
    Changed();
}

void Control::SetRows(std::vector<ListRow> rows) {
    rows_ = std::move(rows);
    listIndex_ = -1;
    Changed();
}

void Control::SetSorted(std::optional<RowOrder> sorted) {
    if (sorted == sorted_) return;
    sorted_ = sorted;
    Changed();
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) return;
    visible_ = visible;
    Changed();
}

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    Changed();
}

void Control::SetTabStop(bool tabStop) {
    tabStop_ = tabStop;
}

bool Control::EffectivelyVisible() const {
    if (!visible_) return false;
    return !container || (container->EffectivelyVisible() && container->ListIndex() == page);
}

bool Control::EffectivelyEnabled() const {
    return enabled_ && form_.Enabled() && (!container || container->EffectivelyEnabled());
}

bool Control::TakesFocus() const {
    return kind_ != ControlKind::SSPanel && kind_ != ControlKind::CaptionLabel;
}

bool Control::IsButton() const {
    return kind_ == ControlKind::CommandButton || kind_ == ControlKind::SSCommand;
}

bool Control::IsEntry() const {
    switch (kind_) {
        case ControlKind::EntryField:
        case ControlKind::EntrySecret:
        case ControlKind::EntryNumber:
        case ControlKind::EntryMemo:
        case ControlKind::EntryKana:
        case ControlKind::EntryPostcode:
        case ControlKind::EntryPhone:
            return true;
        default:
            return false;
    }
}

}  // namespace screen
