#pragma once

#include <QString>
#include <optional>

#include "screen/screen_host.h"

namespace drive {

/// The hands that carry a command out. The plain ones act on the models; a host with real widgets sends real key, mouse
/// and focus events instead. Whoever calls has made sure that a user could do it, or means a click in vain.
class Hands {
  public:
    explicit Hands(screen::ScreenHost& host) : host_(host) {}
    virtual ~Hands() = default;

    virtual void Focus(screen::Control& control);
    virtual void Type(screen::Control& control, const QString& text);
    virtual void PressKey(screen::Form& form, const screen::KeyPress& press);
    virtual void Click(screen::Control& control);
    virtual void DoubleClick(screen::Control& control);
    virtual void Choose(screen::Control& control, int entry);
    virtual void SetValue(screen::Control& control, int value);
    virtual void SelectRow(screen::Control& control, int row);
    virtual void ClickHeader(screen::Control& control, int column);
    virtual void Drop(screen::Control& control, const QStringList& paths);
    virtual void Answer(screen::Button button);
    /// The key is one that answers the message box in front.
    virtual void AnswerByKey(const screen::KeyPress& press);
    virtual void AnswerPath(const std::optional<QString>& path);
    virtual void Close(screen::Form& form);

    /// Lets everything that the last command set going come to rest, before its answer is told.
    virtual void Settle() {}
    /// What is wrong between the form and what is drawn of it; empty when nothing is, or nothing is drawn.
    virtual QString DrawnDifference(const screen::Form&) { return {}; }

  protected:
    screen::ScreenHost& host_;
};

}  // namespace drive
