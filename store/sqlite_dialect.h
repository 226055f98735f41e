#pragma once

#include <QString>
#include <optional>

#include "store/connection.h"
#include "store/sql_tokens.h"

namespace store {

/// Cuts a statement into its tokens. Nothing, and `fault`, for one whose quotes, brackets or comments aren't closed:
/// where its texts end nobody can tell, so no engine is asked what it makes of it.
std::optional<TokenizedSql> ReadStatement(const QString& sql, Fault& fault);

/// Turns a statement of the program's one kind of SQL into SQLite's:
///   SELECT TOP n …        becomes LIMIT n at the end of that SELECT, also in a subquery
///   nested RIGHT JOINs    become one chain of LEFT and INNER JOINs: SQLite would fill temporary tables and rename
///   columns a comma join with (+) becomes LEFT JOINs
///   EXISTS with a LIKE    becomes a list of keys that is made once (store/exists_list.h)
/// In a SELECT whose tables changed places, a bare "*" is written out table by table in the old order, so that of two
/// columns of one name the same one comes first. [Brackets] stay: SQLite reads them, and in double quotes it would take
/// a missing column for a text. Literals are never touched, and a statement with nothing to rewrite comes back as it is
/// (the engine has the better words for a fault of syntax). Returns nothing and fills `fault` for a join or row limit
/// that can't be proven to mean the same, and for what ReadStatement() can't read.
std::optional<QString> ToSqlite(const QString& sql, Fault& fault);

}  // namespace store
