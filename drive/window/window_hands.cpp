#include "drive/window/window_hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTabBar>
#include <QtTest/QTest>
#include <algorithm>

#include "desktop/list_table.h"
#include "drive/window/drawn_difference.h"
#include "drive/window/widget_input.h"
#include "screen/user_input.h"
#include "screen/user_keys.h"

namespace drive {

using screen::Control;
using screen::ControlKind;
using screen::Key;
using screen::KeyPress;

namespace {

Qt::Key KeyOf(const KeyPress& press) {
    static const QHash<Key, Qt::Key> keys{
        {Key::Tab, Qt::Key_Tab},       {Key::Backtab, Qt::Key_Backtab},  {Key::Enter, Qt::Key_Return},
        {Key::Escape, Qt::Key_Escape}, {Key::Ctrl, Qt::Key_Control},     {Key::Space, Qt::Key_Space},
        {Key::Up, Qt::Key_Up},         {Key::Down, Qt::Key_Down},        {Key::Left, Qt::Key_Left},
        {Key::Right, Qt::Key_Right},   {Key::Home, Qt::Key_Home},        {Key::End, Qt::Key_End},
        {Key::PageUp, Qt::Key_PageUp}, {Key::PageDown, Qt::Key_PageDown}};
    if (press.key == Key::Function) return static_cast<Qt::Key>(Qt::Key_F1 + press.which - 1);
    return press.key == Key::Character ? static_cast<Qt::Key>(press.which) : keys.value(press.key);
}

Qt::KeyboardModifiers HeldWith(const KeyPress& press) {
    return (press.shift ? Qt::ShiftModifier : Qt::NoModifier) | (press.ctrl ? Qt::ControlModifier : Qt::NoModifier);
}

QPoint Centre(const QWidget& widget) {
    return widget.rect().center();
}

/// A place that belongs to the control for certain: an option listens on its button and words only.
QPoint HotSpot(const Control& control, const QWidget& widget) {
    const bool pressed = control.Kind() == ControlKind::SSOption || control.Kind() == ControlKind::CheckBox;
    return pressed ? QPoint(8, widget.height() / 2) : Centre(widget);
}

void SelectAll(QWidget& widget) {
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->selectAll();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(&widget)) memo->selectAll();
}

/// Leaves the cursor where it is and nothing selected.
void Deselect(QWidget& widget) {
    if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->deselect();
    if (auto* memo = qobject_cast<QPlainTextEdit*>(&widget)) {
        QTextCursor cursor = memo->textCursor();
        cursor.clearSelection();
        memo->setTextCursor(cursor);
    }
}

/// True when the keys of the text, one after the other, give what the whole text gives. The item's limit may let a
/// later character in where an earlier one was too wide, and a number repairs itself at each key.
bool CanBeKeyed(const Control& control, const QString& text) {
    if (control.use != screen::EntryUse::Code || control.Kind() == ControlKind::EntryNumber) return false;
    const bool printable = std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
    return printable && screen::AcceptedText(control, text).size() == text.size();
}

/// Replaces the whole text of an entry.
void Retype(const Control& control, QWidget& widget, const QString& text) {
    SelectAll(widget);
    if (text.isEmpty())
        Press(widget, Qt::Key_Delete);
    else if (CanBeKeyed(control, text))
        TypeKeys(widget, text);
    else
        CommitText(widget, text);
}

}  // namespace

const desktop::ControlWidget& WindowHands::WidgetOf(const Control& control) const {
    const desktop::FormView* view = windows_.ViewOf(control.Owner());
    const desktop::ControlWidget* widget = view ? view->WidgetOf(control) : nullptr;
    if (!widget) qFatal("%s is not drawn", qPrintable(control.Name()));
    return *widget;
}

void WindowHands::Focus(Control& control) {
    // A second click would place the cursor and lift the selection.
    if (control.Owner().Focused() == &control) return;
    const desktop::ControlWidget widget = WidgetOf(control);
    if (control.IsEntry())
        ClickAt(*widget.mouse, QPoint(5, widget.mouse->height() / 2));
    else
        GiveFocus(*widget.keys);  // a click would also press, choose or turn the page
}

void WindowHands::Type(Control& control, const QString& text) {
    Retype(control, *WidgetOf(control).keys, text);
    control.Owner().SetWholeTextSelected(false);
}

void WindowHands::PressKey(screen::Form& form, const KeyPress& press) {
    desktop::FormView* view = windows_.ViewOf(form);
    if (!view) return;
    const QPointer<QWidget> widget = view->FocusTarget();
    if (widget == view || !form.Focused()->IsEntry() || !screen::LeftToItem(form, press)) {
        Press(*widget, KeyOf(press), HeldWith(press));
        // What a drop-down list unfolds on its own is no part of the form.
        if (auto* list = qobject_cast<QComboBox*>(widget.data())) list->hidePopup();
        return;
    }
    // The clipboard and what could be undone would be those of the machine.
    const bool selectsAll = press.which == u'A';
    if (press.key == Key::Character && press.ctrl && !selectsAll) return;
    const bool inMemo = form.Focused()->Kind() == ControlKind::EntryMemo;
    const QString typed = screen::TypedBy(press);
    const bool newLine = press.key == Key::Enter && !press.ctrl;
    // What is typed without a place goes behind the text.
    if ((newLine || !typed.isEmpty()) && !form.WholeTextSelected())
        Press(*widget, Qt::Key_End, inMemo ? Qt::ControlModifier : Qt::NoModifier);
    if (press.key == Key::Character || press.key == Key::Space)
        PressTyping(*widget, KeyOf(press), HeldWith(press), typed);
    else
        Press(*widget, KeyOf(press), HeldWith(press));
    // How much the cursor drags along hangs on where it stood.
    if (screen::MovesCursor(*form.Focused(), press.key)) Deselect(*widget);
}

