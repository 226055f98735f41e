#include "bench/index_cost.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include "bench/bare_engine.h"
#include "lists/list_families.h"
#include "session/schema.h"
#include "store/bulk_writer.h"
#include "store/create_store.h"

namespace bench {
namespace {

constexpr int kMostCopied = 300'000;
constexpr int kSaves = 20;

// A store with a copy of a table. The fault is filled when it fails.
bool CopyTable(const session::Table& table, const QString& from, const QString& to, bool withIndexes,
               store::Fault& fault) {
    if (!store::CreateSqliteStore(to, fault)) return false;
    const auto writer = store::BulkWriter::Open(to, fault);
    QStringList statements = {
        "ATTACH '" + QString(from).replace("'", "''") + "' AS source", session::CreateTableStatement(table),
        QString("INSERT INTO main.[%1] SELECT * FROM source.[%1] LIMIT %2").arg(table.name).arg(kMostCopied)};
    if (withIndexes) statements += session::CreateIndexStatements(table);
    for (const QString& statement : statements)
        if (!writer || !writer->Run(statement, fault)) return false;
    return true;
}

// Median time to save one more row like those that are there, one statement by itself.
std::optional<double> TimeSave(const session::Table& table, const QString& path, const Effort& effort,
                               store::Fault& fault) {
    const auto store = store::OpenConnection("Provider=SQLite;Data Source=\"" + path + "\";", "", fault);
    const auto engine = BareEngine::Open(path);
    if (!store || !engine) return std::nullopt;
    const int rows = engine->Value("SELECT MAX(rowid) FROM [" + table.name + "]").toInt();
    // Only the first column of the key is another.
    QStringList columns = table.ColumnNames();
    columns.removeAll(table.key.front());
    int next = 0;
    bool good = rows > 0;
    const auto save = [&] {
        for (int i = 0; i < kSaves && good; ++i, ++next)
            good = store->Execute(QString("INSERT INTO [%1] ([%2],[%3]) SELECT 'X%4',[%3] FROM [%1] WHERE rowid = %5")
                                      .arg(table.name, table.key.front(), columns.join("],["))
                                      .arg(next, 5, 10, QChar(u'0'))
                                      .arg(1 + next * 9973LL % rows),
                                  fault);
    };
    std::vector<double> times;
    for (int run = 0; run < effort.runs; ++run)
        times.push_back(Milliseconds(save) / kSaves);
    return good ? std::optional(Median(std::move(times))) : std::nullopt;
}

void AddTableCost(Table& costs, const QString& name, const QString& mainStore, const Effort& effort, Results& results) {
    const session::Table& table = *session::FindTable(name);
    Row row{{name}, {}};
    for (const bool indexes : {true, false}) {
        const QTemporaryDir folder;
        const QString path = folder.path() + "/copy.accdb";
        store::Fault fault;
        const bool copied = CopyTable(table, mainStore, path, indexes, fault);
        const double size = double(QFileInfo(path).size()) / 1e6;
        const auto time = copied ? TimeSave(table, path, effort, fault) : std::nullopt;
        if (!time) results.faults << name + ": " + fault.description;
        row.numbers.insert(row.numbers.end(), {size, time.value_or(0)});
    }
    costs.rows.push_back(row);
}

// How much of the store the indexes of some tables take; tables by the start of their names.
Table StoreSizes(const QString& mainStore, BareEngine& engine) {
    const auto megabytes = [&engine](const QString& tables) {
        return engine
                   .Value(
                       "SELECT SUM(pgsize) FROM dbstat WHERE aggregate = TRUE AND name IN (SELECT name FROM "
                       "sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name " +
                       tables + ")")
                   .toDouble() /
               1e6;
    };
    QStringList documents, parties;
    for (const QString& kind : session::DocumentKinds())
        documents << "'T" + kind + "'";
    for (const QString& kind : lists::PartyKinds())
        parties << "'M" + kind + "'";
    return {table::kStoreSizes,
            {"What"},
            {"Size, MB"},
            {{{"the whole store"}, {double(QFileInfo(mainStore).size()) / 1e6}},
             {{"indexes of parties"}, {megabytes("IN (" + parties.join(u',') + ")")}},
             {{"indexes of documents"}, {megabytes("IN (" + documents.join(u',') + ")")}},
             {{"indexes of slots"}, {megabytes("= 'T営業活動明細'")}}}};
}

// The cost of the fold: the same names by the engine's own LIKE and by the program's.
Table TimeLike(BareEngine& plain, BareEngine& folding, const Effort& effort) {
    QStringList names;
    for (const QString& kind : lists::PartyKinds())
        names << "SELECT 略称 FROM M" + kind;
    // As many short names as there are parties, from memory.
    for (BareEngine* engine : {&plain, &folding}) {
        engine->Step("PRAGMA cache_size = -200000");
        engine->Step("PRAGMA temp_store = MEMORY");
        engine->Step("CREATE TEMP TABLE names AS " + names.join(" UNION ALL "));
    }
    Table table{table::kLike, {"Pattern"}, {kEngine, kProgram}, {}};
    for (const QString pattern : {"%電機%", "%該当なし%", "%ABC%", "%a_c%d%"}) {
        const QString sql = "SELECT COUNT(*) FROM temp.names WHERE 略称 LIKE '" + pattern + "'";
        const auto [engines, ours] = MedianTurns(
            effort.runs, [&] { plain.Step(sql); }, [&] { folding.Step(sql); });
        table.rows.push_back({{"`" + pattern + "`"}, {engines, ours}});
    }
    return table;
}

}  // namespace

Results RunIndexBench(const QString& mainStore, const Effort& effort) {
    Results results;
    const auto plain = BareEngine::Open(mainStore, BareEngine::Use::Reading, BareEngine::Like::Engines);
    const auto folding = BareEngine::Open(mainStore);
    if (!plain || !folding) {
        results.faults << "The store can't be read: " + mainStore;
        return results;
    }
    results.Add(TimeLike(*plain, *folding, effort));
    Table costs{
        table::kIndexes, {"Table"}, {"With, MB", "With, saved in ms", "Without, MB", "Without, saved in ms"}, {}};
    QStringList tables{"M得意先", "T営業活動明細"};
    for (const QString& kind : session::DocumentKinds())
        tables << "T" + kind;
    for (const QString& name : tables)
        AddTableCost(costs, name, mainStore, effort, results);
    results.Add(costs);
    results.Add(StoreSizes(mainStore, *plain));
    return results;
}

}  // namespace bench
