#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "store/sql_tokens.h"

namespace store {

/// A column of a server's table that holds, for each row, the texts that another table has for it, one a line: whatever
/// has a text there is then found by the row itself. The server keeps it up to date.
struct GatheredColumn {
    QString table, key;            ///< that holds it, and its key of one column
    QString from, link, gathered;  ///< the other table, its column with that key, its column with the texts

    QString Name() const;

    /// "… GENERATED ALWAYS …": the ShortOfGathered() beside it.
    QString ShortColumn() const;
};

/// The name of such a column; "katsudo_" stands before it like before all that the server keeps for itself.
QString NameOfGathered(const QString& from, const QString& gathered);

/// Its texts, folded, or kTooLong in place of many: what goes into an index, whose rows can't be long. Its own column
/// is a FoldedColumn() of this name.
QString ShortOfGathered(const QString& name);
inline constexpr char16_t kTooLong = u'*';

/// What makes the server keep the column from now on and fill it for what is there; all of it may be run again.
QStringList GatherStatements(const GatheredColumn& column);

/// What makes it stop, so that many rows can be written quickly.
QStringList StopGatherStatements(const GatheredColumn& column);

/// Where "T.c LIKE 'text' or T's key is in the list of U's rows with a LIKE 'text'" has to hold by itself, the list is
/// left for the column of T that gathers U's, if `isThere` (table, as names are compared, and column) says so and the
/// text can't stand in two lines. Gives the statement's text.
QString AskGathered(const TokenizedSql& sql, const std::function<bool(const QString&, const QString&)>& isThere);

}  // namespace store
