#include "tests/rewriter/engine_rows.h"

#include <algorithm>

namespace plain {
namespace {

/// The name as a result writes it.
QString Written(const QStringList& columns, const QString& name) {
    const auto same = [&](const QString& column) { return column.compare(name, Qt::CaseInsensitive) == 0; };
    const auto found = std::find_if(columns.begin(), columns.end(), same);
    return found == columns.end() ? QString() : *found;
}

}  // namespace

Result AsRead(Result result) {
    std::vector<std::size_t> places;
    for (qsizetype i = 0; i < result.columns.size(); ++i)
        if (result.columns.indexOf(result.columns[i]) == i) places.push_back(std::size_t(i));
    for (auto& group : result.groups)
        for (Row& row : group) {
            Row read;
            for (const std::size_t place : places)
                read.push_back(row[place]);
            row = std::move(read);
        }
    result.columns.removeDuplicates();
    return result;
}

std::vector<Row> RowsOf(store::Recordset& recordset, const Result& plain) {
    QStringList columns = plain.columns;
    columns.removeDuplicates();
    for (QString& column : columns)
        column = Written(recordset.Columns(), column);
    std::vector<Row> rows;
    for (; !recordset.Eof(); recordset.MoveNext()) {
        Row& row = rows.emplace_back();
        for (const QString& column : columns)
            row.push_back(recordset.Value(column));
    }
    return rows;
}

}  // namespace plain
