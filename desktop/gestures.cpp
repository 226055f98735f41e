#include "desktop/gestures.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTabBar>
#include <QTimer>
#include <QUrl>

#include "desktop/entry_widgets.h"
#include "desktop/form_view.h"
#include "desktop/key_meaning.h"
#include "desktop/list_table.h"
#include "screen/user_input.h"
#include "screen/user_keys.h"

namespace desktop {

using screen::Control;
using screen::ControlKind;

namespace {

/// The files and folders of this machine's file system among what is dragged or lies on the clipboard.
QStringList PathsIn(const QMimeData* data) {
    QStringList paths;
    if (!data) return paths;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) paths.append(QDir::toNativeSeparators(url.toLocalFile()));
    return paths;
}

}  // namespace

Gestures::Gestures(FormView& view) : view_(view) {}

bool Gestures::TakesInput() const {
    return view_.Model() && view_.Model()->Loaded() && view_.Model()->Enabled();
}

void Gestures::Watch(const ControlWidget& widget) {
    Control* control = widget.control;
    for (QWidget* part : {widget.keys, widget.mouse}) {
        if (watched_.contains(part)) continue;
        watched_.insert(part, widget);
        part->installEventFilter(this);
    }
    if (auto* line = qobject_cast<QLineEdit*>(widget.whole)) {
        connect(line, &QLineEdit::textEdited, this, [this, control](const QString& text) { Typed(*control, text); });
        connect(line, &QLineEdit::selectionChanged, this, [this, control, line] {
            if (!line->text().isEmpty()) Selected(*control, line->selectedText() == line->text());
        });
    } else if (control->Kind() == ControlKind::EntryMemo) {
        auto* memo = static_cast<MemoEntry*>(widget.whole);
        connect(memo, &QPlainTextEdit::textChanged, this, [this, control, memo] {
            if (!view_.Drawing()) Typed(*control, memo->TypedText());
        });
    } else if (auto* list = qobject_cast<QComboBox*>(widget.whole)) {
        connect(list, &QComboBox::activated, this, [this, control](int entry) { Chosen(*control, entry); });
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget.whole)) {
        connect(button, &QAbstractButton::clicked, this, [this, control] {
            if (TakesInput()) screen::UserClick(*control);
            if (view_.Model()) view_.Draw(*control);
        });
    } else if (control->Kind() == ControlKind::ListView) {
        auto* table = static_cast<ListTable*>(widget.whole);
        // An assistive tool selects rows in the table itself.
        connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, control, table] {
            if (view_.Drawing() || !view_.Model()) return;
            if (TakesInput() && !table->Unpainted() && table->SelectedRow() >= 0)
                screen::UserSelectRow(*control, table->SelectedRow());
            if (view_.Model()) view_.Draw(*control);
        });
        auto* header = table->horizontalHeader();
        connect(header, &QHeaderView::sectionClicked, this, [this, control](int column) {
            if (TakesInput()) screen::UserClickHeader(*control, column);
            if (view_.Model()) view_.Draw(*control);
        });
    }
}

bool Gestures::eventFilter(QObject* watched, QEvent* event) {
    if (!view_.Model()) return false;
    const auto found = watched_.constFind(watched);
    if (found == watched_.cend() && watched != &view_) return false;
    const ControlWidget widget = found == watched_.cend() ? ControlWidget() : *found;
    Control* control = widget.control;
    if (control && !control->EffectivelyEnabled() && ClickedInVain(*control, widget, *event)) return true;
    switch (event->type()) {
        case QEvent::KeyPress:
            return KeyPressed(control, static_cast<QKeyEvent&>(*event));
        case QEvent::KeyRelease:
            return KeyReleased(control, static_cast<QKeyEvent&>(*event));
        case QEvent::MouseButtonPress:
            ctrlAlone_ = false;
            // What is still being composed belongs to the item that the user leaves now.
            if (composing_) QGuiApplication::inputMethod()->commit();
            asked_ = control;
            return !TakesInput() || (control && MousePressed(*control, widget, static_cast<QMouseEvent&>(*event)));
        case QEvent::MouseButtonRelease:
            return !TakesInput() || (control && MouseReleased(*control, widget, static_cast<QMouseEvent&>(*event)));
        case QEvent::MouseButtonDblClick:
            return !TakesInput() || (control && DoubleClicked(*control, static_cast<QMouseEvent&>(*event)));
        case QEvent::MouseMove:
            // A press chose the row; dragging on would choose another one behind the form's back.
            return control && control->Kind() == ControlKind::ListView;
        case QEvent::Wheel:
            ctrlAlone_ = false;
            return control && WheelTurned(*control, widget, static_cast<QWheelEvent&>(*event));
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return PathsOffered(control, *event);
        case QEvent::FocusIn:
            return FocusCame(watched, control, static_cast<QFocusEvent&>(*event));
        case QEvent::InputMethod:
            composing_ = !static_cast<QInputMethodEvent&>(*event).preeditString().isEmpty();
            return false;
        case QEvent::Resize:
        case QEvent::Move:
        case QEvent::Show:
            if (control && control == view_.Model()->Focused()) view_.PlaceRing();
            return false;
        default:
            return false;
    }
}

