#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <vector>

// What the two databases hold. The program itself makes no table; the tools that make and check an installation, and
// the tests, read this one description.
namespace session {

struct Column {
    QString name;
    /// A whole number; every other column is text, also dates, times, numbers of documents and class codes.
    bool integer = false;
};

struct Table {
    QString name;
    std::vector<Column> columns;
    /// Columns of the primary key; empty for a table that takes any row twice.
    QStringList key;
    /// The column lists of further indexes, one for each way in which the statements look for rows.
    std::vector<QStringList> indexes;

    QStringList ColumnNames() const;
};

/// Version of this description, noted in each store that is made of it.
inline constexpr int kSchemaVersion = 1;

/// Tables of the environment database (`usrcnfg`) and of the main database (`gnrdb`).
const std::vector<Table>& EnvironmentTables();
const std::vector<Table>& MainTables();

/// The table of that name in either database; null when there is none.
const Table* FindTable(const QString& name);

/// "CREATE TABLE …" with its key. Columns of the key refuse Null; all others take it.
QString CreateTableStatement(const Table& table);

/// One "CREATE INDEX …" for each further index. Apart from the table, so that a big table can be filled first.
QStringList CreateIndexStatements(const Table& table);

inline constexpr int kDocumentKindCount = 6;

/// The kinds of sales document, in the order of their columns in a slot: "出金" to "営業受注".
const std::array<QString, kDocumentKindCount>& DocumentKinds();

}  // namespace session
