#pragma once

#include "move/move_context.h"

// What leaving the target's code items does. A code that differs from the one that was there, or has no name yet, is
// looked up: found, it brings its names (a staff member also site, department and section); otherwise what it would
// have brought is emptied, the site excepted, so that no wrong code can be written, and the notice line says why.
namespace move {

/// The notice for what can't be right.
inline const QString kWrongCode = QStringLiteral("正しいコードを入力してください。");

void StaffCodeLeft(MoveContext& move);
void DepartmentCodeLeft(MoveContext& move);
void SectionCodeLeft(MoveContext& move);

}  // namespace move
