#include "tests/rewriter/engine_rows.h"

#include <algorithm>
#include <set>

namespace plain {
namespace {

/// The name as a result writes it.
QString Written(const QStringList& columns, const QString& name) {
    const auto same = [&](const QString& column) { return column.compare(name, Qt::CaseInsensitive) == 0; };
    const auto found = std::find_if(columns.begin(), columns.end(), same);
    return found == columns.end() ? QString() : *found;
}

QString Words(const std::vector<Row>& rows) {
    QStringList lines;
    for (const Row& row : rows) {
        QStringList cells;
        for (const Cell& cell : row)
            cells << cell.value_or("Null");
        lines << cells.join('|');
    }
    return lines.join('\n');
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

QString Difference(const Result& expected, const std::vector<Row>& rows) {
    if (rows.size() != expected.RowCount())
        return QString("%1 rows instead of %2:\n%3").arg(rows.size()).arg(expected.RowCount()).arg(Words(rows));
    auto at = rows.begin();
    for (const auto& group : expected.groups) {
        const auto count = std::min(std::ptrdiff_t(group.size()), rows.end() - at);
        std::multiset<Row> left(group.begin(), group.end());
        for (auto row = at; row != at + count; ++row) {
            const auto same = left.find(*row);
            if (same == left.end())
                return "not a row, or not here: " + Words({*row}) + "\nexpected one of\n" + Words(group);
            left.erase(same);
        }
        at += count;
    }
    return {};
}

}  // namespace plain
