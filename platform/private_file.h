#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// Puts `content` in place of what stands at `path`, whole or not at all, readable by its owner alone; a missing folder
/// is made so too. It is on the disk, and its name in its folder, when this returns. False when it couldn't be written.
bool WritePrivately(const QString& path, const QByteArray& content);

}  // namespace platform
