#include "bench/rewriter_times.h"

#include <algorithm>

#include "lists/list_description.h"
#include "store/postgres_dialect.h"
#include "store/sqlite_dialect.h"

namespace bench {
namespace {

using Dialect = std::optional<QString> (*)(const QString& sql, store::Fault& fault);

constexpr double kMicroseconds = 1000;  // in a millisecond
constexpr int kTurns = 10;              // too short by itself for the clock

double TimeOf(Dialect dialect, const QString& sql, const Effort& effort) {
    std::vector<double> times;
    for (int run = 0; run < effort.runs; ++run)
        times.push_back(Milliseconds([&] {
            store::Fault unused;
            for (int turn = 0; turn < kTurns; ++turn)
                dialect(sql, unused);
        }));
    return Median(times) / kTurns * kMicroseconds;
}

/// Every search of every list window, all items filled, in both forms of joins.
QStringList Searches() {
    QStringList searches;
    for (const QString kind : {"A", "O"})
        for (const lists::ListDescription* list : lists::EveryList()) {
            lists::SearchValues values{.dbKind = kind};
            for (const lists::SearchItem& item : list->items)
                values.items.insert(item.name, "山田");
            for (const lists::ListStatement& statement : list->statements)
                for (const lists::SearchMode& mode : list->modes)
                    searches << lists::BuildSearchSql(*list, statement, mode.number, values);
        }
    searches.removeAll(QString());  // the contacts' in the second form
    return searches;
}

}  // namespace

Table TimeRewriters(const Effort& effort) {
    Table table{table::kRewriter, {"For", "Statement"}, {kProgram}, {}};
    const std::vector<std::pair<QString, Dialect>> dialects = {{"SQLite", store::ToSqlite},
                                                               {"PostgreSQL", store::ToPostgres}};
    for (const auto& [engine, dialect] : dialects) {
        std::vector<double> times;
        for (const QString& sql : Searches())
            times.push_back(TimeOf(dialect, sql, effort));
        const double slowest = times.empty() ? 0 : *std::max_element(times.begin(), times.end());
        table.rows.push_back({{engine, "the middle one"}, {Median(times)}});
        table.rows.push_back({{engine, "the slowest"}, {slowest}});
    }
    return table;
}

}  // namespace bench
