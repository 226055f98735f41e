#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include "bench/window/window_fill.h"
#include "setup/create_tree.h"

namespace {

constexpr const char* kUsage =
    "Usage: katsudo-bench lists [--parties N] [--root DIR]\n"
    "       katsudo-bench --help | --version\n"
    "\n"
    "lists  times the searches of the party lists.\n"
    "  --parties N  parties of the demo company that is made for it (100000); it is thrown away at the end\n"
    "  --root DIR   an installation that is there already; when there is none, it is made there and stays\n";

struct Arguments {
    QString root;
    int parties = 100'000;
    bool good = true;
};

Arguments Read(const QStringList& words) {
    Arguments arguments;
    arguments.good = words.value(0) == "lists" && words.size() % 2 == 1;
    for (qsizetype i = 1; i + 1 < words.size() && arguments.good; i += 2) {
        if (words[i] == "--root")
            arguments.root = QDir(words[i + 1]).absolutePath();
        else if (words[i] == "--parties")
            arguments.parties = words[i + 1].toInt(&arguments.good);
        else
            arguments.good = false;
    }
    arguments.good = arguments.good && arguments.parties > 0 && arguments.parties <= 1'900'000;
    return arguments;
}

int BenchLists(const Arguments& arguments) {
    const QTemporaryDir folder;
    const setup::Tree tree{arguments.root.isEmpty() ? folder.path() + "/tree" : arguments.root};
    QTextStream out(stdout);
    if (!tree.Exists()) {
        out << "Making a company of " << arguments.parties << " parties in " << tree.root << " …\n" << Qt::flush;
        setup::CreateOrder order;
        order.tree = tree;
        order.demo.emplace();
        order.demo->parties = arguments.parties;
        order.demo->activities = 1000;
        order.demo->today = QDate(2026, 4, 1);
        const QString problem = setup::CreateTree(order);
        if (!problem.isEmpty()) {
            out << problem << '\n';
            return 1;
        }
    }
    bench::WindowFill windows(tree.root);
    const bool good = bench::RunListBench(tree.MainStore(), std::ref(windows), out);
    out << "\nMemory with all six list windows open, the measuring itself included: "
        << qRound(bench::ResidentMegabytes()) << " MB\n";
    return good ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words == QStringList{"--version"} || words == QStringList{"--help"}) {
        QTextStream(stdout) << (words[0] == "--help" ? kUsage : "katsudo-bench " KATSUDO_VERSION "\n");
        return 0;
    }
    const Arguments arguments = Read(words);
    if (!arguments.good) {
        QTextStream(stderr) << kUsage;
        return 2;
    }
    return BenchLists(arguments);
}
