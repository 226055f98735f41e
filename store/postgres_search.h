#pragma once

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "store/connection.h"

namespace store {

/// An index along which a search can walk. Names as they are compared.
struct SearchWalk {
    std::set<QString> columns;
    QString order;        ///< the first one
    double together = 0;  ///< how far the rows themselves lie in its order, 0 to 1
};

/// What a server's table has for searches beyond its index of pieces. Names as they are compared, but for the key.
struct SearchTable {
    QString key;               ///< the one column of its key, as the server spells it; empty for a key of several
    double rows = 0;           ///< about
    std::set<QString> folded;  ///< columns with a FoldedColumn() beside them
    std::vector<SearchWalk> walks;
};
using SearchTables = std::map<QString, SearchTable>;

/// The statement, in the server's own SQL, whose result TakeSearchTables() reads.
QString AskForSearchTables();
/// Empty for a database without such tables.
SearchTables TakeSearchTables(QSqlQuery& query);

/// A list's search in the server's own SQL, in ways that give the same rows in the same order (where rows are equal in
/// it, they come as they like). Which one is quick depends on how many rows have the text.
struct SearchWays {
    QString lookUp;        ///< finds all rows that have the text by the pieces, and sorts them
    QString walk;          ///< goes along the order's index and stops when it has enough
    double rows = 0;       ///< about, of the table
    double limit = 0;      ///< rows that the search asks for
    bool covered = false;  ///< the walk reads its index alone
    double together = 0;   ///< how far rows that are found lie together, 0 to 1
    // SELECTs of the rows that have the text, and of those that pass the other conditions (empty without any).
    QString having, passing;
    // SELECTs of the rows that come before the text in the order, and of those that begin with it; empty when the order
    // is another column's.
    QString before, beginning;
};

/// Nothing when the statement isn't a search that can be written so.
std::optional<SearchWays> WaysOf(const QString& sql, const SearchTables& tables);

/// The quickest one. `rowsOf` tells about how many rows a SELECT gives; nothing after a fault, and then nothing comes
/// of this either.
std::optional<QString> Quickest(const SearchWays& ways, const std::function<std::optional<double>(QString)>& rowsOf);

/// A statement of the program's SQL as ToPostgres() writes it, comparing with the folded columns that there are.
std::optional<QString> ToPostgres(const QString& sql, const SearchTables& tables, Fault& fault);

}  // namespace store
