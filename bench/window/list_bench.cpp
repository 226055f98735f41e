#include "bench/window/list_bench.h"

#include "bench/rewriter_times.h"
#include "bench/statement_trace.h"
#include "bench/window/search_times.h"

namespace bench {

Results RunListBench(const setup::Tree& tree, const Effort& effort) {
    Results results;
    const QString place = MainPlace(tree, {});
    StatementTrace::Watch(place);
    const setup::OpenTree open = setup::OpenStores(tree);
    const auto engine = BareEngine::Open(place);
    const std::vector<ListCase> cases = open.main ? PartyCases(*open.main) : std::vector<ListCase>();
    if (cases.empty() || !engine) {
        results.faults << "The store can't be read or has no parties: " + tree.root + " " + open.problem;
        return results;
    }
    WindowFill windows(tree.root, QDateTime::currentDateTime());
    results.Add(TimeSearches(table::kParties, cases, *engine, windows, effort, results));
    results.Add({table::kMemory,
                 {"What"},
                 {kProgram},
                 {{{"all six party lists open, the measuring itself included, MB"}, {ResidentMegabytes()}}}});
    results.Add(TimeSearches(table::kOthers, OtherCases(*open.main), *engine, windows, effort, results));
    results.Add(TimeRewriters(effort));
    return results;
}

}  // namespace bench
