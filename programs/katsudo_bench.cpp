#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <functional>
#include <memory>

#include "bench/bare_engine.h"
#include "bench/crowd/crowd.h"
#include "bench/index_cost.h"
#include "bench/limits.h"
#include "bench/markdown.h"
#include "bench/page/page_run.h"
#include "bench/window/client_bench.h"
#include "bench/window/document_bench.h"
#include "bench/window/list_bench.h"
#include "setup/create_tree.h"

namespace {

constexpr const char* kUsage =
    "Usage: katsudo-bench lists [--parties N] [--root DIR] [--results FILE]\n"
    "       katsudo-bench documents [--documents N] [--slots N] [--parties N] [--root DIR] [--admin-user NAME]\n"
    "                               [--results FILE]\n"
    "       katsudo-bench client [--parties N] [--slots N] [--root DIR] [--admin-user NAME] [--results FILE]\n"
    "       katsudo-bench indexes [--parties N] [--documents N] [--slots N] [--root DIR] [--results FILE]\n"
    "       katsudo-bench crowd --root DIR [--clients N] [--seconds N] [--own-stores yes] [--results FILE]\n"
    "       katsudo-bench page --out FILE --work DIR [--sizes N,N,…] [--slots N] [--clients N] [--seconds N]\n"
    "                          [--server S --admin-user NAME] [--quick yes]\n"
    "       katsudo-bench --help | --version\n"
    "\n"
    "lists      times the searches of the lists of parties, staff, postcodes and contacts.\n"
    "documents  times typed document numbers, the lists of documents and the lists of used names.\n"
    "client     times the client as a whole: its start, a slot saved and loaded, its waiting; and tells its memory.\n"
    "indexes    tells what the indexes of a file cost, and what its LIKE does.\n"
    "crowd      clients that save and search at once on an installation that has a staff member for each of them.\n"
    "page       all of these on companies of growing size, in files and on a server, written as one page.\n"
    "  --clients N    how many (50), for how many --seconds (60)\n"
    "  --own-stores   each of them works on an environment store of its own\n"
    "  --parties N    parties of the demo company that is made for it (100000); it is thrown away at the end\n"
    "  --documents N  documents of each of the six kinds (100000)\n"
    "  --slots N      slots that point at them (1000000); of the page's biggest company (10000000)\n"
    "  --root DIR     an installation that is there already; when there is none, it is made there and stays\n"
    "  --quick yes    hardly any repetitions: tells whether all works, and no times worth anything\n"
    "  --results FILE writes what was measured there too, for the page\n"
    "  --out FILE     the page\n"
    "  --work DIR     where the page's companies and what was measured stay; what is there isn't measured again\n"
    "  --sizes N,…    the parties of the page's companies (10000,100000,1000000)\n"
    "  --server S     the server of the page's other companies, as katsudo-setup takes it\n"
    "  --admin-user NAME  the administrator of the server that holds the main database\n";

/// A command line taken apart.
struct Arguments {
    QString command;
    QHash<QString, QString> values;
    bool good = false;

