#include "bench/index_cost.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include "bench/bare_engine.h"
#include "bench/search_times.h"
#include "bench/stopwatch.h"
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
std::optional<double> TimeSave(const session::Table& table, const QString& path, store::Fault& fault) {
    const auto store = store::OpenConnection("Provider=SQLite;Data Source=\"" + path + "\";", "", fault);
    const auto engine = BareEngine::Open(path);
    if (!store || !engine) return std::nullopt;
    const int rows = int(engine->Number("SELECT MAX(rowid) FROM [" + table.name + "]"));
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
    const double time = MedianMilliseconds(save);
    return good ? std::optional(time / kSaves) : std::nullopt;
}

bool PrintTableCost(const QString& name, const QString& mainStore, QTextStream& out) {
    const session::Table& table = *session::FindTable(name);
    out << Padded(name, 18);
    for (const bool indexes : {true, false}) {
        const QTemporaryDir folder;
        const QString path = folder.path() + "/copy.accdb";
        store::Fault fault;
        const bool copied = CopyTable(table, mainStore, path, indexes, fault);
        const double size = double(QFileInfo(path).size()) / 1e6;
        const auto time = copied ? TimeSave(table, path, fault) : std::nullopt;
        if (!time) {
            out << fault.description << '\n';
            return false;
        }
        out << QString::number(size, 'f', 0).rightJustified(9) << QString::number(*time, 'f', 2).rightJustified(9);
    }
    out << '\n' << Qt::flush;
    return true;
}

void PrintHeader(QTextStream& out) {
    out << "\nUp to " << kMostCopied << " rows alone, with and without the indexes: size in MB, a row saved in ms\n"
        << Padded("table", 18) << "     with    saved  without    saved\n";
}

// How much of the store the indexes of some tables take; tables by the start of their names.
void PrintSizes(const QString& mainStore, QTextStream& out) {
    const auto engine = BareEngine::Open(mainStore);
    if (!engine) return;
    const auto megabytes = [&engine](const QString& condition) {
        return QString::number(
            engine->Number("SELECT SUM(pgsize) FROM dbstat WHERE aggregate = TRUE" + condition) / 1e6, 'f', 0);
    };
    const QString indexesOf =
        " AND name IN (SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name %1)";
    QStringList documents;
    for (const QString& kind : session::DocumentKinds())
        documents << "'T" + kind + "'";
    out << "\nThe whole store, MB: " << QFileInfo(mainStore).size() / 1'000'000 << ", of it the indexes of documents "
        << megabytes(indexesOf.arg("IN (" + documents.join(u',') + ")")) << ", of slots "
        << megabytes(indexesOf.arg("= 'T営業活動明細'")) << '\n'
        << Qt::flush;
}

}  // namespace

bool PrintPartyIndexCost(const QString& mainStore, QTextStream& out) {
    PrintHeader(out);
    return PrintTableCost("M得意先", mainStore, out);
}

bool PrintDocumentIndexCost(const QString& mainStore, QTextStream& out) {
    PrintHeader(out);
    bool good = PrintTableCost("T営業活動明細", mainStore, out);
    for (const QString& kind : session::DocumentKinds())
        good = PrintTableCost("T" + kind, mainStore, out) && good;
    PrintSizes(mainStore, out);
    return good;
}

}  // namespace bench
