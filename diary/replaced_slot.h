#pragma once

#include <QHash>
#include <optional>
#include <vector>

#include "diary/diary_context.h"

// What a save would take the place of, and what the user is told of it beforehand.
namespace diary {

/// One row of `T営業活動明細` as it is stored: the texts of all its columns under their names. A Null has no entry.
using StoredRow = QHash<QString, QString>;

/// The rows on file with this staff member (5), date ("yyyymmdd") and start ("hh:nn"), read anew, in the order of their
/// ends. A save replaces them all; there is rarely more than one. Nothing when they can't be read; the run history is
/// told nothing of it either way.
std::optional<std::vector<StoredRow>> StoredRowsAtStart(session::DataAccess& data, const QString& staff,
                                                        const QString& date, const QString& start);
/// The same at the key on the screen.
std::optional<std::vector<StoredRow>> StoredRowsAtStart(DiaryContext& diary);

/// What the screen remembers of a row that it is filled from.
LoadedRow LoadedRowOf(const store::Recordset& row);

/// What the user should know before the slot on the screen is stored in the place of `rows`, one sentence behind the
/// other: which of them aren't what was loaded, by whom and when the loaded one was changed since, and which of the
/// classifications aren't chosen. Empty when there is nothing to say.
QString WordsBeforeSave(DiaryContext& diary, const std::vector<StoredRow>& rows);

}  // namespace diary
