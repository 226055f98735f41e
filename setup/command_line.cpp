#include "setup/command_line.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTextStream>

#include "platform/clock.h"
#include "setup/backup.h"
#include "setup/check_tree.h"
#include "setup/copy_tree.h"
#include "setup/create_tree.h"
#include "setup/pin_store.h"
#include "setup/restore.h"
#include "setup/stand_ins.h"

namespace setup {
namespace {

constexpr const char* kUsage =
    "Usage: katsudo-setup create --root DIR (--empty | --demo) [options]\n"
    "       katsudo-setup pin --root DIR (--staff CODE | --privilege [--site CODE]) --pin TEXT [--admin-user NAME]\n"
    "       katsudo-setup check --root DIR\n"
    "       katsudo-setup stand-ins --root DIR\n"
    "       katsudo-setup backup --root DIR --to FOLDER\n"
    "       katsudo-setup restore --root DIR --from FOLDER\n"
    "       katsudo-setup copy --from DIR --to DIR [--admin-user NAME] [--progress]\n"
    "       katsudo-setup --help | --version\n"
    "\n"
    "create  makes an installation: its folders, the environment and the main database.\n"
    "  --empty          only the rows with which the client starts\n"
    "  --demo           a made-up company with masters, documents and activity\n"
    "  --staff N        staff members of the demo (1 to 99999; 40)\n"
    "  --parties N      parties over the five kinds (0 to 1900000; 2000)\n"
    "  --slots N        activity slots (0 to 100000000; three months of ordinary days)\n"
    "  --documents N    of each of the six kinds (0 to 10000000; 300)\n"
    "  --seed S         another made-up company for each number (1)\n"
    "  --today YYYYMMDD the last day of the demo's activity (today)\n"
    "  --force          replace the databases of an installation that is there\n"
    "  --progress       show the progress even when standard error is no terminal\n"
    "  --engine postgresql  the main database on a server, in place of a file of the installation:\n"
    "  --server S       its name or address, or the folder of its socket, with :PORT where that isn't 5432\n"
    "  --database D     the database to be made (with --force: to be replaced)\n"
    "  --admin-user A --admin-password P  who makes it; without P the environment's PGPASSWORD or ~/.pgpass counts\n"
    "  --user U --password P  the clients' login (the database's name with _client; a password nobody knows)\n"
    "pin     stores the PIN of a staff member, or the privilege PIN: of one site, or of the company and all sites.\n"
    "stand-ins  puts katsudo-sibling into the installation in place of every program that the client starts; a demo\n"
    "        has it from the start.\n"
    "backup  copies stores, PIN key and documents of an installation into a new folder, while clients run.\n"
    "restore puts a backup in their place; what is replaced stays beside it.\n"
    "copy    carries a company into an installation that was made empty, on whatever engines, and compares the two;\n"
    "        an interrupted copy is run again. --admin-user and --admin-password as for create, of the target's "
    "server.\n"
    "check   tells what is wrong with an installation; the exit code is 0 when nothing is. Attached documents whose "
    "slot\n"
    "        is gone, and copies that no row names, are told beside it.\n";

/// A command line taken apart. `error` tells why that failed.
struct Arguments {
    QString command;
    QHash<QString, QString> values;
    QString error;

