#include "bench/index_cost.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include "bench/stopwatch.h"
#include "session/schema.h"
#include "store/bulk_writer.h"
#include "store/create_store.h"

namespace bench {
namespace {

const QString kTable = "M得意先";

// A store with a copy of the customers. The fault is filled when it fails.
bool CopyCustomers(const QString& from, const QString& to, bool withIndexes, store::Fault& fault) {
    const session::Table& table = *session::FindTable(kTable);
    if (!store::CreateSqliteStore(to, fault)) return false;
    const auto writer = store::BulkWriter::Open(to, fault);
    QStringList statements = {"ATTACH '" + QString(from).replace("'", "''") + "' AS source",
                              session::CreateTableStatement(table),
                              "INSERT INTO main.[" + kTable + "] SELECT * FROM source.[" + kTable + "]"};
    if (withIndexes) statements += session::CreateIndexStatements(table);
    for (const QString& statement : statements)
        if (!writer || !writer->Run(statement, fault)) return false;
    return true;
}

// Median time to save one more customer, as a sibling program does: one statement by itself.
std::optional<double> TimeSave(const QString& path, store::Fault& fault) {
    const auto store = store::OpenConnection("Provider=SQLite;Data Source=\"" + path + "\";", "", fault);
    if (!store) return std::nullopt;
    int next = 0;
    bool good = true;
    const double time = MedianMilliseconds([&] {
        constexpr int kSaves = 20;
        for (int i = 0; i < kSaves; ++i, ++next)
            good =
                store->Execute(QString("INSERT INTO M得意先 SELECT 'X%1', 略称, カナ, 名称A, 名称B, 郵便番号, 住所A, "
                                       "住所B, 住所C, 電話, 電話番号, FAX, 担当者コード, 取引状況区分, "
                                       "名称入力区分, 御担当者名, 担当者電話 FROM M得意先 WHERE コード <= '%2' ORDER "
                                       "BY コード DESC LIMIT 1")
                                   .arg(next, 5, 10, QChar(u'0'))
                                   .arg(1 + next * 97, 6, 10, QChar(u'0')),
                               fault) &&
                good;
    });
    return good ? std::optional(time / 20) : std::nullopt;
}

}  // namespace

bool PrintIndexCost(const QString& mainStore, QTextStream& out) {
    const QTemporaryDir folder;
    out << "\nCustomers alone, with and without the indexes of the lists\n";
    store::Fault fault;
    for (const bool indexes : {true, false}) {
        const QString path = folder.path() + (indexes ? "/with.accdb" : "/without.accdb");
        const bool copied = CopyCustomers(mainStore, path, indexes, fault);
        const auto time = copied ? TimeSave(path, fault) : std::nullopt;
        if (!time) {
            out << fault.description << '\n';
            return false;
        }
        out << (indexes ? "with    " : "without ") << QString::number(double(QFileInfo(path).size()) / 1e6, 'f', 0)
            << " MB, a customer saved in " << QString::number(*time, 'f', 2) << " ms\n"
            << Qt::flush;
    }
    return true;
}

}  // namespace bench
