#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "store/connection.h"
#include "store/sql_tokens.h"

namespace store {

/// Turns one statement of the program's SQL into PostgreSQL's: the row limit and the joins as ToSqlite() writes them;
/// every name in double quotes, so that 住所A keeps its capital; Nulls before all values, and last under DESC; a LIKE
/// as a comparison of folded texts (FoldFunctions); a bare number beside a comparison as a literal that takes the
/// column's type. A faulty statement stays as it is, for the engine to tell. Returns nothing and fills `fault` for what
/// ToSqlite() refuses, for a second statement behind a semicolon, and for a LIKE whose sides can't be told.
std::optional<QString> ToPostgres(const QString& sql, Fault& fault);

/// Which of the LIKEs that an index can serve look into it.
enum class Pieces {
    Asked,       ///< all; the rows are sorted behind it where one piece says it all
    Throughout,  ///< all; the rows are sorted behind them
    Nowhere,
};

/// How LIKE is written.
struct LikeForm {
    Pieces pieces = Pieces::Asked;
    /// Tables, and their columns with a FoldedColumn() beside them; names as they are compared.
    std::map<QString, std::set<QString>> folded;
};

/// As ToPostgres(), of a statement that ToSqlite() wrote.
std::optional<QString> WriteForPostgres(const TokenizedSql& sql, const LikeForm& form, Fault& fault);

/// True for a word that can't be a name without quotes.
bool IsKeywordOfPostgres(const QString& word);

/// The column in which a table holds the folded texts of one of its columns.
QString FoldedColumn(const QString& column);

/// Keeps a SELECT from giving more than that many rows. A text that isn't one SELECT, or has a limit, stays as it is.
QString LimitedTo(const QString& postgresSql, int mostRows);

/// A condition that has to hold, of which the engine doesn't guess how many rows it leaves. It would take what repeats
/// another condition for a second sieve, of the few rows left for fewer still, and join them in a way that is good for
/// a handful.
QString Uncounted(const QString& condition);

/// A name in the engine's quotes.
QString QuotedForPostgres(const QString& name);

/// A text, given as UTF-8, as a literal.
QString LiteralForPostgres(const std::string& text);

/// CREATE FUNCTION statements for what the rewritten LIKE calls: katsudo_fold (text) is the folded text,
/// katsudo_pieces (text) all its letters and pairs of neighbours, which an index can look up, katsudo_matches (text,
/// folded pattern) whether the folded text is like it, and katsudo_pattern (text) folds a pattern that isn't a literal.
/// All give Null for Null.
QStringList FoldFunctions();

/// Whether katsudo_fold of the database behind `connection` folds as this program does. False for that of a program
/// with another table, whose searches would miss some texts without a word, and where there is no such function.
bool FoldsAsHere(Connection& connection);

}  // namespace store