void WindowHands::Click(Control& control) {
    const desktop::ControlWidget widget = WidgetOf(control);
    if (auto* strip = qobject_cast<QTabBar*>(widget.mouse))
        ClickAt(*strip, strip->tabRect(std::max(control.ListIndex(), 0)).center());
    else
        ClickAt(*widget.mouse, HotSpot(control, *widget.mouse));
}

void WindowHands::DoubleClick(Control& control) {
    const desktop::ControlWidget widget = WidgetOf(control);
    // On a list the first click would choose the row under the mouse; the gesture is meant for the chosen one.
    const bool needsFirst = control.IsEntry() && control.Owner().Focused() != &control;
    const QPointer<QWidget> still = widget.mouse;
    QPoint place(5, widget.mouse->height() / 2);
    if (control.Kind() == ControlKind::ListView) {
        auto* table = static_cast<desktop::ListTable*>(widget.whole);
        table->PaintNow();
        if (control.ListIndex() < 0) return Focus(control);
        table->BringSelectedIntoView();
        place = table->visualRect(table->model()->index(control.ListIndex(), 0)).center();
    }
    if (needsFirst) ClickAt(*widget.mouse, place);
    if (!still) return;
    const bool whole = control.Owner().WholeTextSelected();
    DoubleClickAt(*still, place);
    // It selects a word; how much of the text that is must not make the answers differ.
    if (still && control.Owner().Focused() == &control) whole ? SelectAll(*widget.keys) : Deselect(*widget.keys);
}

void WindowHands::Choose(Control& control, int entry) {
    const desktop::ControlWidget widget = WidgetOf(control);
    if (auto* strip = qobject_cast<QTabBar*>(widget.mouse)) return ClickAt(*strip, strip->tabRect(entry).center());
    auto* list = qobject_cast<QComboBox*>(widget.whole);
    const QPointer<QWidget> still = list;
    QTest::mousePress(list, Qt::LeftButton, Qt::NoModifier, Centre(*list));
    if (!still || !list->view()->isVisible()) return;
    QAbstractItemView* popup = list->view();
    Press(*popup, Qt::Key_Home);
    for (int step = 0; step < entry; ++step)
        Press(*popup, Qt::Key_Down);
    Press(*popup, Qt::Key_Return);
}

void WindowHands::SetValue(Control& control, int value) {
    const desktop::ControlWidget widget = WidgetOf(control);
    const QPointer<QWidget> still = widget.keys;
    Focus(control);
    if (!still || !control.EffectivelyEnabled()) return;
    Retype(control, *still, QString::number(std::clamp(value, control.minimum, control.maximum)));
}

void WindowHands::SelectRow(Control& control, int row) {
    auto* table = static_cast<desktop::ListTable*>(WidgetOf(control).whole);
    table->scrollTo(table->model()->index(row, 0));
    // A hand clicks what the eye saw.
    table->PaintNow();
    const QPoint place(table->columnViewportPosition(0) + 3,
                       table->rowViewportPosition(row) + table->rowHeight(row) / 2);
    ClickAt(*table->viewport(), place);
}

void WindowHands::ClickHeader(Control& control, int column) {
    auto* table = static_cast<desktop::ListTable*>(WidgetOf(control).whole);
    QHeaderView* header = table->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    ClickAt(*header->viewport(), place);
}

void WindowHands::Drop(Control& control, const QStringList& paths) {
    DropFiles(*static_cast<desktop::ListTable*>(WidgetOf(control).whole)->viewport(), paths);
}

void WindowHands::Answer(screen::Button button) {
    QMessageBox* box = windows_.BoxInFront();
    if (!box) return;
    const QMessageBox::StandardButton standard = button == screen::Button::OK    ? QMessageBox::Ok
                                                 : button == screen::Button::Yes ? QMessageBox::Yes
                                                                                 : QMessageBox::No;
    if (QAbstractButton* drawn = box->button(standard)) ClickAt(*drawn, Centre(*drawn));
}

void WindowHands::AnswerByKey(const KeyPress& press) {
    QMessageBox* box = windows_.BoxInFront();
    if (!box) return;
    QWidget* focused = box->focusWidget();
    Press(focused ? *focused : *box, KeyOf(press), HeldWith(press));
}

void WindowHands::AnswerPath(const std::optional<QString>& path) {
    QFileDialog* dialog = windows_.DialogInFront();
    // The dialog would make a path absolute and refuse one that isn't there; a command's path goes on as it stands.
    if (path || !dialog)
        windows_.AnswerPath(path);
    else
        dialog->reject();
}

void WindowHands::Close(screen::Form& form) {
    if (desktop::FormView* view = windows_.ViewOf(form)) view->close();
}

void WindowHands::Settle() {
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round)
        windows_.ProcessEvents();
}

QString WindowHands::DrawnDifference(const screen::Form& form) {
    desktop::FormView* view = windows_.ViewOf(form);
    if (!view) return form.Name() + QStringLiteral(" is not drawn");
    return FormDifference(form, *view);
}

}  // namespace drive
