#include "session/server_schema.h"

#include <QHash>

#include "store/gathered_column.h"
#include "store/postgres_dialect.h"

namespace session {
namespace {

using store::QuotedForPostgres;

// What stands behind these in an index of a file is there to be read from it. Here only an index along which a search
// walks has more; otherwise the rows themselves are read.
constexpr qsizetype kOrderColumns = 2;

// How finely the engine knows what the searched texts hold: by that it is told whether many rows have a text or few.
constexpr int kStatistics = 500;

// Nulls come first in every order of the program, so an index serves it only with them at that end. That is also why
// the key is an index and no constraint: a constraint's index has them last.
QString Ordered(const QStringList& columns) {
    QStringList written;
    for (const QString& column : columns)
        written << QuotedForPostgres(column) + " NULLS FIRST";
    return written.join(", ");
}

bool Covers(const QStringList& index, const QStringList& columns) {
    return index.mid(0, columns.size()) == columns;
}

bool IsParty(const Table& table) {
    return table.ColumnNames().contains("取引状況区分");
}

// A party is found by the numbers of its contacts too, and to look for those of each party that a search walks past
// takes it ten times as long.
std::optional<store::GatheredColumn> GatheredOf(const Table& table) {
    if (!IsParty(table)) return std::nullopt;
    return store::GatheredColumn{table.name, table.key.front(), table.name + "御担当者", table.name.mid(1) + "コード",
                                 "電話番号"};
}

// Columns that the lists look into with LIKE, in the tables that grow.
QStringList SearchedColumns(const Table& table) {
    static const QHash<QString, QStringList> documents = {
        {"T案件", {"案件名", "相手先略称", "相手先名称A", "相手先名称B", "相手先御担当者名"}},
        {"T営業引合", {"得意先名称A", "得意先名称B", "営業引合商品名A", "営業引合商品名B"}},
        {"T営業見積", {"得意先名称A", "得意先名称B", "タイトル"}},
        {"T顧客注文", {"得意先名称A", "得意先名称B", "タイトル"}},
        {"T営業受注", {"得意先名称A", "得意先名称B", "納品先名称A", "納品先名称B"}}};
    if (documents.contains(table.name)) return documents.value(table.name);
    return FoldedColumns(table);
}

// "CREATE INDEX" for the n-th further index of a table of those that are named alike.
QString CreateIndex(const Table& table, const QString& name, const QStringList& order, const QStringList& further) {
    QString statement = QString("CREATE INDEX %1 ON %2 (%3)")
                            .arg(QuotedForPostgres(table.name + name), QuotedForPostgres(table.name), Ordered(order));
    QStringList written;
    for (const QString& column : further)
        written << QuotedForPostgres(column);
    return further.isEmpty() ? statement : statement + " INCLUDE (" + written.join(", ") + ")";
}

// An index in the order of its first column from which a search reads all that it looks at: the texts as they are
// folded, the columns of the filters, and the key of the row.
QString CreateWalk(const Table& table, const QStringList& index, qsizetype number) {
    const QStringList folded = FoldedColumns(table);
    QStringList further;
    const bool oneKey = table.key.size() == 1;
    for (const QString& column : oneKey ? table.key + index : index)
        if (folded.contains(column))
            further << store::FoldedColumn(column);
        else if (column != index.front() && !further.contains(column))
            further << column;
    const auto gathered = GatheredOf(table);
    if (gathered && index.contains(gathered->gathered))
        further << store::FoldedColumn(store::ShortOfGathered(gathered->Name()));
    return CreateIndex(table, QString("_walk%1").arg(number), {index.front()}, further);
}

QStringList WritesOf(const QString& table) {
    static const QHash<QString, QStringList> writes = {{"T営業活動", {"INSERT"}},
                                                       {"T営業活動明細", {"INSERT", "UPDATE", "DELETE"}},
                                                       {"T閲覧", {"INSERT"}},
                                                       {"M付属書類", {"INSERT", "UPDATE", "DELETE"}},
                                                       {"M電話番号", {"INSERT", "UPDATE"}},
                                                       {"A番号情報", {"INSERT", "UPDATE"}},
                                                       {"A期日別番号情報", {"INSERT", "UPDATE"}},
                                                       {"A事業所別番号情報", {"INSERT", "UPDATE"}},
                                                       {"A事業所別期日別番号情報", {"INSERT", "UPDATE"}}};
    return writes.value(table);
}

// Filling a column leaves each row twice. Those that stay are put together by where the party is: whoever looks for a
// town, a postcode or an area's telephone numbers finds them on a few pages, and not each on one of its own.
QStringList PackStatements(const Table& table) {
    const QString name = QuotedForPostgres(table.name), order = QuotedForPostgres(table.name + "_place");
    return {"DROP INDEX IF EXISTS " + order,
            QString("CREATE INDEX %1 ON %2 (%3)").arg(order, name, QuotedForPostgres("住所A")),
            QString("CLUSTER %1 USING %2").arg(name, order), "DROP INDEX " + order};
}

}  // namespace

QStringList FoldedColumns(const Table& table) {
    if (const auto gathered = GatheredOf(table))
        return {"名称A", "名称B", "略称", "カナ", "住所A", "住所B", "住所C", "郵便番号", "電話番号", gathered->Name()};
    if (table.name.endsWith("御担当者")) return {"電話番号"};
    return {};
}

QStringList ServerTableStatements(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns)
        columns << QuotedForPostgres(column.name) + (column.integer ? " integer" : " text") +
                       (table.key.contains(column.name) ? " NOT NULL" : "");
    const QString name = QuotedForPostgres(table.name);
    if (const auto gathered = GatheredOf(table))
        columns << QuotedForPostgres(gathered->Name()) + " text" << gathered->ShortColumn();
    QStringList finer;
    for (const QString& column : FoldedColumns(table)) {
        const QString folded = QuotedForPostgres(store::FoldedColumn(column));
        columns
            << QString("%1 text GENERATED ALWAYS AS (katsudo_fold(%2)) STORED").arg(folded, QuotedForPostgres(column));
        finer << QString("ALTER TABLE %1 ALTER COLUMN %2 SET STATISTICS %3").arg(name, folded).arg(kStatistics);
    }
    QStringList statements = {QString("CREATE TABLE %1 (%2)").arg(name, columns.join(", "))};
    statements += finer;
    if (!table.key.isEmpty())
        statements << QString("CREATE UNIQUE INDEX %1 ON %2 (%3)")
                          .arg(QuotedForPostgres(table.name + "_key"), name, Ordered(table.key));
    return statements;
}

