#pragma once

#include <QString>
#include <vector>

#include "desktop/control_widget.h"

namespace desktop {

/// The widgets of a form on their way into a layout. A layout takes those it knows by name; what nobody took is laid
/// below, so that no item of a form is ever lost.
class WidgetShelf {
  public:
    explicit WidgetShelf(const screen::Form& form) : form_(form) {}
    const screen::Form& OfForm() const { return form_; }

    void Put(const ControlWidget& widget) { left_.push_back(widget); }
    /// Takes the widget of that name (and place in an array) off the shelf; null when there is none.
    QWidget* Take(const QString& name, int index = -1);
    /// The same, with the look that the style sheet has for that role, and words for a panel without a caption.
    QWidget* TakeAs(const char* role, const QString& name, const QString& heading = QString());
    /// Takes the first that is left, or one that lies in the given page of a strip; a null control when none is.
    ControlWidget TakeAny();
    ControlWidget TakeAnyOfPage(const screen::Control& strip, int page);
    bool Empty() const { return left_.empty(); }

  private:
    ControlWidget TakeAt(std::size_t place);

    const screen::Form& form_;
    std::vector<ControlWidget> left_;
};

/// Lays out the widgets of a form in `content`, by the form's name.
void LayOut(WidgetShelf& shelf, QWidget& content);

/// The main screen.
void LayOutDiary(WidgetShelf& shelf, QWidget& content);

/// The move screen.
void LayOutMove(WidgetShelf& shelf, QWidget& content);

/// Any other form: panels and labels, entries in rows behind their titles, lists, and the buttons below.
void LayOutDialog(WidgetShelf& shelf, QWidget& content);

}  // namespace desktop
