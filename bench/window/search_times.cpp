#include "bench/window/search_times.h"

#include "lists/list_window.h"

namespace bench {
namespace {

constexpr int kMostRows = lists::ListWindow::kMostRows;

Row TimeCase(const ListCase& search, BareEngine& engine, WindowFill& windows, const Effort& effort, Results& results) {
    const std::vector<Recorded> statements = windows.StatementsOf(search);
    int stepped = 0, filled = 0;
    const auto [bare, own] = MedianTurns(
        effort.runs, [&] { stepped = engine.StepAll(statements); }, [&] { filled = windows(search); });
    if (statements.empty() || stepped < 0 || filled != std::min(stepped, kMostRows))
        results.faults << QString("%1, %2: the engine found %3 rows, the window %4.")
                              .arg(search.list->name, search.what)
                              .arg(stepped)
                              .arg(filled);
    return {{search.list->name, search.what}, {double(search.characters), double(filled), bare, own}};
}

Row TimeOpening(const Opening& opening, BareEngine& engine, WindowFill& windows, const Effort& effort,
                Results& results) {
    const std::vector<Recorded> statements = windows.StatementsOf(opening);
    int stepped = 0, rows = 0;
    const auto [bare, own] = MedianTurns(
        effort.runs, [&] { stepped = engine.StepAll(statements); }, [&] { rows = windows.Open(opening); },
        [&] { windows.Close(opening); });
    windows.Close(opening);
    if (stepped < 0 || rows <= 0)
        results.faults << QString("%1, %2: no documents are shown.").arg(opening.list->name, opening.what);
    return {{opening.list->name, opening.what}, {double(rows), bare, own}};
}

}  // namespace

Table TimeSearches(const QString& name, const std::vector<ListCase>& cases, BareEngine& engine, WindowFill& windows,
                   const Effort& effort, Results& results) {
    Table table{name, {"List", "Search"}, {kCharacters, kRows, kEngine, kProgram}, {}};
    for (const ListCase& search : cases)
        table.rows.push_back(TimeCase(search, engine, windows, effort, results));
    return table;
}

Table TimeOpenings(const std::vector<Opening>& openings, BareEngine& engine, WindowFill& windows, const Effort& effort,
                   Results& results) {
    Table table{table::kOpenings, {"List", "Condition"}, {kRows, kEngine, kProgram}, {}};
    for (const Opening& opening : openings)
        table.rows.push_back(TimeOpening(opening, engine, windows, effort, results));
    return table;
}

}  // namespace bench
