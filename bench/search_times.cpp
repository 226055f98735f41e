#include "bench/search_times.h"

#include "bench/stopwatch.h"
#include "lists/list_window.h"
#include "store/sqlite_dialect.h"

namespace bench {
namespace {

constexpr int kMostRows = lists::ListWindow::kMostRows;

int QueryAll(store::Connection& store, const std::vector<Recorded>& statements) {
    int count = 0;
    for (const auto& [sql, mostRows] : statements) {
        store::Fault fault;
        const auto rows = store.Query(sql, fault, mostRows);
        if (!rows) return -1;
        for (; !rows->Eof(); rows->MoveNext())
            ++count;
    }
    return count;
}

// One line of the table; false when the ways differ.
bool TimeCase(const ListCase& search, BareEngine& engine, store::Connection& store, const Fill& fill,
              QTextStream& out) {
    std::vector<Recorded> statements;
    for (const QString& sql : search.Statements())
        statements.push_back({sql, kMostRows});
    int bareRows = 0, rows = 0, filled = 0;
    const double bare = MedianMilliseconds([&] { bareRows = StepAll(engine, statements); });
    const double own = MedianMilliseconds([&] { rows = QueryAll(store, statements); });
    out << Padded(search.list->name, 28) << Padded(search.what, 30) << QString::number(rows).rightJustified(6)
        << Cell(bare) << Cell(own);
    if (fill) out << Cell(MedianMilliseconds([&] { filled = fill(search); }));
    out << '\n' << Qt::flush;
    if (rows == bareRows && rows >= 0 && (!fill || filled == std::min(rows, kMostRows))) return true;
    out << "  differs: the engine found " << bareRows << ", the program " << rows << ", the window " << filled << '\n';
    return false;
}

}  // namespace

QString Cell(double time) {
    return QString::number(time, 'f', 1).rightJustified(9);
}

QString Padded(const QString& text, int width) {
    int used = 0;
    for (const QChar c : text)
        used += c.unicode() < 0x2E80 ? 1 : 2;
    return text + QString(std::max(0, width - used), u' ');
}

int StepAll(BareEngine& engine, const std::vector<Recorded>& statements) {
    int rows = 0;
    for (const auto& [sql, mostRows] : statements) {
        store::Fault fault;
        const int found = engine.Step(store::ToSqlite(sql, fault).value_or(QString()), mostRows);
        if (found < 0) return -1;
        rows += found;
    }
    return rows;
}

bool TimeSearches(const std::vector<ListCase>& cases, BareEngine& engine, store::Connection& store, const Fill& fill,
                  QTextStream& out) {
    out << Padded("list", 28) << Padded("search", 30) << "  rows   engine    query" << (fill ? "   filled" : "")
        << '\n';
    bool same = true;
    for (const ListCase& search : cases)
        same = TimeCase(search, engine, store, fill, out) && same;
    return same;
}

}  // namespace bench
