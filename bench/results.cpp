#include "bench/results.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSysInfo>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <limits>

namespace bench {
namespace {

QJsonArray AsJson(const std::vector<double>& numbers) {
    QJsonArray list;
    for (const double number : numbers)
        list.append(std::isnan(number) ? QJsonValue() : QJsonValue(number));
    return list;
}

QJsonObject AsJson(const Table& table) {
    QJsonArray rows;
    for (const Row& row : table.rows)
        rows.append(QJsonArray{QJsonArray::fromStringList(row.what), AsJson(row.numbers)});
    return {{"name", table.name},
            {"what", QJsonArray::fromStringList(table.whatHeads)},
            {"numbers", QJsonArray::fromStringList(table.numberHeads)},
            {"rows", rows}};
}

QStringList Texts(const QJsonValue& list) {
    return list.toVariant().toStringList();
}

Table TableOf(const QJsonObject& json) {
    Table table{json["name"].toString(), Texts(json["what"]), Texts(json["numbers"]), {}};
    for (const QJsonValue& row : json["rows"].toArray()) {
        std::vector<double> numbers;
        for (const QJsonValue& number : row[1].toArray())
            numbers.push_back(number.toDouble(std::numeric_limits<double>::quiet_NaN()));
        table.rows.push_back({Texts(row[0]), std::move(numbers)});
    }
    return table;
}

// The first number of a line of a file that begins like that; 0 without one.
double FirstNumber(const QString& path, const QByteArray& beginning) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith(beginning)) return line.mid(beginning.size()).trimmed().split(' ').value(0).toDouble();
    return 0;
}

}  // namespace

double Table::At(const Row& row, const QString& head) const {
    const auto place = numberHeads.indexOf(head);
    return place < 0 || place >= qsizetype(row.numbers.size()) ? std::numeric_limits<double>::quiet_NaN()
                                                               : row.numbers[std::size_t(place)];
}

const Row* Table::Find(const QStringList& what) const {
    const auto found = std::find_if(rows.begin(), rows.end(), [&what](const Row& row) { return row.what == what; });
    return found == rows.end() ? nullptr : &*found;
}

const Table* Results::Find(const QString& name) const {
    const auto found =
        std::find_if(tables.begin(), tables.end(), [&name](const Table& table) { return table.name == name; });
    return found == tables.end() ? nullptr : &*found;
}

bool WriteResults(const Results& results, const QString& file) {
    QJsonArray tables;
    for (const Table& table : results.tables)
        tables.append(AsJson(table));
    const QJsonObject whole{{"when", results.when.toString(Qt::ISODate)},
                            {"machine", results.machine},
                            {"load", results.load},
                            {"tables", tables},
                            {"faults", QJsonArray::fromStringList(results.faults)}};
    QSaveFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(QJsonDocument(whole).toJson()) >= 0 && out.commit();
}

std::optional<Results> ReadResults(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) return std::nullopt;
    const QJsonObject whole = QJsonDocument::fromJson(in.readAll()).object();
    if (!whole.contains("tables")) return std::nullopt;
    Results results{QDateTime::fromString(whole["when"].toString(), Qt::ISODate),
                    whole["machine"].toString(),
                    whole["load"].toDouble(),
                    {},
                    Texts(whole["faults"])};
    for (const QJsonValue& table : whole["tables"].toArray())
        results.Add(TableOf(table.toObject()));
    return results;
}

double MachineLoad() {
    return FirstNumber(QStringLiteral("/proc/loadavg"), {});
}

void NoteMachine(Results& results, const QString& engine, double load) {
    results.when = QDateTime::currentDateTime();
    results.load = load;
    const double gigabytes = FirstNumber(QStringLiteral("/proc/meminfo"), "MemTotal:") / (1 << 20);
    results.machine = QString("%1 cores, %2 GB of memory, %3, Qt %4, %5")
                          .arg(QThread::idealThreadCount())
                          .arg(std::lround(gigabytes))
                          .arg(QSysInfo::prettyProductName(), qVersion(), engine);
}

}  // namespace bench
