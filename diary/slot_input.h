#pragma once

#include <QJsonObject>

#include "diary/diary_context.h"

// A slot as it is kept outside the database, with its key and its site: what stands on the screen, or what a row of
// `T営業活動明細` held. As JSON, under the names of its fields.
namespace diary {

/// What stands on the screen, without what is just being typed into an item.
QJsonObject InputOnScreen(const DiaryContext& diary);

/// The key of it alone: date, times, site, and the staff group, which comes and goes with the staff member.
QJsonObject KeyOnScreen(const DiaryContext& diary);

/// Takes a kept slot into the session and the record; paints nothing. Names that it lacks are looked up, without a
/// trace in the run history.
void TakeInput(DiaryContext& diary, const QJsonObject& input);

/// A row with all that its table has, as a JSON object by column; and what InputOnScreen would tell of it.
QJsonObject RowToKeep(const store::Recordset& row);
QJsonObject InputOfRow(const QJsonObject& row);

/// The rows that are stored now at the start of a key, whatever their ends. Nothing of it goes to the run history.
QJsonArray RowsAtStart(const DiaryContext& diary, const QJsonObject& key);

/// True when the two tell the same party, contact, documents and text.
bool SameContent(const ActivitySlot& a, const ActivitySlot& b);

/// True when two kept slots would be stored alike: same key, content and classes. Blanks at an end aren't stored.
bool SameInput(const QJsonObject& a, const QJsonObject& b);

/// The statement that puts a row back as it was.
QString RowStatement(const QJsonObject& row);

}  // namespace diary
