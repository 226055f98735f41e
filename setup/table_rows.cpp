#include "setup/table_rows.h"

#include <QCryptographicHash>
#include <QtEndian>

namespace setup {
namespace {

constexpr int kRowsOfAPiece = 5000;

QString Quoted(const QStringList& names) {
    return "\"" + names.join("\", \"") + "\"";
}

// For statements that a dialect reads. An engine may take a missing column in double quotes for a text.
QString Bracketed(const QStringList& names) {
    return "[" + names.join("], [") + "]";
}

QString Literal(const QString& text) {
    return "'" + QString(text).replace("'", "''") + "'";
}

QString Literals(const QStringList& texts) {
    QStringList literals;
    for (const QString& text : texts)
        literals << Literal(text);
    return literals.join(", ");
}

QString Words(const session::Table& table, const store::Fault& fault) {
    return QString("The table %1 can't be read: %2").arg(table.name, fault.description);
}

// The name as the description spells it: an engine may tell it in its own letters.
bool IsNumber(const session::Table& table, const QString& column) {
    for (const session::Column& known : table.columns)
        if (known.name == column) return known.integer;
    return false;
}

std::optional<QString> Kept(const std::optional<QString>& value, bool number) {
    return number && value && value->isEmpty() ? std::nullopt : value;
}

void AddValue(QCryptographicHash& hash, const std::optional<QString>& value) {
    const QByteArray bytes = value ? value->toUtf8() : QByteArray();
    // With its length before it, so that "ab" and "c" aren't "a" and "bc".
    const qint64 length = qToLittleEndian(value ? qint64(bytes.size()) : qint64(-1));
    hash.addData(QByteArrayView(reinterpret_cast<const char*>(&length), sizeof length));
    hash.addData(bytes);
}

}  // namespace

QStringList ColumnsOf(store::Connection& connection, const session::Table& table, QString& problem) {
    store::Fault fault;
    const auto rows = connection.Query("SELECT TOP 1 * FROM " + Bracketed({table.name}), fault);
    if (!rows) problem = Words(table, fault);
    return rows ? rows->Columns() : QStringList();
}

TableReader::TableReader(store::Connection& connection, const session::Table& table, QStringList columns,
                         std::optional<Key> after)
    : connection_(connection), table_(table), columns_(std::move(columns)), after_(std::move(after)) {}

std::vector<store::Recordset::Row> TableReader::Next() {
    const QString key = Bracketed(table_.key);
    const QString behind = after_ ? QString(" WHERE (%1) > (%2)").arg(key, Literals(*after_)) : QString();
    store::Fault fault;
    const auto rows = connection_.Query(
        QString("SELECT TOP %1 %2 FROM %3%4 ORDER BY %5")
            .arg(QString::number(kRowsOfAPiece), Bracketed(columns_), Bracketed({table_.name}), behind, key),
        fault);
    std::vector<store::Recordset::Row> read;
    if (!rows) problem_ = Words(table_, fault);
    for (; rows && !rows->Eof(); rows->MoveNext()) {
        store::Recordset::Row& row = read.emplace_back();
        for (const QString& column : columns_)
            row.push_back(rows->Value(column));
        after_.emplace();
        for (const QString& column : table_.key)
            *after_ << rows->Value(column).value_or(QString());
    }
    return read;
}

std::optional<Key> LastKey(store::Connection& connection, const session::Table& table, QString& problem) {
    QStringList order;
    for (const QString& column : table.key)
        order << Bracketed({column}) + " DESC";
    store::Fault fault;
    const auto rows = connection.Query(QString("SELECT TOP 1 %1 FROM %2 ORDER BY %3")
                                           .arg(Bracketed(table.key), Bracketed({table.name}), order.join(", ")),
                                       fault);
    if (!rows) problem = Words(table, fault);
    if (!rows || rows->Eof()) return std::nullopt;
    Key key;
    for (const QString& column : table.key)
        key << rows->Value(column).value_or(QString());
    return key;
}

std::optional<Digest> DigestOf(store::Connection& connection, const session::Table& table, const QStringList& columns,
                               QString& problem, const RowsRead& progress) {
    std::vector<bool> numbers;
    for (const QString& column : columns)
        numbers.push_back(IsNumber(table, column));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    Digest digest;
    TableReader reader(connection, table, columns);
    for (auto rows = reader.Next(); !rows.empty(); rows = reader.Next()) {
        for (const store::Recordset::Row& row : rows)
            for (std::size_t column = 0; column < row.size(); ++column)
                AddValue(hash, Kept(row[column], numbers[column]));
        digest.rows += qint64(rows.size());
        if (progress) progress(digest.rows);
    }
    problem = reader.Problem();
    digest.hash = hash.result();
    return problem.isEmpty() ? std::optional(digest) : std::nullopt;
}

QString InsertHead(const QString& table, const QStringList& columns) {
    return QString("INSERT INTO %1 (%2) VALUES ").arg(Quoted({table}), Quoted(columns));
}

QString InsertRow(const session::Table& table, const QStringList& columns, const store::Recordset::Row& row) {
    QString text;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const auto value = Kept(row[column], IsNumber(table, columns[qsizetype(column)]));
        text += column == 0 ? "(" : ",";
        text += value ? Literal(*value) : "NULL";
    }
    return text + ")";
}

}  // namespace setup