    bool Has(const QString& name) const { return values.contains(name); }
    std::optional<QString> Value(const QString& name) const {
        return Has(name) ? std::optional(values.value(name)) : std::nullopt;
    }
};

struct CommandOptions {
    QStringList flags;
    QStringList valued;
};

const QHash<QString, CommandOptions>& Commands() {
    static const QHash<QString, CommandOptions> commands = {
        {"create",
         {{"--empty", "--demo", "--force", "--progress"},
          {"--root", "--staff", "--parties", "--slots", "--documents", "--seed", "--today", "--engine", "--server",
           "--database", "--admin-user", "--admin-password", "--user", "--password"}}},
        {"pin", {{"--privilege"}, {"--root", "--staff", "--site", "--pin", "--admin-user", "--admin-password"}}},
        {"check", {{}, {"--root"}}},
        {"stand-ins", {{}, {"--root"}}},
        {"backup", {{}, {"--root", "--to"}}},
        {"restore", {{}, {"--root", "--from"}}},
        {"copy", {{"--progress"}, {"--from", "--to", "--admin-user", "--admin-password"}}}};
    return commands;
}

Arguments Parse(const QStringList& words) {
    Arguments arguments;
    arguments.command = words.value(0);
    if (!Commands().contains(arguments.command)) {
        arguments.error = words.isEmpty() ? "A command is missing." : "Unknown command: " + arguments.command;
        return arguments;
    }
    const CommandOptions options = Commands().value(arguments.command);
    for (qsizetype i = 1; i < words.size() && arguments.error.isEmpty(); ++i) {
        const QString& word = words[i];
        if (options.flags.contains(word))
            arguments.values.insert(word, "");
        else if (!options.valued.contains(word))
            arguments.error = "Unknown option: " + word;
        else if (++i >= words.size())
            arguments.error = word + " needs a value.";
        else
            arguments.values.insert(word, words[i]);
    }
    for (const QString& tree : arguments.command == "copy" ? QStringList{"--from", "--to"} : QStringList{"--root"})
        if (arguments.error.isEmpty() && arguments.values.value(tree).isEmpty())
            arguments.error = tree + " is missing.";
    return arguments;
}

void Say(FILE* file, const QString& text) {
    QTextStream(file) << text;
}

// Reads a whole number within bounds; notes an error otherwise. An option that isn't given leaves the value.
template <typename Number>
void TakeNumber(Arguments& arguments, const QString& name, qint64 least, qint64 most, Number& number) {
    const auto text = arguments.Value(name);
    if (!text) return;
    bool good = false;
    const qint64 value = text->toLongLong(&good);
    if (!good || value < least || value > most)
        arguments.error = QString("%1 takes a number from %2 to %3.").arg(name).arg(least).arg(most);
    else
        number = Number(value);
}

DemoSizes TakeSizes(Arguments& arguments) {
    DemoSizes sizes;
    sizes.today = platform::SystemClock().Now().date();
    TakeNumber(arguments, "--staff", 1, 99'999, sizes.staff);
    TakeNumber(arguments, "--parties", 0, 1'900'000, sizes.parties);
    TakeNumber(arguments, "--slots", 0, 100'000'000, sizes.activities);
    TakeNumber(arguments, "--documents", 0, 10'000'000, sizes.documents);
    TakeNumber(arguments, "--seed", 0, std::numeric_limits<qint64>::max(), sizes.seed);
    if (const auto today = arguments.Value("--today")) {
        sizes.today = QDate::fromString(*today, "yyyyMMdd");
        if (!sizes.today.isValid()) arguments.error = "--today takes a date as YYYYMMDD.";
    }
    return sizes;
}

// The server that the options name; nothing for a file. Notes an error when they don't fit together.
std::optional<ServerOrder> TakeServerOrder(Arguments& arguments) {
    const QString engine = arguments.values.value("--engine", "sqlite");
    const bool onServer = engine == "postgresql";
    if (!onServer && engine != "sqlite") arguments.error = "--engine takes sqlite or postgresql.";
    for (const QString option : {"--server", "--database", "--admin-user"})
        if (arguments.Has(option) != onServer)
            arguments.error = option + (onServer ? " is missing." : " goes with --engine postgresql.");
    if (!onServer) return std::nullopt;
    ServerOrder order;
    order.server = arguments.values.value("--server");
    order.database = arguments.values.value("--database");
    order.adminUser = arguments.values.value("--admin-user");
    order.adminPassword = arguments.values.value("--admin-password");
    order.user = arguments.values.value("--user", order.database + "_client");
    order.password = arguments.Has("--password") ? arguments.values.value("--password") : MakePassword();
    order.force = arguments.Has("--force");
    if (arguments.error.isEmpty()) arguments.error = FaultOfOrder(order);
    return order;
}

std::optional<ServerAdmin> TakeAdmin(const Arguments& arguments) {
    if (!arguments.Has("--admin-user")) return std::nullopt;
    return ServerAdmin{arguments.values.value("--admin-user"), arguments.values.value("--admin-password")};
}

void ShowProgress(const QString& what, qint64 done, qint64 total) {
    if (total == 0) return Say(stderr, what + "\n");
    if (total < 0) return Say(stderr, QString("\r%1 %2\x1b[K").arg(what).arg(done));
    constexpr int kWidth = 30;
    const int filled = total > 0 ? int(done * kWidth / total) : 0;
    const QString bar = QString(filled, u'#') + QString(kWidth - filled, u'.');
    Say(stderr, QString("\r%1 [%2] %3/%4").arg(what, -10).arg(bar).arg(done).arg(total));
    if (done >= total) Say(stderr, "\n");
}

int UsageError(const QString& error) {
    Say(stderr, error + "\n\n" + kUsage);
    return 2;
}

// 0 for no problem, else the problem goes to standard error.
int Finish(const QString& problem) {
    if (problem.isEmpty()) return 0;
    Say(stderr, problem + "\n");
    return 1;
}

QString StandIn(const QString& programFolder) {
    return programFolder + "/katsudo-sibling";
}

int Create(Arguments& arguments, const Tree& tree, const QString& programFolder) {
    CreateOrder order;
    order.tree = tree;
    order.force = arguments.Has("--force");
    order.clientFile = programFolder + "/katsudo-techo";
    // It lies in the program itself.
    order.manualSource = ":/manual";
    if (arguments.Has("--empty") == arguments.Has("--demo")) return UsageError("create takes --empty or --demo.");
    const DemoSizes sizes = TakeSizes(arguments);
    order.server = TakeServerOrder(arguments);
    if (!arguments.error.isEmpty()) return UsageError(arguments.error);
    if (arguments.Has("--demo")) order.demo = sizes;
    if (arguments.Has("--progress") || isatty(STDERR_FILENO)) order.progress = ShowProgress;
    int code = Finish(CreateTree(order));
    const QString standIn = StandIn(programFolder);
    if (code == 0 && order.demo && QFile::exists(standIn)) code = Finish(InstallStandIns(tree, standIn));
    if (code == 0) Say(stdout, tree.root + " is ready.\n");
    return code;
}

int SetPin(const Arguments& arguments, const Tree& tree) {
    if (arguments.Has("--staff") == arguments.Has("--privilege"))
        return UsageError("pin takes --staff or --privilege.");
    if (arguments.Has("--site") && !arguments.Has("--privilege")) return UsageError("--site goes with --privilege.");
    if (!arguments.Has("--pin")) return UsageError("--pin is missing.");
    const PinOrder order{arguments.Value("--staff"), arguments.Value("--site"), *arguments.Value("--pin"),
                         TakeAdmin(arguments)};
    const int code = Finish(StorePin(tree, order));
    const QString warning = PinWarning(order.pin);
    if (code == 0 && !warning.isEmpty()) Say(stderr, warning + "\n");
    return code;
}

int Check(const Tree& tree) {
    const auto [wrong, unfinished, stranded] = CheckTree(tree);
    for (const QString& sentence : wrong)
        Say(stdout, sentence + "\n");
    for (const QString& sentence : unfinished)
        Say(stdout, "Still to be entered: " + sentence + "\n");
    for (const QString& sentence : stranded)
        Say(stdout, "Papers: " + sentence + "\n");
    if (wrong.isEmpty()) Say(stdout, "Nothing is wrong with " + tree.root + ".\n");
    return wrong.isEmpty() ? 0 : 1;
}

int MakeBackup(const Arguments& arguments, const Tree& tree) {
    if (arguments.values.value("--to").isEmpty()) return UsageError("--to is missing.");
    const QString folder = QDir(arguments.values.value("--to")).absolutePath();
    const int code = Finish(BackupTree(tree, folder));
    if (code == 0) Say(stdout, folder + " holds a backup of " + tree.root + ".\n");
    return code;
}

int RestoreBackup(const Arguments& arguments, const Tree& tree) {
    if (arguments.values.value("--from").isEmpty()) return UsageError("--from is missing.");
    const auto [problem, kept] = RestoreTree(tree, QDir(arguments.values.value("--from")).absolutePath());
    for (const QString& file : kept)
        Say(stdout, "Kept: " + file + "\n");
    const int code = Finish(problem);
    if (code == 0) Say(stdout, tree.root + " is as it was backed up.\n");
    return code;
}

int Copy(const Arguments& arguments) {
    CopyOrder order;
    order.from.root = QDir(arguments.values.value("--from")).absolutePath();
    order.to.root = QDir(arguments.values.value("--to")).absolutePath();
    order.admin = TakeAdmin(arguments);
    if (arguments.Has("--progress") || isatty(STDERR_FILENO)) order.progress = ShowProgress;
    const int code = Finish(CopyTree(order));
    if (code == 0) Say(stdout, order.to.root + " holds the company of " + order.from.root + ".\n");
    return code;
}

}  // namespace

int RunSetup(const QStringList& words, const QString& programFolder) {
    if (words.contains("--help")) {
        Say(stdout, kUsage);
        return 0;
    }
    Arguments arguments = Parse(words);
    if (!arguments.error.isEmpty()) return UsageError(arguments.error);
    if (arguments.command == "copy") return Copy(arguments);
    const Tree tree{QDir(arguments.values.value("--root")).absolutePath()};
    if (arguments.command == "create") return Create(arguments, tree, programFolder);
    if (arguments.command == "stand-ins") return Finish(InstallStandIns(tree, StandIn(programFolder)));
    if (arguments.command == "backup") return MakeBackup(arguments, tree);
    if (arguments.command == "restore") return RestoreBackup(arguments, tree);
    return arguments.command == "pin" ? SetPin(arguments, tree) : Check(tree);
}

}  // namespace setup
