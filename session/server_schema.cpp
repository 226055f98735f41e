#include "session/server_schema.h"

#include <QHash>

#include "store/postgres_dialect.h"

namespace session {
namespace {

using store::QuotedForPostgres;

// What stands behind these in an index of a file is there to be read from it; here the rows themselves are.
constexpr qsizetype kOrderColumns = 2;

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

// Columns that the lists look into with LIKE, in the tables that grow.
QStringList SearchedColumns(const Table& table) {
    static const QHash<QString, QStringList> documents = {
        {"T案件", {"案件名", "相手先略称", "相手先名称A", "相手先名称B", "相手先御担当者名"}},
        {"T営業引合", {"得意先名称A", "得意先名称B", "営業引合商品名A", "営業引合商品名B"}},
        {"T営業見積", {"得意先名称A", "得意先名称B", "タイトル"}},
        {"T顧客注文", {"得意先名称A", "得意先名称B", "タイトル"}},
        {"T営業受注", {"得意先名称A", "得意先名称B", "納品先名称A", "納品先名称B"}}};
    if (documents.contains(table.name)) return documents.value(table.name);
    const QStringList columns = table.ColumnNames();
    if (columns.contains("取引状況区分"))
        return {"名称A", "名称B", "略称", "カナ", "住所A", "住所B", "住所C", "郵便番号", "電話番号"};
    if (table.name.endsWith("御担当者")) return {"電話番号"};
    return {};
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

}  // namespace

QStringList ServerTableStatements(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns)
        columns << QuotedForPostgres(column.name) + (column.integer ? " integer" : " text") +
                       (table.key.contains(column.name) ? " NOT NULL" : "");
    const QString name = QuotedForPostgres(table.name);
    QStringList statements = {QString("CREATE TABLE %1 (%2)").arg(name, columns.join(", "))};
    if (!table.key.isEmpty())
        statements << QString("CREATE UNIQUE INDEX %1 ON %2 (%3)")
                          .arg(QuotedForPostgres(table.name + "_key"), name, Ordered(table.key));
    return statements;
}

QStringList ServerIndexStatements(const Table& table) {
    const QString name = QuotedForPostgres(table.name);
    QList<QStringList> made = {table.key};
    QStringList statements;
    for (const QStringList& index : table.indexes) {
        const QStringList columns = index.mid(0, kOrderColumns);
        const bool known = std::any_of(made.begin(), made.end(), [&](const QStringList& other) {
            return Covers(other, columns) || (!table.key.isEmpty() && Covers(columns, table.key));
        });
        if (known) continue;
        made << columns;
        statements << QString("CREATE INDEX %1 ON %2 (%3)")
                          .arg(QuotedForPostgres(QString("%1_order%2").arg(table.name).arg(made.size() - 1)), name,
                               Ordered(columns));
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

QStringList ServerRightsStatements(const Table& table, const QString& role) {
    return {QString("GRANT %1 ON %2 TO %3")
                .arg(ClientRights(table).join(", "), QuotedForPostgres(table.name), QuotedForPostgres(role))};
}

}  // namespace session
