#pragma once

#include "desktop/window_host.h"
#include "drive/hands.h"

namespace drive {

/// Hands that use the real widgets of a window: they press its keys, click into it and give it the focus, so that what
/// they do goes the whole way that a user's gesture goes.
class WindowHands : public Hands {
  public:
    explicit WindowHands(desktop::WindowHost& host) : Hands(host), windows_(host) {}

    void Focus(screen::Control& control) override;
    void Type(screen::Control& control, const QString& text) override;
    void PressKey(screen::Form& form, const screen::KeyPress& press) override;
    void Click(screen::Control& control) override;
    void DoubleClick(screen::Control& control) override;
    void Choose(screen::Control& control, int entry) override;
    void SetValue(screen::Control& control, int value) override;
    void SelectRow(screen::Control& control, int row) override;
    void ClickHeader(screen::Control& control, int column) override;
    void Drop(screen::Control& control, const QStringList& paths) override;
    void Answer(screen::Button button) override;
    void AnswerByKey(const screen::KeyPress& press) override;
    void AnswerPath(const std::optional<QString>& path) override;
    void Close(screen::Form& form) override;
    void Settle() override;
    QString DrawnDifference(const screen::Form& form) override;

  private:
    /// The widget of the control; ends the program when it isn't drawn, which is a fault of the view.
    const desktop::ControlWidget& WidgetOf(const screen::Control& control) const;

    desktop::WindowHost& windows_;
};

}  // namespace drive
