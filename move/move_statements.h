#pragma once

#include <QString>

#include "move/target_slot.h"
#include "session/session_context.h"
#include "store/recordset.h"

// The statements on `T営業活動明細` that a move is made of. Codes go in as they stand, free texts with their quotes
// doubled.
namespace move {

/// The slot to be moved, with the names that the screen shows: 担当者名, 部門名, セクション名, 発信区分名, 応対方法名,
/// 要件分類名. A slot whose codes have lost their names isn't found.
QString SourceStatement(const SlotKey& key);

/// The name that a code has in its table: `column` of the row whose `key` it is.
QString NameStatement(const QString& table, const QString& column, const QString& key, const QString& code);

/// The whole row of the slot.
QString CopiedRowStatement(const SlotKey& key);

/// Gives the slot of key `source` the target's key and place. It loses its approval; `stamp` is its 更新日付.
QString MoveStatement(const session::SessionContext& session, const SlotKey& source, const TargetSlot& target,
                      const QString& stamp);

/// Inserts the target with the content of `row`: unapproved, first mentions of no document, registered at `stamp`.
QString AddStatement(const session::SessionContext& session, const store::Recordset& row, const TargetSlot& target,
                     const QString& stamp);

}  // namespace move
