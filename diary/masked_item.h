#pragma once

#include <optional>

#include "diary/diary_context.h"

namespace diary {

/// The notice of every lookup that found nothing.
inline const QString kNotFound = QStringLiteral("該当情報がありません。");

/// Brings a code item that is left to its fixed width ("1" becomes "00001" under "00000"), and tells the code when it
/// differs from the field that the item stands for.
std::optional<QString> ChangedCode(DiaryContext& diary, const char* item, const QString& mask, const QString& field);

}  // namespace diary
