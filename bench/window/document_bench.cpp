#include "bench/window/document_bench.h"

#include "bench/statement_trace.h"
#include "bench/window/desk.h"
#include "bench/window/search_times.h"

namespace bench {
namespace {

bool ForgetViewings(BareEngine& engine) {
    return engine.Step("DELETE FROM \"T閲覧\" WHERE \"担当者コード\" = '" + Desk::kViewer + "'") >= 0;
}

/// The times of one typed number, in milliseconds. The two ways take turns, so that whatever else the machine does, and
/// the other's writing into the store, meets both alike.
struct TypedTimes {
    std::vector<double> typed, stepped;
    std::size_t statements = 0;
};

/// Types all numbers of a kind, one after the other on one slot. What is wrong, in words; empty for nothing.
QString TypeAll(Desk& desk, BareEngine& engine, const TypedNumbers& numbers, TypedTimes& times) {
    // Once for the pages to be in memory, and for the series to have their rows.
    desk.BeginSlot(numbers);
    for (const QString& number : numbers.numbers) {
        desk.Type(numbers.kind, number);
        desk.Leave();
    }
    desk.BeginSlot(numbers);
    for (const QString& number : numbers.numbers) {
        desk.Type(numbers.kind, number);
        desk.Connection()->Begin();
        times.typed.push_back(Milliseconds([&] { desk.Leave(); }));
        desk.Connection()->recording = false;
        if (!desk.Holds(numbers.kind, number)) return "a document isn't found: " + number;
        const std::vector<Recorded>& script = desk.Connection()->engineGiven;
        bool good = ForgetViewings(engine) && TakeBack(engine, script);
        times.stepped.push_back(Milliseconds([&] { good = engine.StepAll(script) >= 0 && good; }));
        if (!good || !ForgetViewings(engine)) return "the engine refuses a statement";
        times.statements = script.size();
    }
    return {};
}

Table TimeTyping(const setup::Tree& tree, store::Connection& store, BareEngine& engine, const QDateTime& now,
                 const Effort& effort, Results& results) {
    Table table{table::kTyped, {"Item"}, {"Statements", kEngine, kProgram}, {}};
    Desk desk(tree.root, now);
    const auto kinds = desk.Problem().isEmpty() ? NumbersToType(store, effort.numbers) : std::vector<TypedNumbers>();
    if (kinds.empty()) results.faults << "No number can be typed; " + desk.Problem();
    for (const TypedNumbers& numbers : kinds) {
        TypedTimes times;
        const QString problem = TypeAll(desk, engine, numbers, times);
        if (!problem.isEmpty()) results.faults << numbers.kind + "No: " + problem;
        table.rows.push_back(
            {{numbers.kind + "No"}, {double(times.statements), Median(times.stepped), Median(times.typed)}});
    }
    if (!ForgetViewings(engine)) results.faults << "The looks of the measurement can't be taken away.";
    return table;
}

}  // namespace

Results RunDocumentBench(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin,
                         const Effort& effort) {
    Results results;
    const QString place = MainPlace(tree, admin);
    StatementTrace::Watch(place);
    const setup::OpenTree open = setup::OpenStores(tree);
    const auto engine = BareEngine::Open(place, BareEngine::Use::Writing);
    const QDate today = open.main ? NewestDay(*open.main) : QDate();
    if (!today.isValid() || !engine) {
        results.faults << "The store can't be read or has no documents: " + tree.root + " " + open.problem;
        return results;
    }
    const QDateTime now(today, QTime(18, 0));
    results.Add(TimeTyping(tree, *open.main, *engine, now, effort, results));
    WindowFill windows(tree.root, now);
    results.Add(TimeOpenings(NumberListOpenings(*open.main), *engine, windows, effort, results));
    results.Add(TimeSearches(table::kNumbers, NumberListCases(*open.main), *engine, windows, effort, results));
    results.Add(TimeSearches(table::kNames, NameListCases(), *engine, windows, effort, results));
    return results;
}

}  // namespace bench
