#pragma once

#include <functional>
#include <optional>

#include "store/sql_tokens.h"

namespace store {

/// Tokens of "( T.c LIKE 'text' OR ( T.k IS NOT NULL AND T.k IN ( SELECT … ) ) )", which is what ToSqlite() makes of a
/// LIKE beside an EXISTS.
struct EitherOf {
    TokenRange all;
    TokenRange table;  ///< "T"
    TokenRange like;   ///< "c LIKE 'text'"
    TokenRange list;   ///< "k IN ( SELECT … )"
};

/// Nothing for any other form.
std::optional<EitherOf> ReadEither(const TokenizedSql& sql, TokenRange range);

/// True when the FROM has the table (as names are compared) under its own name.
bool HasTable(const TokenizedSql& sql, TokenRange from, const QString& name);

/// Writes each EitherOf that has to hold by itself in another way; where that is empty it stays. Gives the statement's
/// text.
QString ReplaceEithers(const TokenizedSql& sql, const std::function<QString(const EitherOf&)>& written);

/// Writes each EitherOf that has to hold by itself as rows of a list that is made first, in PostgreSQL's SQL but for
/// its names. Gives the statement's text.
QString ListEitherFirst(const TokenizedSql& sql);

}  // namespace store
