#pragma once

#include "move/move_context.h"

// What leaving the target's code items does. A code that differs from the one that was there is looked up: found, it
// brings its names (a staff member also site, department and section); otherwise what it would have brought is emptied,
// so that no wrong code can be written, and the notice line says why.
namespace move {

void StaffCodeLeft(MoveContext& move);
void DepartmentCodeLeft(MoveContext& move);
void SectionCodeLeft(MoveContext& move);

}  // namespace move
