#include "desktop/key_meaning.h"

#include <QKeyEvent>
#include <algorithm>

namespace desktop {

using screen::Control;
using screen::ControlKind;
using screen::Key;

namespace {

bool IsButton(const Control& control) {
    return control.Kind() == ControlKind::CommandButton || control.Kind() == ControlKind::SSCommand;
}

bool IsMemo(const Control* control) {
    return control && control->Kind() == ControlKind::EntryMemo;
}

std::optional<Key> ArrowMeaning(int key, const Control* control) {
    if (IsMemo(control)) return std::nullopt;
    const bool option = control && control->Kind() == ControlKind::SSOption;
    if (key == Qt::Key_Up || (option && key == Qt::Key_Left)) return Key::Up;
    if (key == Qt::Key_Down || (option && key == Qt::Key_Right)) return Key::Down;
    return std::nullopt;
}

}  // namespace

std::optional<Key> KeyMeaning(const QKeyEvent& event, const Control* control) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return std::nullopt;
    const bool shift = event.modifiers() & Qt::ShiftModifier;
    switch (event.key()) {
        case Qt::Key_Tab:
            return shift ? Key::Backtab : Key::Tab;
        case Qt::Key_Backtab:
            return Key::Backtab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (IsMemo(control)) return std::nullopt;
            return shift && !(control && IsButton(*control)) ? Key::Backtab : Key::Enter;
        case Qt::Key_Escape:
            return Key::Escape;
        case Qt::Key_Space:
            if (control && control->IsEntry() && control->Kind() != ControlKind::EntryNumber) return std::nullopt;
            return Key::Space;
        default:
            return ArrowMeaning(event.key(), control);
    }
}

int RowMeaning(const QKeyEvent& event, const Control& list, int page) {
    const int last = static_cast<int>(list.Rows().size()) - 1;
    switch (event.key()) {
        case Qt::Key_Home:
            return last < 0 ? -1 : 0;
        case Qt::Key_End:
            return last;
        case Qt::Key_PageUp:
            return last < 0 ? -1 : std::max(list.ListIndex() - page, 0);
        case Qt::Key_PageDown:
            return std::min(list.ListIndex() + page, last);
        default:
            return -1;
    }
}

int PageMeaning(const QKeyEvent& event, const Control& strip) {
    const int step = event.key() == Qt::Key_Right ? 1 : event.key() == Qt::Key_Left ? -1 : 0;
    const int page = strip.ListIndex() + step;
    return step != 0 && page >= 0 && page < strip.pages.size() ? page : -1;
}

bool MeansNothing(const QKeyEvent& event, const Control* control) {
    if (!control || control->IsEntry() || control->Kind() == ControlKind::ComboBox) return false;
    return event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
}

}  // namespace desktop
