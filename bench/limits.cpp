#include "bench/limits.h"

#include <cmath>
#include <limits>

#include "bench/markdown.h"

namespace bench {
namespace {

constexpr double kNoLimit = std::numeric_limits<double>::quiet_NaN();
constexpr int kFullList = 1000;

// Two characters are what a text is searched by in Japanese, and what an index of letters and pairs finds by one look.
double OfServerSearch(const Table& table, const Row& row, bool onServer) {
    const double characters = table.At(row, kCharacters);
    if (!onServer || !(characters >= 2)) return kNoLimit;
    return characters < 3 ? 250 : 20;
}

}  // namespace

const std::vector<Limit>& Limits() {
    const auto most = [](double limit) { return [limit](const Table&, const Row&, bool) { return limit; }; };
    static const QStringList searches = {table::kParties, table::kOthers, table::kNumbers, table::kNames};
    static const std::vector<Limit> limits = {
        {"A typed document number is on the painted slot within 20 ms", {table::kTyped}, most(20)},
        {"A typed document number is there within 1.5 times the engine's time",
         {table::kTyped},
         [](const Table& table, const Row& row, bool) { return 1.5 * table.At(row, kEngine); }},
        {"A number list opens within 100 ms", {table::kOpenings}, most(100)},
        {"A list of used names that fills its first 1,000 takes 700 ms",
         {table::kNames},
         [](const Table& table, const Row& row, bool) { return table.At(row, kRows) >= kFullList ? 700 : kNoLimit; }},
        {"A search of parties on PostgreSQL takes 250 ms for a text of two characters, 20 ms for more",
         {table::kParties},
         OfServerSearch},
        {"A filled list takes 1.3 times the engine's time and 40 ms", searches,
         [](const Table& table, const Row& row, bool) { return 1.3 * table.At(row, kEngine) + 40; }},
        {"A statement takes 50 µs on its way through a dialect", {table::kRewriter}, most(50)},
        {"A client that waits for another program takes 3 % of a core",
         {table::kClient},
         [](const Table&, const Row& row, bool) { return row.what.first() == kWaitShare ? 3 : kNoLimit; }}};
    return limits;
}

std::vector<Judged> Judge(const Limit& limit, const Results& results, bool onServer) {
    std::vector<Judged> judged;
    for (const QString& name : limit.tables) {
        const Table* table = results.Find(name);
        if (!table) continue;
        for (const Row& row : table->rows) {
            const double most = limit.most(*table, row, onServer);
            if (!std::isnan(most)) judged.push_back({row.what.join(", "), table->At(row, kProgram), most});
        }
    }
    return judged;
}

QStringList Passed(const Results& results, bool onServer) {
    QStringList words;
    for (const Limit& limit : Limits())
        for (const Judged& judged : Judge(limit, results, onServer))
            if (judged.Passes())
                words << QString("%1: %2, %3 of %4.")
                             .arg(limit.text, judged.what, MeasureText(judged.measured), MeasureText(judged.most));
    return words;
}

}  // namespace bench