    /// True for one that is to be: "--quick yes".
    bool Has(const QString& name) const { return values.value(name) == "yes"; }
    QString Path(const QString& name) const {
        return values.contains(name) ? QDir(values[name]).absolutePath() : QString();
    }
    qint64 Number(const QString& name, qint64 usual, qint64 most) {
        if (!values.contains(name)) return usual;
        bool number = false;
        const qint64 value = values[name].toLongLong(&number);
        good = good && number && value > 0 && value <= most;
        return value;
    }
    std::optional<setup::ServerAdmin> Admin() const {
        return values.contains("--admin-user") ? std::optional(setup::ServerAdmin{values["--admin-user"], {}})
                                               : std::nullopt;
    }
};

Arguments Read(const QStringList& words) {
    static const QHash<QString, QStringList> options = {
        {"lists", {"--parties", "--root", "--quick", "--results"}},
        {"documents", {"--parties", "--documents", "--slots", "--root", "--admin-user", "--quick", "--results"}},
        {"client", {"--parties", "--slots", "--root", "--admin-user", "--quick", "--results"}},
        {"indexes", {"--parties", "--documents", "--slots", "--root", "--quick", "--results"}},
        {"crowd", {"--root", "--clients", "--seconds", "--own-stores", "--results"}},
        {"page",
         {"--out", "--work", "--sizes", "--slots", "--clients", "--seconds", "--server", "--admin-user", "--quick"}}};
    Arguments arguments;
    arguments.command = words.value(0);
    arguments.good = options.contains(arguments.command) && words.size() % 2 == 1;
    for (qsizetype i = 1; i + 1 < words.size() && arguments.good; i += 2) {
        arguments.good = options[arguments.command].contains(words[i]);
        arguments.values.insert(words[i], words[i + 1]);
    }
    return arguments;
}

setup::DemoSizes SizesOf(Arguments& arguments) {
    setup::DemoSizes sizes;
    sizes.parties = int(arguments.Number("--parties", 100'000, 1'900'000));
    const bool documents = arguments.command == "documents" || arguments.command == "indexes";
    sizes.documents = int(arguments.Number("--documents", documents ? 100'000 : sizes.documents, 10'000'000));
    sizes.activities = arguments.Number("--slots", arguments.command == "lists" ? 1000 : 1'000'000, 100'000'000);
    sizes.today = QDate(2026, 4, 1);
    return sizes;
}

bench::Results Measure(const QString& command, const setup::Tree& tree, const Arguments& arguments) {
    const bench::Effort effort = arguments.Has("--quick") ? bench::Effort::Quick() : bench::Effort();
    if (command == "lists") return bench::RunListBench(tree, effort);
    if (command == "documents") return bench::RunDocumentBench(tree, arguments.Admin(), effort);
    if (command == "client") return bench::RunClientBench(tree, arguments.Admin(), effort);
    return bench::RunIndexBench(tree.MainStore(), effort);
}

int UsageError() {
    QTextStream(stderr) << kUsage;
    return 2;
}

/// Prints what was measured, and writes it where that is wanted. 1 when something is wrong or passes a limit.
int Tell(const setup::Tree& tree, const Arguments& arguments, double load, bench::Results results) {
    QTextStream out(stdout);
    const QString place = bench::MainPlace(tree, {});
    bench::NoteMachine(results, bench::EngineInWords(place), load);
    const QStringList passed = bench::Passed(results, bench::IsServer(place));
    out << results.machine << '\n' << bench::AsMarkdown(results);
    for (const QString& words : passed)
        out << '\n' << words << '\n';
    const QString file = arguments.Path("--results");
    if (!file.isEmpty() && !bench::WriteResults(results, file)) results.faults << file + " can't be written.";
    return results.faults.isEmpty() && passed.isEmpty() ? 0 : 1;
}

int Crowd(Arguments& arguments) {
    const bench::CrowdOrder order{arguments.Path("--root"), int(arguments.Number("--clients", 50, 1000)),
                                  int(arguments.Number("--seconds", 60, 86'400)), arguments.Has("--own-stores")};
    if (!arguments.good || order.root.isEmpty()) return UsageError();
    const double load = bench::MachineLoad();
    return Tell({order.root}, arguments, load, bench::RunCrowd(order));
}

int Page(Arguments& arguments) {
    bench::PageOrder order;
    order.out = arguments.Path("--out");
    order.work = arguments.Path("--work");
    order.text = ":/page/benchmarks.md";
    if (arguments.values.contains("--sizes")) order.sizes.clear();
    for (const QString& size : arguments.values["--sizes"].split(u',', Qt::SkipEmptyParts))
        order.sizes.push_back(size.toInt());
    order.slotCount = arguments.Number("--slots", order.slotCount, 100'000'000);
    order.making.server = arguments.values["--server"];
    order.making.adminUser = arguments.values["--admin-user"];
    order.making.clients = int(arguments.Number("--clients", 50, 1000));
    order.quick = arguments.Has("--quick");
    order.seconds = int(arguments.Number("--seconds", 60, 86'400));
    const bool rising = std::is_sorted(order.sizes.begin(), order.sizes.end(), std::less_equal<int>());
    const bool told = !order.out.isEmpty() && !order.work.isEmpty() && !order.sizes.empty();
    if (!arguments.good || !told || !rising || order.sizes.front() <= 0 || order.sizes.back() > 1'900'000 ||
        order.making.server.isEmpty() != order.making.adminUser.isEmpty())
        return UsageError();
    QTextStream log(stdout);
    return bench::RunPage(order, log) ? 0 : 1;
}

int Bench(Arguments& arguments) {
    if (arguments.command == "crowd") return Crowd(arguments);
    if (arguments.command == "page") return Page(arguments);
    const QTemporaryDir folder;
    const QString root = arguments.Path("--root");
    const setup::Tree tree{root.isEmpty() ? folder.path() + "/tree" : root};
    setup::CreateOrder order;
    order.tree = tree;
    order.demo = SizesOf(arguments);
    if (!arguments.good) return UsageError();
    const QString problem = tree.Exists() ? QString() : setup::CreateTree(order);
    const double load = bench::MachineLoad();
    if (problem.isEmpty()) return Tell(tree, arguments, load, Measure(arguments.command, tree, arguments));
    QTextStream(stdout) << problem << '\n';
    return 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Only what draws needs a display.
    const QString command = argc < 2 ? QString() : QString::fromLocal8Bit(argv[1]);
    const bool draws = QStringList{"lists", "documents", "client", "start-client", "start-bare"}.contains(command);
    const std::unique_ptr<QCoreApplication> application =
        draws ? std::unique_ptr<QCoreApplication>(new QApplication(argc, argv))
              : std::make_unique<QCoreApplication>(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words == QStringList{"--version"} || words == QStringList{"--help"}) {
        QTextStream(stdout) << (words[0] == "--help" ? kUsage : "katsudo-bench " KATSUDO_VERSION "\n");
        return 0;
    }
    // What `client` starts to see how long a start takes.
    if (words.size() == 4 && words[0] == "start-client") return bench::StartClientOnce(words[1], words[2], words[3]);
    if (words.size() == 2 && words[0] == "start-bare") return bench::StartBareOnce(words[1]);
    Arguments arguments = Read(words);
    return arguments.good ? Bench(arguments) : UsageError();
}
