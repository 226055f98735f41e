#pragma once

#include "bench/results.h"

namespace bench {

/// A Markdown table that is filled row by row; the columns behind the first `texts` hold numbers.
class MarkdownTable {
  public:
    MarkdownTable(const QStringList& heads, int texts);
    /// A "|" within a cell is escaped.
    void Add(const QStringList& cells);
    QString Text() const;
    bool Empty() const { return rows_.isEmpty(); }

  private:
    QString head_, rows_;
};

/// Shown where nothing was measured.
inline const QString kUnmeasured = QStringLiteral("–");

/// A time or a size: two places below 1, one below 100, whole numbers from there on, with thousands parted.
QString MeasureText(double measure);
/// A whole number with thousands parted.
QString CountText(double count);
/// How many times one cost is another: two places below 10, one below 100. Unmeasured where the other one is so small
/// that it would be shown as 0.00: there is nothing to compare.
QString TimesText(double cost, double other);

/// A table as it was measured.
QString PlainTable(const Table& table);

/// What was measured, all of it, a table after the other.
QString AsMarkdown(const Results& results);

/// The same tables of growing installations side by side: for each size what the program takes, and the engine in
/// brackets; then how many times the smallest size's cost the biggest one's is, and how many times the engine's. Rows
/// are those of the biggest; a first text that repeats is left out. `sizes` are heads; a missing table is null.
QString SideBySide(const QStringList& sizes, const std::vector<const Table*>& tables);

}  // namespace bench
