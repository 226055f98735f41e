#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Reads a current staff member, with the names of department and section as `部門名` and `セクション名`: one of the
/// site, or of the head office; at the head office one of any site.
QString StaffStatement(const QString& site, const QString& code);

/// Read a department or a section.
QString DepartmentStatement(const QString& code);
QString SectionStatement(const QString& code);

/// Takes a current staff member of this site (or of the head office) into the staff group, and the run's SiteCode with
/// it. False, and nothing taken, when there is none.
bool ResolveStaff(DiaryContext& diary, const QString& code);

/// Take a department or a section into its two items. False when there is none.
bool ResolveDepartment(DiaryContext& diary, const QString& code);
bool ResolveSection(DiaryContext& diary, const QString& code);

/// What leaving the three code items does: mask, look up, take, and for the staff member load the slot.
void StaffCodeLeft(DiaryContext& diary);
void DepartmentCodeLeft(DiaryContext& diary);
void SectionCodeLeft(DiaryContext& diary);

}  // namespace diary
