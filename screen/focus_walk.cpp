#include "screen/focus_walk.h"

namespace screen {

namespace {

bool CanBeTarget(const Control& control) {
    const ControlKind kind = control.Kind();
    return control.IsEntry() || kind == ControlKind::CommandButton || kind == ControlKind::SSCommand;
}

}  // namespace

Control* AdvanceFocusTarget(const Form& form, Control* pending) {
    if (!pending) return nullptr;
    Control* target = nullptr;
    for (const auto& control : form.Controls()) {
        if (!CanBeTarget(*control) || !control->Visible() || !control->Enabled() || !control->TabStop()) continue;
        if (control->tabIndex < pending->tabIndex) continue;
        if (!target || control->tabIndex <= target->tabIndex) target = control.get();
    }
    return target ? target : pending;
}

void MoveFocusTo(Form& form, Control& control, Control*& pending) {
    Control* target = AdvanceFocusTarget(form, &control);
    pending = target;
    if (target->Enabled() && target->TabStop()) form.SetFocus(*target);
}

}  // namespace screen
