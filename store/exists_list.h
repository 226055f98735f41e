#pragma once

#include "store/sql_tokens.h"

namespace store {

/// Writes each condition of the form
///   EXISTS (SELECT * FROM t WHERE key = outer.column AND … LIKE …)
/// as a look into a list that is made once,
///   (outer.column IS NOT NULL AND outer.column IN (SELECT key FROM t WHERE key IS NOT NULL AND … LIKE …)),
/// which is true and false for the same rows, also under a NOT. A LIKE that no index serves would else be run anew for
/// every outer row: with a million of them six times as long. Gives the statement's text; other forms stay.
QString ListKeysOnce(const TokenizedSql& sql);

}  // namespace store
