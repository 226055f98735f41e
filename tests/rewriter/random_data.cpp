#include "tests/rewriter/random_data.h"

namespace plain {
namespace {

// Few values, so that rows meet. The texts differ in what a search doesn't see and in what it does.
const QStringList kCodes = {"1", "2", "001", "000"};
const QStringList kDays = {"20260101", "20260315", "20260316", ""};
const QStringList kDigits = {"０３", "03-12", "12", "312"};
const QStringList kTexts = {"カブ", "ｶﾌﾞ", "かふ", "株式会社 A", "株式", "Ａ-1", "a_1", "5%", ""};

const QStringList& PoolOf(const QString& column) {
    if (column.contains("名") || column == "氏名" || column == "略称") return kTexts;
    if (column.contains("カナ") || column.contains("住所") || column.contains("タイトル")) return kTexts;
    if (column.contains("電話") || column.contains("郵便")) return kDigits;
    if (column.contains("日付") || column.contains("納期")) return kDays;
    return kCodes;
}

}  // namespace

QString TableShape::CreateStatement() const {
    QStringList parts;
    for (const QString& column : columns)
        parts << "[" + column + "] " + (integers.contains(column) ? "INTEGER" : "TEXT");
    return "CREATE TABLE [" + name + "] (" + parts.join(", ") + ")";
}

const std::vector<TableShape>& MadeUpTables() {
    static const QStringList columns = {"コード", "区分", "名称A", "電話番号", "Ｍコード", "数"};
    static const std::vector<TableShape> tables = {
        {"M甲", columns, {"数"}}, {"M乙B", columns, {"数"}}, {"T丙", columns, {"数"}}, {"Tei", columns, {"数"}}};
    return tables;
}

QString ValueFor(const QString& column, Dice& dice) {
    return dice.Pick(PoolOf(column));
}

Data RandomData(const std::vector<TableShape>& tables, Dice& dice) {
    Data data;
    for (const TableShape& shape : tables) {
        Table& table = data[shape.name.toLower()];
        for (const QString& column : shape.columns) {
            table.columns << column.toLower();
            if (shape.integers.contains(column)) table.integers.insert(column.toLower());
        }
        table.rows.resize(std::size_t(dice.Of(9)));
        for (Row& row : table.rows)
            for (const QString& column : shape.columns) {
                const bool number = shape.integers.contains(column);
                row.push_back(dice.OneIn(3) ? Cell()
                              : number      ? QString::number(dice.Of(20) - 5)
                                            : ValueFor(column, dice));
            }
    }
    return data;
}

std::optional<QString> InsertStatement(const TableShape& shape, const Table& table) {
    QStringList rows;
    for (const Row& row : table.rows) {
        QStringList values;
        for (const Cell& cell : row)
            values << (cell ? "'" + QString(*cell).replace("'", "''") + "'" : "NULL");
        rows << "(" + values.join(", ") + ")";
    }
    if (rows.isEmpty()) return std::nullopt;
    return "INSERT INTO [" + shape.name + "] ([" + shape.columns.join("], [") + "]) VALUES " + rows.join(", ");
}

}  // namespace plain
