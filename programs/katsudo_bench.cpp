#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

#include "bench/crowd/crowd.h"
#include "bench/list_bench.h"
#include "bench/server_lists.h"
#include "bench/window/client_bench.h"
#include "bench/window/document_bench.h"
#include "bench/window/window_fill.h"
#include "setup/create_tree.h"

namespace {

constexpr const char* kUsage =
    "Usage: katsudo-bench lists [--parties N] [--root DIR]\n"
    "       katsudo-bench documents [--documents N] [--slots N] [--parties N] [--root DIR]\n"
    "       katsudo-bench client [--parties N] [--slots N] [--root DIR] [--admin-user NAME]\n"
    "       katsudo-bench crowd --root DIR [--clients N] [--seconds N]\n"
    "       katsudo-bench --help | --version\n"
    "\n"
    "lists      times the searches of the party lists.\n"
    "documents  times typed document numbers, the lists of documents and the lists of used names.\n"
    "client     times the client as a whole: its start, a slot saved and loaded, its waiting; and tells its memory.\n"
    "crowd      clients that save and search at once on an installation that has a staff member for each of them.\n"
    "  --clients N    how many (50), for how many --seconds (60)\n"
    "  --parties N    parties of the demo company that is made for it (100000); it is thrown away at the end\n"
    "  --documents N  documents of each of the six kinds (100000)\n"
    "  --slots N      slots that point at them (1000000)\n"
    "  --admin-user NAME  the administrator of the server that holds the installation's main database\n"
    "  --root DIR     an installation that is there already; when there is none, it is made there and stays\n";

struct Arguments {
    QString command;
    QString root;
    qint64 clients = 50, seconds = 60;
    qint64 parties = 100'000, documents = 100'000, slotCount = 1'000'000;
    std::optional<setup::ServerAdmin> admin;
    bool good = true;
};

Arguments Read(const QStringList& words) {
    Arguments arguments;
    arguments.command = words.value(0);
    const bool documents = arguments.command == "documents";
    const bool crowd = arguments.command == "crowd", client = arguments.command == "client";
    arguments.good = (documents || crowd || client || arguments.command == "lists") && words.size() % 2 == 1;
    const auto take = [&arguments](const QString& text, qint64 most, qint64& number) {
        number = text.toLongLong(&arguments.good);
        arguments.good = arguments.good && number > 0 && number <= most;
    };
    for (qsizetype i = 1; i + 1 < words.size() && arguments.good; i += 2) {
        if (words[i] == "--root")
            arguments.root = QDir(words[i + 1]).absolutePath();
        else if (words[i] == "--admin-user" && client)
            arguments.admin = setup::ServerAdmin{words[i + 1], {}};
        else if (words[i] == "--parties")
            take(words[i + 1], 1'900'000, arguments.parties);
        else if (words[i] == "--clients" && crowd)
            take(words[i + 1], 1000, arguments.clients);
        else if (words[i] == "--seconds" && crowd)
            take(words[i + 1], 86'400, arguments.seconds);
        else if (words[i] == "--documents" && documents)
            take(words[i + 1], 10'000'000, arguments.documents);
        else if (words[i] == "--slots" && (documents || client))
            take(words[i + 1], 100'000'000, arguments.slotCount);
        else
            arguments.good = false;
    }
    return arguments;
}

/// Makes the company when there is none. Gives the words of what went wrong; empty on success.
QString MakeCompany(const Arguments& arguments, const setup::Tree& tree, QTextStream& out) {
    if (tree.Exists()) return {};
    out << "Making a company in " << tree.root << " …\n" << Qt::flush;
    setup::CreateOrder order;
    order.tree = tree;
    order.demo.emplace();
    order.demo->parties = int(arguments.parties);
    order.demo->activities = 1000;
    order.demo->today = QDate(2026, 4, 1);
    if (arguments.command != "lists") order.demo->activities = arguments.slotCount;
    if (arguments.command == "documents") order.demo->documents = int(arguments.documents);
    return setup::CreateTree(order);
}

bool BenchLists(const setup::Tree& tree, QTextStream& out) {
    bench::WindowFill windows(tree.root, QDateTime::currentDateTime());
    const bool inTree = QFile::exists(tree.MainStore());
    const bool good = inTree ? bench::RunListBench(tree.MainStore(), std::ref(windows), out)
                             : bench::RunServerLists(tree, {}, out);
    out << "\nMemory with all six list windows open, the measuring itself included: "
        << qRound(bench::ResidentMegabytes()) << " MB\n";
    return good;
}

int Bench(const Arguments& arguments) {
    if (arguments.command == "crowd") {
        QTextStream crowdOut(stdout);
        return bench::RunCrowd({arguments.root, int(arguments.clients), int(arguments.seconds)}, crowdOut) ? 0 : 1;
    }
    const QTemporaryDir folder;
    const setup::Tree tree{arguments.root.isEmpty() ? folder.path() + "/tree" : arguments.root};
    QTextStream out(stdout);
    const QString problem = MakeCompany(arguments, tree, out);
    if (!problem.isEmpty()) {
        out << problem << '\n';
        return 1;
    }
    if (arguments.command == "client") return bench::RunClientBench(tree, arguments.admin, out) ? 0 : 1;
    const bool good = arguments.command == "lists" ? BenchLists(tree, out) : bench::RunDocumentBench(tree, out);
    return good ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    // Only what draws needs a display.
    const bool draws = argc < 2 || qstrcmp(argv[1], "crowd") != 0;
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
    const Arguments arguments = Read(words);
    if (!arguments.good) {
        QTextStream(stderr) << kUsage;
        return 2;
    }
    return Bench(arguments);
}