ListTable* Gestures::TableOf(const Control* control) const {
    if (!control || control->Kind() != ControlKind::ListView) return nullptr;
    return static_cast<ListTable*>(view_.WidgetOf(*control)->whole);
}

bool Gestures::KeyPressed(Control* control, const QKeyEvent& event) {
    if (!TakesInput()) {
        if (event.key() == Qt::Key_Escape && view_.Model()->Loaded())
            screen::UserKey(*view_.Model(), screen::Key::Escape);
        return true;
    }
    if (event.key() == Qt::Key_Control) {
        if (!event.isAutoRepeat())
            ctrlAlone_ = event.modifiers() == Qt::ControlModifier || event.modifiers() == Qt::NoModifier;
        return false;
    }
    ctrlAlone_ = false;
    const std::optional<screen::KeyPress> press = PressOf(event);
    if (press && screen::ShortcutButton(*view_.Model(), *press)) {
        // What is still being composed belongs to the item that the click leaves.
        if (composing_) QGuiApplication::inputMethod()->commit();
        return screen::UserFormKey(*view_.Model(), *press);
    }
    if (composing_) return false;
    ListTable* table = TableOf(control);
    if (table && event.matches(QKeySequence::Copy)) {
        table->CopyRows();
        return true;
    }
    if (PathsPasted(control, event)) return true;
    // Who types ahead of a search picks what the search brought: it is shown before the key is heard.
    if (table && table->Unpainted()) table->PaintNow();
    const bool enter = press && press->key == screen::Key::Enter;
    // A key that is held picks or presses once, and doesn't go on in the window behind.
    if (enter && event.isAutoRepeat() && !(control && control->Kind() == ControlKind::EntryMemo)) return true;
    // A row that was scrolled out of sight is shown first: what is picked is seen.
    if (enter && table && table->BringSelectedIntoView()) return true;
    const bool leaves = press && !screen::UserFormKey(*view_.Model(), *press);
    if (press && !leaves) return true;
    // Nothing is left to a table: it would search for a letter and select what it finds.
    return table || MeansNothing(event, control);
}

bool Gestures::KeyReleased(Control* control, const QKeyEvent& event) {
    if (event.key() == Qt::Key_Control && ctrlAlone_ && !event.isAutoRepeat()) {
        ctrlAlone_ = false;
        if (TakesInput() && !composing_) screen::UserFormKey(*view_.Model(), screen::Key::Ctrl);
        return false;
    }
    // The press of such a key was the whole gesture.
    const std::optional<screen::KeyPress> press = PressOf(event);
    return control && !control->IsEntry() && press && !screen::LeftToItem(*view_.Model(), *press);
}

bool Gestures::MousePressed(Control& control, const ControlWidget& widget, const QMouseEvent& event) {
    switch (control.Kind()) {
        case ControlKind::SSPanel:
        case ControlKind::CaptionLabel:
            return true;
        case ControlKind::ComboBox:
            screen::UserFocus(control);
            return !control.EffectivelyEnabled();
        case ControlKind::SSTab: {
            const int page = static_cast<QTabBar*>(widget.mouse)->tabAt(event.pos());
            if (page >= 0) screen::UserChoose(control, page);
            return true;
        }
        case ControlKind::ListView: {
            auto* table = static_cast<ListTable*>(widget.whole);
            // A click from before the rows changed was meant for what stood there then.
            if (table->Unpainted()) return true;
            const int row = table->rowAt(event.pos().y());
            if (row >= 0 && event.button() == Qt::LeftButton)
                screen::UserSelectRow(control, row);
            else
                screen::UserFocus(control);
            return true;
        }
        default:
            return control.IsEntry() && PressedOnEntry(control, widget, event);
    }
}

bool Gestures::ClickedInVain(Control& control, const ControlWidget& widget, QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return true;
        case QEvent::MouseButtonRelease: {
            const auto& mouse = static_cast<QMouseEvent&>(event);
            if (mouse.button() == Qt::LeftButton && widget.mouse->rect().contains(mouse.pos()) && TakesInput())
                screen::UserClick(control);
            return true;
        }
        default:
            return false;
    }
}

