#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "screen/control.h"

namespace screen {

/// Told of every change of a form, so that a view can draw it. All calls come on the one thread of the program.
class FormWatcher {
  public:
    virtual ~FormWatcher() = default;
    virtual void ControlChanged(Control& control) = 0;
    virtual void FocusChanged() = 0;
    /// Caption, size or enabled state of the form itself.
    virtual void FormChanged() = 0;
};

/// One window as a model: its controls in their order, its focus, its life. It knows no widget.
class Form {
  public:
    explicit Form(QString name);
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& Name() const { return name_; }
    const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    /// A disabled form takes no input at all, but is drawn.
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);

    /// Adds a control behind the others; its tab index is its place. `index` is for arrays of controls.
    Control& Add(ControlKind kind, const QString& name, const QString& caption = QString(), int index = -1);
    /// The control of that name (and place, in an array); null when there is none.
    Control* Find(const QString& name, int index = -1) const;
    /// The same for a control that must be there; ends the program with the name when it isn't.
    Control& At(const QString& name, int index = -1) const;
    const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }

    /// The control that holds the focus, or null.
    Control* Focused() const { return focused_; }
    /// Moves the focus: OnLostFocus of the old item, then OnGotFocus of the new one. A handler may move it on; a move
    /// out of OnLostFocus takes the place of the one under way. Returns false, and does nothing, when the control can't
    /// hold the focus now.
    bool SetFocus(Control& control);
    /// Runs the OnLostFocus of the focused item, which keeps the focus: for a close that takes it nowhere else.
    void CommitFocused();
    /// True while the text of the focused item stands selected as a whole, as it does after the focus came in: typing
    /// then replaces it.
    bool WholeTextSelected() const { return wholeTextSelected_; }
    void SetWholeTextSelected(bool selected) { wholeTextSelected_ = selected; }

    /// The control behind (or before) `from` in the tab order that a Tab would reach, going round at the end; an option
    /// group counts as one stop, its pressed option or its first. Null when there is none.
    Control* NextInTabOrder(const Control* from, bool forward) const;

    /// Gives the focus to the first control of the tab order, without an OnLostFocus. For a form that was just shown.
    void FocusFirst();

    /// True between being shown and being unloaded.
    bool Loaded() const { return loaded_; }
    /// For the host: marks the form as shown or unloaded.
    void SetLoaded(bool loaded);

    /// The control of another form beside which the window opens; null for the middle of the screen.
    Control* openedBeside = nullptr;

    /// Runs on Escape; an empty one does nothing.
    std::function<void()> onEscape;
    /// The same while the form is disabled: the one key that it may still take then.
    std::function<void()> onEscapeDisabled;

    /// Runs when the form is shown, before it can be seen.
    std::function<void()> onLoad;
    /// Asked when the user closes the form by its frame; false refuses. An empty one allows it.
    std::function<bool()> onQueryClose;

    /// Runs when something that the user did to the form has been carried out, whatever it was.
    std::function<void()> onUserActed;
    /// How many gestures are being carried out: a click that first moves the focus counts as two, one in the other.
    int gesturesUnderWay = 0;

    FormWatcher* watcher = nullptr;

  private:
    friend class Control;

    bool CanFocus(const Control& control) const;
    bool IsTabStop(const Control& control) const;

    QString name_;
    QString caption_;
    bool enabled_ = true;
    bool loaded_ = false;
    std::vector<std::unique_ptr<Control>> controls_;
    Control* focused_ = nullptr;
    Control* movingTo_ = nullptr;
    bool leaving_ = false;
    bool wholeTextSelected_ = false;
};

}  // namespace screen
