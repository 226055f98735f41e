#include "bench/markdown.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

namespace bench {
namespace {

constexpr double kTooSmall = 0.005;  // shown as 0.00

QString Line(const QStringList& cells) {
    QStringList escaped;
    for (QString cell : cells)
        escaped << cell.replace("|", "\\|");
    return "| " + escaped.join(" | ") + " |\n";
}

QString Parted(double number, int places) {
    return QLocale(QLocale::English).toString(number, 'f', places);
}

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

bool IsMeasure(const QString& head) {
    return head == kEngine || head == kProgram || head.contains(u' ');
}

/// The heads of what is counted beside the costs.
QStringList Counts(const Table& table) {
    QStringList heads = table.numberHeads;
    for (const QString& told : {kEngine, kProgram, kCharacters})
        heads.removeAll(told);
    return heads;
}

// What has a unit behind its name, or an engine beside it, is a measure; all else is counted.
QString CostText(const Table* table, const Row* row) {
    if (!table || !row) return kUnmeasured;
    const double engine = table->At(*row, kEngine), program = table->At(*row, kProgram);
    if (std::isnan(engine)) return row->what.last().contains(", ") ? MeasureText(program) : CountText(program);
    return MeasureText(program) + " (" + MeasureText(engine) + ")";
}

double CostAt(const Table* table, const QStringList& what) {
    const Row* row = table ? table->Find(what) : nullptr;
    return row ? table->At(*row, kProgram) : kUnknown;
}

}  // namespace

MarkdownTable::MarkdownTable(const QStringList& heads, int texts) {
    QStringList rule;
    for (int column = 0; column < heads.size(); ++column)
        rule << (column < texts ? "---" : "---:");
    head_ = Line(heads) + Line(rule);
}

void MarkdownTable::Add(const QStringList& cells) {
    rows_ += Line(cells);
}

QString MarkdownTable::Text() const {
    return head_ + rows_;
}

QString MeasureText(double measure) {
    // What would be rounded up to 1.00 or 100.0 is shown as what it then is.
    const double size = std::abs(measure);
    return std::isnan(measure) ? kUnmeasured : Parted(measure, size < 0.995 ? 2 : size < 99.95 ? 1 : 0);
}

QString CountText(double count) {
    return std::isnan(count) ? kUnmeasured : Parted(count, 0);
}

QString TimesText(double cost, double other) {
    if (std::isnan(cost) || std::isnan(other) || other < kTooSmall) return kUnmeasured;
    const double times = cost / other;
    return Parted(times, times < 9.995 ? 2 : times < 99.95 ? 1 : 0);
}

QString PlainTable(const Table& table) {
    MarkdownTable text(table.whatHeads + table.numberHeads, int(table.whatHeads.size()));
    for (const Row& row : table.rows) {
        QStringList cells = row.what;
        for (const QString& head : table.numberHeads)
            cells << (IsMeasure(head) ? MeasureText(table.At(row, head)) : CountText(table.At(row, head)));
        text.Add(cells);
    }
    return text.Text();
}

QString AsMarkdown(const Results& results) {
    QString text;
    for (const Table& table : results.tables)
        text += "\n" + table.name + "\n\n" + PlainTable(table);
    for (const QString& fault : results.faults)
        text += "\n" + fault + "\n";
    return text;
}

QString SideBySide(const QStringList& sizes, const std::vector<const Table*>& tables) {
    const auto last = std::find_if(tables.rbegin(), tables.rend(), [](const Table* table) { return table; });
    if (last == tables.rend()) return "Not measured.\n";
    const Table& biggest = **last;
    const QStringList counts = Counts(biggest);
    const bool grows = sizes.size() > 1, compared = biggest.numberHeads.contains(kEngine);
    MarkdownTable text(biggest.whatHeads + counts + sizes + (grows ? QStringList{"Growth"} : QStringList()) +
                           (compared ? QStringList{"× engine"} : QStringList()),
                       int(biggest.whatHeads.size()));
    QString before;
    for (const Row& row : biggest.rows) {
        QStringList cells = row.what;
        if (cells.size() > 1 && std::exchange(before, cells[0]) == cells[0]) cells[0].clear();
        for (const QString& head : counts)
            cells << CountText(biggest.At(row, head));
        for (const Table* table : tables)
            cells << CostText(table, table ? table->Find(row.what) : nullptr);
        if (grows) cells << TimesText(CostAt(tables.back(), row.what), CostAt(tables.front(), row.what));
        if (compared) cells << TimesText(biggest.At(row, kProgram), biggest.At(row, kEngine));
        text.Add(cells);
    }
    return text.Text();
}

}  // namespace bench
