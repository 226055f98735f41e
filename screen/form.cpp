#include "screen/form.h"

#include <algorithm>

namespace screen {

Form::Form(QString name) : name_(std::move(name)) {}

void Form::SetCaption(const QString& caption) {
    caption_ = caption;
    if (watcher) watcher->FormChanged();
}

void Form::SetEnabled(bool enabled) {
    enabled_ = enabled;
    if (watcher) watcher->FormChanged();
}

Control& Form::Add(ControlKind kind, const QString& name, const QString& caption, int index) {
    auto control = std::make_unique<Control>(*this, kind, name, index);
    control->tabIndex = static_cast<int>(controls_.size());
    control->SetCaption(caption);
    controls_.push_back(std::move(control));
    return *controls_.back();
}

Control* Form::Find(const QString& name, int index) const {
    for (const auto& control : controls_)
        if (control->Name() == name && control->Index() == index) return control.get();
    return nullptr;
}

Control& Form::At(const QString& name, int index) const {
    Control* control = Find(name, index);
    if (!control) qFatal("no item %s(%d) on %s", qPrintable(name), index, qPrintable(name_));
    return *control;
}

bool Form::CanFocus(const Control& control) const {
    return control.TakesFocus() && control.EffectivelyVisible() && control.EffectivelyEnabled();
}

bool Form::SetFocus(Control& control) {
    if (&control.Owner() != this || !CanFocus(control)) return false;
    movingTo_ = &control;
    if (leaving_ || focused_ == &control) return true;
    if (Control* old = focused_; old && old->onLostFocus) {
        leaving_ = true;
        old->onLostFocus();
        leaving_ = false;
        if (!CanFocus(*movingTo_)) return false;
    }
    focused_ = movingTo_;
    wholeTextSelected_ = focused_->IsEntry() && focused_->Kind() != ControlKind::EntryMemo;
    if (watcher) watcher->FocusChanged();
    if (focused_->onGotFocus) focused_->onGotFocus();
    return true;
}

void Form::CommitFocused() {
    if (focused_ && focused_->onLostFocus) focused_->onLostFocus();
}

bool Form::IsTabStop(const Control& control) const {
    if (!control.TabStop() || !CanFocus(control)) return false;
    if (control.Kind() != ControlKind::SSOption) return true;
    // A group is one stop: its pressed option, or the first that can be reached.
    const Control* first = nullptr;
    for (const auto& other : controls_) {
        if (other->Name() != control.Name() || !CanFocus(*other)) continue;
        if (other->Value() != 0) return other.get() == &control;
        if (!first) first = other.get();
    }
    return first == &control;
}

Control* Form::NextInTabOrder(const Control* from, bool forward) const {
    std::vector<Control*> stops;
    for (const auto& control : controls_) {
        // The options of the group that the focus is in count as one place, so that Tab leaves the group.
        const bool sameGroup = from && from->Kind() == ControlKind::SSOption && control->Name() == from->Name();
        if (control.get() == from || (!sameGroup && IsTabStop(*control))) stops.push_back(control.get());
    }
    std::stable_sort(stops.begin(), stops.end(), [](auto* a, auto* b) { return a->tabIndex < b->tabIndex; });
    if (stops.empty()) return nullptr;
    const auto place = std::find(stops.begin(), stops.end(), from);
    if (place == stops.end()) return forward ? stops.front() : stops.back();
    const std::size_t count = stops.size();
    const std::size_t at = static_cast<std::size_t>(place - stops.begin());
    return stops[forward ? (at + 1) % count : (at + count - 1) % count];
}

void Form::FocusFirst() {
    if (Control* first = NextInTabOrder(nullptr, true)) SetFocus(*first);
}

void Form::SetLoaded(bool loaded) {
    loaded_ = loaded;
    if (!loaded) focused_ = nullptr;
}

}  // namespace screen
