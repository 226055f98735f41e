#include "bench/page/companies.h"

#include <QFileInfo>
#include <QTime>

#include "bench/bare_engine.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

const QDate kToday(2026, 4, 1);
constexpr int kLeastStaff = 60;

QString Now() {
    return QTime::currentTime().toString() + " ";
}

setup::CreateOrder OrderOf(const Company& company, const Making& making, QTextStream& log) {
    setup::CreateOrder order;
    order.tree = company.tree;
    order.force = true;
    order.demo.emplace();
    order.demo->parties = order.demo->documents = company.parties;
    order.demo->activities = company.slotCount;
    // Some of them have left.
    order.demo->staff = std::max(kLeastStaff, making.clients * 5 / 4);
    order.demo->today = kToday;
    order.progress = [&log, stage = QString()](const QString& what, qint64, qint64) mutable {
        if (std::exchange(stage, what) != what) log << Now() << what << " …\n" << Qt::flush;
    };
    if (!company.onServer) return order;
    order.server.emplace();
    order.server->server = making.server;
    order.server->adminUser = making.adminUser;
    order.server->database = QString("katsudo_bench_%1").arg(company.parties);
    order.server->user = order.server->database + "_client";
    order.server->password = setup::MakePassword();
    order.server->force = true;
    return order;
}

double MegabytesOf(const Company& company) {
    if (!company.onServer) return double(QFileInfo(company.tree.MainStore()).size()) / 1e6;
    const auto server = BareEngine::Open(MainPlace(company.tree, {}));
    return server ? server->Value("SELECT pg_database_size(current_database())").toDouble() / 1e6 : 0;
}

Results SizesOf(const Company& company, const setup::DemoSizes& sizes, double milliseconds, double load) {
    const auto row = [](const QString& what, double number) { return Row{{what}, {number}}; };
    Results results;
    results.Add({table::kCompany,
                 {"What"},
                 {kProgram},
                 {row("parties", sizes.parties), row("documents of each kind", sizes.documents),
                  row("slots", double(sizes.activities)), row("staff members", sizes.staff),
                  row("main database, MB", MegabytesOf(company)), row("made in, s", milliseconds / 1000)}});
    NoteMachine(results, EngineInWords(MainPlace(company.tree, {})), load);
    return results;
}

}  // namespace

QString Company::Name() const {
    return QString("%1-%2").arg(onServer ? "server" : "file").arg(parties);
}

QString MakeCompany(const Company& company, const Making& making, const QString& results, QTextStream& log) {
    if (setup::OpenStores(company.tree).main) return {};
    log << Now() << "making " << company.tree.root << "\n" << Qt::flush;
    const setup::CreateOrder order = OrderOf(company, making, log);
    QString problem;
    const double load = MachineLoad();
    const double time = Milliseconds([&] { problem = setup::CreateTree(order); });
    if (problem.isEmpty() && !WriteResults(SizesOf(company, *order.demo, time, load), results))
        problem = results + " can't be written.";
    return problem;
}

}  // namespace bench
