#pragma once

#include <QJsonObject>

#include "screen/screen_host.h"

namespace drive {

/// What every answer tells of the host: window in front, its focus, and what waits in front of it.
QJsonObject Situation(const screen::ScreenHost& host);

/// A form as a whole: its caption and its items by name, an array of controls as a list.
QJsonObject FormState(const screen::Form& form);

}  // namespace drive
