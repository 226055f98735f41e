#pragma once

#include <QString>

namespace lists {

/// Takes the value that `condition` compares `column` (a qualified name) with out of it, by the first of " >= '", " <=
/// '", " = '", " > '", " < '", " LIKE '" that stands behind the column; case doesn't count. The comparison is cut out
/// of the condition with one connector beside it, a bracket group from its opening to its closing bracket. Some
/// conditions come back whole although their value was taken; callers count on that. Empty, and the condition left
/// alone, when the column isn't compared. A condition without a closing quote gives what stands to its end.
QString TakeConditionValue(const QString& column, QString& condition);

}  // namespace lists