QStringList ServerRefoldStatements(const Table& table) {
    QStringList same;
    for (const QString& column : FoldedColumns(table))
        same << QString("%1 = %1").arg(QuotedForPostgres(column));
    if (same.isEmpty()) return {};
    return {QString("UPDATE %1 SET %2").arg(QuotedForPostgres(table.name), same.join(", "))};
}

QStringList ServerGatherStatements(const Table& table) {
    const auto gathered = GatheredOf(table);
    return gathered ? store::GatherStatements(*gathered) + PackStatements(table) : QStringList();
}

QStringList ServerStopGatherStatements(const Table& table) {
    const auto gathered = GatheredOf(table);
    return gathered ? store::StopGatherStatements(*gathered) : QStringList();
}

QStringList ServerIndexStatements(const Table& table) {
    const QString name = QuotedForPostgres(table.name);
    const bool walked = !FoldedColumns(table).isEmpty();
    QList<QStringList> made = {table.key};
    QStringList statements;
    for (const QStringList& index : table.indexes) {
        const QStringList columns = index.mid(0, kOrderColumns);
        if (walked && (index.size() > kOrderColumns || FoldedColumns(table).contains(index.back())) &&
            index.mid(0, 1) != table.key) {
            statements << CreateWalk(table, index, statements.size() + 1);
            continue;
        }
        const bool known = std::any_of(made.begin(), made.end(), [&](const QStringList& other) {
            return Covers(other, columns) || (!table.key.isEmpty() && Covers(columns, table.key));
        });
        if (known) continue;
        made << columns;
        statements << CreateIndex(table, QString("_order%1").arg(made.size() - 1), columns, {});
    }
    QStringList pieces;
    for (const QString& column : SearchedColumns(table))
        pieces << QString("katsudo_pieces(%1)").arg(QuotedForPostgres(column));
    if (!pieces.isEmpty())
        statements << QString("CREATE INDEX %1 ON %2 USING gin (%3)")
                          .arg(QuotedForPostgres(table.name + "_search"), name, pieces.join(", "));
    return statements;
}

QStringList ClientRights(const Table& table) {
    return QStringList{"SELECT"} + WritesOf(table.name);
}

QStringList ServerStatisticsStatements() {
    QStringList statements;
    // The folded texts tell how frequent a text is. Cutting each row of a finer sample into pieces would cost minutes.
    for (const Table& table : MainTables())
        for (qsizetype i = 0; i < FoldedColumns(table).size(); ++i)
            statements << QString("ALTER INDEX %1 ALTER COLUMN %2 SET STATISTICS 0")
                              .arg(QuotedForPostgres(table.name + "_search"))
                              .arg(i + 1);
    // An index is read alone only where the engine knows that all rows of a page are there for everybody.
    return statements << "VACUUM ANALYZE";
}

QStringList ServerRightsStatements(const Table& table, const QString& role) {
    return {QString("GRANT %1 ON %2 TO %3")
                .arg(ClientRights(table).join(", "), QuotedForPostgres(table.name), QuotedForPostgres(role))};
}

}  // namespace session
