#include "bench/window/document_bench.h"

#include <QRegularExpression>

#include "bench/index_cost.h"
#include "bench/search_times.h"
#include "bench/stopwatch.h"
#include "bench/window/desk.h"
#include "bench/window/window_fill.h"

namespace bench {
namespace {

constexpr int kNumbersOfAKind = 100;
constexpr double kMostOfTyping = 20;  // milliseconds
constexpr double kMostOverEngine = 1.5;
constexpr double kMostOfOpening = 100;

std::unique_ptr<store::Connection> OpenMain(const setup::Tree& tree) {
    store::Fault fault;
    return store::OpenConnection("Provider=SQLite;Data Source=data/gnrdb.accdb;", tree.root, fault);
}

/// Tells of a limit that was passed.
bool Within(double time, double limit, QTextStream& out) {
    if (time > limit) out << "  over the limit of " << limit << '\n';
    return time <= limit;
}

bool ForgetViewings(BareEngine& engine) {
    return engine.Step("DELETE FROM T閲覧 WHERE 担当者コード = '" + Desk::kViewer + "'") >= 0;
}

/// Takes back what the statements wrote, so that they can write it anew. A series that stood at the number already
/// would cost the engine nothing: it leaves a row alone that stays as it is.
bool TakeBack(BareEngine& engine, const std::vector<Recorded>& statements) {
    static const QRegularExpression drawn(QStringLiteral("連番 = '[0-9]+'"));
    bool good = ForgetViewings(engine);
    for (const auto& [sql, mostRows] : statements)
        if (sql.startsWith(QLatin1String("UPDATE")))
            good = engine.Step(QString(sql).replace(drawn, QStringLiteral("連番 = '00000000'"))) >= 0 && good;
    return good;
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
        desk.Connection()->recorded.clear();
        desk.Connection()->recording = true;
        times.typed.push_back(Milliseconds([&] { desk.Leave(); }));
        desk.Connection()->recording = false;
        if (!desk.Holds(numbers.kind, number)) return "a document isn't found: " + number;
        const std::vector<Recorded>& script = desk.Connection()->recorded;
        bool good = TakeBack(engine, script);
        times.stepped.push_back(Milliseconds([&] { good = StepAll(engine, script) >= 0 && good; }));
        if (!good || !ForgetViewings(engine)) return "the engine refuses a statement";
        times.statements = script.size();
    }
    return {};
}

bool TimeKind(Desk& desk, BareEngine& engine, const TypedNumbers& numbers, QTextStream& out) {
    TypedTimes times;
    const QString problem = TypeAll(desk, engine, numbers, times);
    const double bare = Median(times.stepped), own = Median(times.typed);
    out << Padded(numbers.kind + "No", 18) << problem << QString::number(times.statements).rightJustified(11)
        << Cell(bare) << Cell(own) << QString::number(own / bare, 'f', 2).rightJustified(8) << '\n'
        << Qt::flush;
    return Within(own, kMostOfTyping, out) && Within(own / bare, kMostOverEngine, out) && problem.isEmpty();
}

bool TimeTyping(const setup::Tree& tree, store::Connection& store, const QDateTime& now, QTextStream& out) {
    Desk desk(tree.root, now);
    const auto engine = BareEngine::Open(tree.MainStore(), BareEngine::Use::Writing);
    if (!desk.Problem().isEmpty() || !engine || !engine->UseOurLike()) {
        out << "The store can't be used: " << desk.Problem() << '\n';
        return false;
    }
    out << "A typed number, from leaving its item to the painted slot\n"
        << Padded("item", 18) << " statements   engine   typed   ratio\n";
    const auto kinds = NumbersToType(store, kNumbersOfAKind);
    if (kinds.empty()) out << "no slot is linked to a document\n";
    bool good = !kinds.empty();
    for (const TypedNumbers& numbers : kinds)
        good = TimeKind(desk, *engine, numbers, out) && good;
    return ForgetViewings(*engine) && good;
}

bool TimeOpenings(WindowFill& windows, BareEngine& engine, store::Connection& store, QTextStream& out) {
    out << "\nA number list, from its call to the painted list with its first search\n"
        << Padded("list", 28) << Padded("condition", 22) << "  rows   engine   opened\n";
    bool good = true;
    for (const Opening& opening : NumberListOpenings(store)) {
        const std::vector<Recorded> statements = windows.StatementsOf(opening);
        int rows = 0;
        const double bare = MedianMilliseconds([&] { good = StepAll(engine, statements) >= 0 && good; });
        const double opened =
            MedianMilliseconds([&] { rows = windows.Open(opening); }, [&] { windows.Close(opening); });
        windows.Close(opening);
        out << Padded(opening.list->name, 28) << Padded(opening.what, 22) << QString::number(rows).rightJustified(6)
            << Cell(bare) << Cell(opened) << '\n'
            << Qt::flush;
        good = rows > 0 && Within(opened, kMostOfOpening, out) && good;
    }
    return good;
}

}  // namespace

bool RunDocumentBench(const setup::Tree& tree, QTextStream& out) {
    const auto store = OpenMain(tree);
    const auto engine = BareEngine::Open(tree.MainStore());
    const QDate today = store ? NewestDay(*store) : QDate();
    if (!today.isValid() || !engine || !engine->UseOurLike()) {
        out << "The store can't be read or has no documents: " << tree.MainStore() << '\n';
        return false;
    }
    const QDateTime now(today, QTime(18, 0));
    out << "Medians in ms. engine: the program's statements stepped by the engine's own interface; query: by the "
           "program's "
           "connection, rows read into a recordset; filled: from the button to the painted list.\n\n";
    bool good = TimeTyping(tree, *store, now, out);
    WindowFill windows(tree.root, now);
    good = TimeOpenings(windows, *engine, *store, out) && good;
    out << "\nSearches of the number lists\n";
    good = TimeSearches(NumberListCases(*store), *engine, *store, std::ref(windows), out) && good;
    out << "\nSearches of the lists of used names\n";
    good = TimeSearches(NameListCases(today), *engine, *store, std::ref(windows), out) && good;
    return PrintDocumentIndexCost(tree.MainStore(), out) && good;
}

}  // namespace bench