bool Gestures::PressedOnEntry(Control& control, const ControlWidget& widget, const QMouseEvent& event) {
    const bool hadFocus = view_.Model()->Focused() == &control;
    if (!hadFocus) screen::UserFocus(control);
    if (!view_.Model()) return true;
    const bool hasFocus = view_.Model()->Focused() == &control;
    if (control.Kind() == ControlKind::EntryMemo) return !hasFocus;
    if (auto* number = dynamic_cast<NumberEntry*>(widget.whole); number && hasFocus) {
        if (const int step = number->ArrowAt(event.pos()); step != 0) {
            screen::UserFormKey(*view_.Model(), step > 0 ? screen::Key::Up : screen::Key::Down);
            return true;
        }
    }
    // The click that brings the focus leaves the whole text selected; the next one places the cursor.
    return !hadFocus;
}

bool Gestures::MouseReleased(Control& control, const ControlWidget& widget, const QMouseEvent& event) {
    if (control.Kind() != ControlKind::SSPanel && control.Kind() != ControlKind::CaptionLabel) return false;
    if (event.button() == Qt::LeftButton && widget.mouse->rect().contains(event.pos())) screen::UserClick(control);
    return true;
}

bool Gestures::DoubleClicked(Control& control, const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return true;
    if (auto* table = TableOf(&control)) {
        if (table->Unpainted()) return true;
        // The row under the mouse is the one that is meant, also where its first click was dropped.
        const int row = table->rowAt(event.pos().y());
        if (row >= 0 && row != control.ListIndex()) screen::UserSelectRow(control, row);
    }
    if (!control.onDoubleClick) return false;
    if (asked_ == &control)
        control.onDoubleClick();
    else
        screen::UserDoubleClick(control);
    return true;
}

bool Gestures::FocusCame(QObject* watched, Control* control, const QFocusEvent& event) {
    ctrlAlone_ = false;
    if (view_.Drawing()) return false;
    const Qt::FocusReason reason = event.reason();
    const bool byUser =
        reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
    if (byUser && control && TakesInput()) screen::UserFocus(*control);
    view_.SyncFocus();
    return view_.Model() && watched != view_.FocusTarget();
}

bool Gestures::WheelTurned(Control& control, const ControlWidget& widget, QWheelEvent& event) {
    if (control.Kind() != ControlKind::ComboBox && control.Kind() != ControlKind::EntryNumber &&
        control.Kind() != ControlKind::SSTab)
        return false;
    const bool focused = view_.Model()->Focused() == &control && widget.keys == view_.focusWidget();
    if (!focused || control.Kind() != ControlKind::EntryNumber) {
        // A list that changes while the screen is scrolled would go unnoticed.
        if (focused && control.Kind() == ControlKind::ComboBox && TakesInput()) return false;
        event.ignore();
        return true;
    }
    if (TakesInput() && event.angleDelta().y() != 0)
        screen::UserFormKey(*view_.Model(), event.angleDelta().y() > 0 ? screen::Key::Up : screen::Key::Down);
    return true;
}

bool Gestures::PathsOffered(Control* control, QEvent& event) {
    if (!control || !control->onPathsGiven) return false;
    auto& offer = static_cast<QDropEvent&>(event);
    const QStringList paths = PathsIn(offer.mimeData());
    if (paths.isEmpty() || !TakesInput() || !control->EffectivelyEnabled()) {
        offer.ignore();
        return true;
    }
    // Whatever the other program would like: its files stay where they are.
    offer.setDropAction(Qt::CopyAction);
    offer.accept();
    if (event.type() != QEvent::Drop) return true;
    // The other program waits until the drop is over, and a copy may take long.
    QTimer::singleShot(0, this, [this, control, paths] {
        if (TakesInput()) screen::UserGivePaths(*control, paths);
    });
    return true;
}

bool Gestures::PathsPasted(Control* control, const QKeyEvent& event) {
    if (!control || !control->onPathsGiven || !event.matches(QKeySequence::Paste)) return false;
    screen::UserGivePaths(*control, PathsIn(QGuiApplication::clipboard()->mimeData()));
    return true;
}

void Gestures::Typed(Control& control, const QString& text) {
    if (view_.Drawing()) return;
    if (TakesInput()) screen::UserType(control, text);
    // The control may have folded or cut it.
    if (view_.Model()) view_.Draw(control);
}

void Gestures::Chosen(Control& control, int entry) {
    if (view_.Drawing()) return;
    if (!TakesInput() || !control.EffectivelyEnabled()) {
        // Nothing: the drawing below takes the choice back.
    } else if (asked_ == &control && view_.Model()->Focused() != &control) {
        // The press asked for the focus and the form sent it elsewhere; asking once more would move it twice.
        control.SetListIndex(entry);
        if (control.onClick) control.onClick();
    } else {
        screen::UserChoose(control, entry);
    }
    if (view_.Model()) view_.Draw(control);
}

void Gestures::Selected(Control& control, bool whole) {
    if (!view_.Drawing() && view_.Model() && view_.Model()->Focused() == &control)
        view_.Model()->SetWholeTextSelected(whole);
}

}  // namespace desktop
