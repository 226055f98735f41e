#pragma once

#include <QWidget>

#include "screen/control.h"

namespace desktop {

/// The widget that draws one control, and which of its parts get the keys and the mouse.
struct ControlWidget {
    screen::Control* control = nullptr;
    QWidget* whole = nullptr;
    QWidget* keys = nullptr;
    QWidget* mouse = nullptr;
};

/// Makes the widget of a control, named as the control is; the members of an array get their place behind the name
/// ("opb_応対方法_2"). It is drawn by the first DrawControl.
ControlWidget MakeControlWidget(screen::Control& control, QWidget* parent);

/// Brings the widget to the state of its control.
void DrawControl(const ControlWidget& widget);

/// What the control's widget says: the caption of a button, panel or label (or the heading that a layout gave a panel
/// without one), the text of an entry.
QString TextToDraw(const ControlWidget& widget);

/// The same as it is drawn now.
QString DrawnText(const ControlWidget& widget);

/// True when an option is drawn as chosen, not merely as pressed.
bool DrawnChosen(const ControlWidget& widget);

/// True when the control and its strip take input. Whether the form does is not drawn: it would make every screen
/// flicker when another opens in front of it.
bool EnabledToDraw(const screen::Control& control);

/// Gives a panel or button without a caption words of its own.
void SetHeading(QWidget& whole, const QString& heading);

/// How a screen reader names the control: its caption, that of its title or label, or its name without ornament.
QString SpokenName(const screen::Control& control);

}  // namespace desktop
