#include "bench/list_bench.h"

#include "bench/bare_engine.h"
#include "bench/index_cost.h"
#include "bench/stopwatch.h"
#include "store/sqlite_dialect.h"

namespace bench {
namespace {

QString Milliseconds(double time) {
    return QString::number(time, 'f', 1).rightJustified(9);
}

// Texts in Japanese are twice as wide on a terminal.
QString Padded(const QString& text, int width) {
    int used = 0;
    for (const QChar c : text)
        used += c.unicode() < 0x2E80 ? 1 : 2;
    return text + QString(std::max(0, width - used), u' ');
}

int StepAll(BareEngine& engine, const QStringList& statements) {
    int rows = 0;
    for (const QString& sql : statements) {
        store::Fault fault;
        const int found = engine.Step(store::ToSqlite(sql, fault).value_or(QString()));
        if (found < 0) return -1;
        rows += found;
    }
    return rows;
}

int QueryAll(store::Connection& store, const QStringList& statements) {
    int count = 0;
    for (const QString& sql : statements) {
        store::Fault fault;
        const auto rows = store.Query(sql, fault);
        if (!rows) return -1;
        for (; !rows->Eof(); rows->MoveNext())
            ++count;
    }
    return count;
}

// One line of the table; false when the ways differ.
bool TimeCase(const ListCase& search, BareEngine& engine, store::Connection& store, const Fill& fill,
              QTextStream& out) {
    const QStringList statements = search.Statements();
    int bareRows = 0, rows = 0, filled = 0;
    const double bare = MedianMilliseconds([&] { bareRows = StepAll(engine, statements); });
    const double own = MedianMilliseconds([&] { rows = QueryAll(store, statements); });
    out << Padded(search.list->name, 18) << Padded(search.what, 22) << QString::number(rows).rightJustified(6)
        << Milliseconds(bare) << Milliseconds(own);
    if (fill) out << Milliseconds(MedianMilliseconds([&] { filled = fill(search); }));
    out << '\n' << Qt::flush;
    if (rows == bareRows && rows >= 0 && (!fill || filled == std::min(rows, 1000))) return true;
    out << "  differs: the engine found " << bareRows << ", the program " << rows << '\n';
    return false;
}

// The cost of the fold: the same names by the engine's own LIKE and by the program's.
void TimeLike(const QString& mainStore, QTextStream& out) {
    const auto plain = BareEngine::Open(mainStore);
    const auto folding = BareEngine::Open(mainStore);
    if (!plain || !folding || !folding->UseOurLike()) return;
    // As many short names as there are parties, from memory.
    QString names = "CREATE TEMP TABLE names AS ";
    names +=
        "SELECT 略称 FROM M得意先 UNION ALL SELECT 略称 FROM M納品先 UNION ALL SELECT 略称 FROM M仕入先 "
        "UNION ALL SELECT 略称 FROM Mメーカ UNION ALL SELECT 略称 FROM M対応先";
    for (BareEngine* engine : {plain.get(), folding.get()}) {
        engine->Step("PRAGMA cache_size = -200000");
        engine->Step("PRAGMA temp_store = MEMORY");
        engine->Step(names);
    }
    out << "\nLIKE over the short names of all parties, ms\n" << Padded("pattern", 18) << "engine's LIKE      ours\n";
    for (const QString pattern : {"%電機%", "%該当なし%", "%ABC%", "%a_c%d%"}) {
        const QString sql = QString("SELECT COUNT(*) FROM temp.names WHERE 略称 LIKE '%1'").replace("%1", pattern);
        out << Padded(pattern, 22) << Milliseconds(MedianMilliseconds([&] { plain->Step(sql); }))
            << Milliseconds(MedianMilliseconds([&] { folding->Step(sql); })) << '\n'
            << Qt::flush;
    }
}

}  // namespace

bool RunListBench(const QString& mainStore, const Fill& fill, QTextStream& out) {
    store::Fault fault;
    const auto store = store::OpenConnection(
        "Provider=SQLite;Data Source=\"" + QString(mainStore).replace("\"", "\"\"") + "\";", "", fault);
    const auto engine = BareEngine::Open(mainStore);
    if (!store || !engine || !engine->UseOurLike()) {
        out << "The store can't be opened: " << mainStore << ' ' << fault.description << '\n';
        return false;
    }
    const std::vector<ListCase> cases = PartyCases(*store);
    if (cases.empty()) {
        out << "The store has no parties: " << mainStore << '\n';
        return false;
    }
    out << "Medians in ms. engine: the statement stepped by the engine's own interface; query: by the program's "
           "connection, rows read whole"
        << (fill ? "; filled: from the button to the filled list" : "") << ".\n\n";
    out << Padded("list", 18) << Padded("search", 22) << "  rows   engine    query" << (fill ? "   filled" : "")
        << '\n';
    bool same = true;
    for (const ListCase& search : cases)
        same = TimeCase(search, *engine, *store, fill, out) && same;
    TimeLike(mainStore, out);
    return PrintIndexCost(mainStore, out) && same;
}

}  // namespace bench
