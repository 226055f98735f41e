#include "bench/list_bench.h"

#include "bench/index_cost.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

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
        out << Padded(pattern, 22) << Cell(MedianMilliseconds([&] { plain->Step(sql); }))
            << Cell(MedianMilliseconds([&] { folding->Step(sql); })) << '\n'
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
    const bool same = TimeSearches(cases, *engine, *store, fill, out);
    TimeLike(mainStore, out);
    return PrintPartyIndexCost(mainStore, out) && same;
}

}  // namespace bench
