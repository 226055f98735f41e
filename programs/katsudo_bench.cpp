#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include "bench/crowd.h"
#include "bench/list_bench.h"
#include "bench/server_lists.h"
#include "bench/window/document_bench.h"
#include "bench/window/window_fill.h"
#include "setup/create_tree.h"

namespace {

constexpr const char* kUsage =
    "Usage: katsudo-bench lists [--parties N] [--root DIR]\n"
    "       katsudo-bench documents [--documents N] [--slots N] [--parties N] [--root DIR]\n"
    "       katsudo-bench crowd --root DIR [--clients N] [--seconds N]\n"
    "       katsudo-bench --help | --version\n"
    "\n"
    "lists      times the searches of the party lists.\n"
    "documents  times typed document numbers, the lists of documents and the lists of used names.\n"
    "  --parties N    parties of the demo company that is made for it (100000); it is thrown away at the end\n"
    "  --documents N  documents of each of the six kinds (100000)\n"
    "  --slots N      slots that point at them (1000000)\n"
    "crowd      lets clients save and search at once in an installation; their slots stay there.\n"
    "  --clients N    (50) for --seconds N (60)\n"
    "  --root DIR     an installation that is there already; when there is none, it is made there and stays\n";

struct Arguments {
    QString command;
    QString root;
    qint64 parties = 100'000, documents = 100'000, slotCount = 1'000'000;
    bool good = true;
};

Arguments Read(const QStringList& words) {
    Arguments arguments;
    arguments.command = words.value(0);
    const bool documents = arguments.command == "documents";
    arguments.good = (documents || arguments.command == "lists") && words.size() % 2 == 1;
    const auto take = [&arguments](const QString& text, qint64 most, qint64& number) {
        number = text.toLongLong(&arguments.good);
        arguments.good = arguments.good && number > 0 && number <= most;
    };
    for (qsizetype i = 1; i + 1 < words.size() && arguments.good; i += 2) {
        if (words[i] == "--root")
            arguments.root = QDir(words[i + 1]).absolutePath();
        else if (words[i] == "--parties")
            take(words[i + 1], 1'900'000, arguments.parties);
        else if (words[i] == "--documents" && documents)
            take(words[i + 1], 10'000'000, arguments.documents);
        else if (words[i] == "--slots" && documents)
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
    if (arguments.command == "documents") {
        order.demo->documents = int(arguments.documents);
        order.demo->activities = arguments.slotCount;
    }
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
    const QTemporaryDir folder;
    const setup::Tree tree{arguments.root.isEmpty() ? folder.path() + "/tree" : arguments.root};
    QTextStream out(stdout);
    const QString problem = MakeCompany(arguments, tree, out);
    if (!problem.isEmpty()) {
        out << problem << '\n';
        return 1;
    }
    const bool good = arguments.command == "lists" ? BenchLists(tree, out) : bench::RunDocumentBench(tree, out);
    return good ? 0 : 1;
}

std::optional<bench::CrowdOrder> ReadCrowd(const QStringList& words) {
    bench::CrowdOrder order;
    order.driver = QCoreApplication::applicationDirPath() + "/katsudo-drive";
    bool good = words.size() % 2 == 1;
    for (qsizetype i = 1; i + 1 < words.size() && good; i += 2) {
        if (words[i] == "--root")
            order.tree.root = QDir(words[i + 1]).absolutePath();
        else if (words[i] == "--clients")
            order.clients = words[i + 1].toInt(&good);
        else if (words[i] == "--seconds")
            order.seconds = words[i + 1].toInt(&good);
        else
            good = false;
    }
    return good && !order.tree.root.isEmpty() ? std::optional(order) : std::nullopt;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words == QStringList{"--version"} || words == QStringList{"--help"}) {
        QTextStream(stdout) << (words[0] == "--help" ? kUsage : "katsudo-bench " KATSUDO_VERSION "\n");
        return 0;
    }
    if (words.value(0) == "crowd") {
        const auto crowd = ReadCrowd(words);
        QTextStream out(stdout);
        if (crowd) return bench::RunCrowd(*crowd, out) ? 0 : 1;
    }
    const Arguments arguments = Read(words);
    if (!arguments.good) {
        QTextStream(stderr) << kUsage;
        return 2;
    }
    return Bench(arguments);
}
