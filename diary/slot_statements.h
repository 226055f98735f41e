#pragma once

#include <QString>

#include "session/session_context.h"

// Pieces that the statements on `T営業活動明細` share. Key texts go in as they stand.
namespace diary {

inline const QString kSelectDetail = QStringLiteral("SELECT T営業活動明細.* FROM T営業活動明細");

/// By staff, date and start: a slot with this start, whatever its end.
inline QString StartKeyCondition(const QString& staff, const QString& date, const QString& start) {
    return " WHERE T営業活動明細.担当者コード = '" + staff + "' AND T営業活動明細.日付 = '" + date +
           "' AND T営業活動明細.開始時刻 = '" + start + "'";
}
inline QString StartKeyCondition(const session::SessionContext& key) {
    return StartKeyCondition(key.StaffCode, key.SlotDate, key.StartTime);
}

/// By the whole key.
inline QString ExactKeyCondition(const session::SessionContext& key) {
    return StartKeyCondition(key) + " AND T営業活動明細.終了時刻 = '" + key.EndTime + "'";
}

}  // namespace diary
