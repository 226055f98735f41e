#pragma once

#include <QHash>
#include <QObject>
#include <optional>

#include "desktop/control_widget.h"
#include "screen/form.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class QFocusEvent;

namespace desktop {

class FormView;
class ListTable;

/// Turns what the user does to the widgets of a view into what it means to the form: it sees each key, click and focus
/// before the widget does, and lets through only what the widget itself has to do, such as editing a text.
class Gestures : public QObject {
  public:
    explicit Gestures(FormView& view);
    /// Takes care of one more widget.
    void Watch(const ControlWidget& widget);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool KeyPressed(screen::Control* control, const QKeyEvent& event);
    bool KeyReleased(screen::Control* control, const QKeyEvent& event);
    bool MousePressed(screen::Control& control, const ControlWidget& widget, const QMouseEvent& event);
    /// A press or click of the mouse on a widget that takes no input.
    bool ClickedInVain(screen::Control& control, const ControlWidget& widget, QEvent& event);
    bool PressedOnEntry(screen::Control& control, const ControlWidget& widget, const QMouseEvent& event);
    bool MouseReleased(screen::Control& control, const ControlWidget& widget, const QMouseEvent& event);
    bool DoubleClicked(screen::Control& control, const QMouseEvent& event);
    bool FocusCame(QObject* watched, screen::Control* control, const QFocusEvent& event);
    bool WheelTurned(screen::Control& control, const ControlWidget& widget, QWheelEvent& event);

    bool PathsOffered(screen::Control* control, QEvent& event);
    bool PathsPasted(screen::Control* control, const QKeyEvent& event);

    void Typed(screen::Control& control, const QString& text);
    void Chosen(screen::Control& control, int entry);
    void Selected(screen::Control& control, bool whole);
    bool TakesInput() const;
    /// The table of a list; null for other controls.
    ListTable* TableOf(const screen::Control* control) const;

    FormView& view_;
    QHash<QObject*, ControlWidget> watched_;
    /// The control whose focus the last press asked for. A double click that follows doesn't ask again: the form may
    /// have sent the focus elsewhere.
    const screen::Control* asked_ = nullptr;
    bool ctrlAlone_ = false;
    bool composing_ = false;
};

}  // namespace desktop
