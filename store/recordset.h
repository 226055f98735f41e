#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace store {

/// The rows of one SELECT, read forward only. The rows were fetched when the statement ran; nothing is locked.
class Recordset {
  public:
    using Row = std::vector<std::optional<QString>>;

    Recordset(QStringList columns, std::vector<Row> rows);

    /// True when there is no current row (any more); true at once for an empty result.
    bool Eof() const;

    /// Steps to the next row; at the end it does nothing.
    void MoveNext();

    /// The current row's value of the column (its bare name, as the table or an AS spells it; of two columns of one
    /// name the first). Nothing for Null, for an unknown column and at the end.
    std::optional<QString> Value(const QString& column) const;

    /// Column names in the order of the SELECT.
    const QStringList& Columns() const { return columns_; }

  private:
    QStringList columns_;
    QHash<QString, int> positions_;
    std::vector<Row> rows_;
    std::size_t current_ = 0;
};

}  // namespace store
