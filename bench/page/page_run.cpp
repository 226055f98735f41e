#include "bench/page/page_run.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSaveFile>
#include <QTime>

#include "bench/page/page_writer.h"

namespace bench {
namespace {

/// Carries an order out.
class PageRun {
  public:
    PageRun(const PageOrder& order, QTextStream& log) : order_(order), log_(log) {}

    bool Run() {
        if (!QDir().mkpath(Folder())) return Tell(Folder() + " can't be made.");
        bool good = true;
        for (const int parties : order_.sizes)
            for (const bool onServer : {false, true})
                if (!onServer || !order_.making.server.isEmpty()) good = Measure(CompanyOf(parties, onServer)) && good;
        return Write() && good;
    }

  private:
    QString Folder() const { return order_.work + "/results"; }
    QString FileOf(const Company& company, const QString& measurement) const {
        return Folder() + "/" + company.Name() + "-" + measurement + ".json";
    }

    Company CompanyOf(int parties, bool onServer) const {
        Company company{onServer, parties, order_.slotCount * parties / order_.sizes.back(), {}};
        company.tree.root = order_.work + "/" + company.Name();
        return company;
    }

    /// In the order in which they are done: the last one leaves slots behind.
    QStringList Measurements(const Company& company) const {
        QStringList names{"lists", "documents", "client"};
        if (!company.onServer && company.parties == order_.sizes.back()) names << "indexes";
        if (company.onServer) names << "crowd";
        return names;
    }

    bool Tell(const QString& problem) {
        log_ << problem << '\n' << Qt::flush;
        return false;
    }

    bool Measure(const Company& company) {
        bool good = true;
        for (const QString& measurement : Measurements(company)) {
            const QString file = FileOf(company, measurement);
            if (ReadResults(file)) continue;
            const QString problem = MakeCompany(company, order_.making, FileOf(company, "company"), log_);
            if (!problem.isEmpty()) return Tell(problem);
            good = RunOne(company, measurement, file) && good;
        }
        return good;
    }

    // A process of its own, so that none has the memory and the statements of another, nor ends with it.
    bool RunOne(const Company& company, const QString& measurement, const QString& file) {
        log_ << QTime::currentTime().toString() << ' ' << company.Name() << ": " << measurement << " …\n" << Qt::flush;
        QStringList words{measurement, "--root", company.tree.root, "--results", file};
        if (company.onServer && (measurement == "documents" || measurement == "client"))
            words << "--admin-user" << order_.making.adminUser;
        if (measurement == "crowd")
            words << "--clients" << QString::number(order_.making.clients) << "--seconds"
                  << QString::number(order_.seconds) << "--own-stores"
                  << "yes";
        else if (order_.quick)
            words << "--quick"
                  << "yes";
        QProcess process;
        // What it says beside its results, should it end without them.
        const QString said = QString(file).replace(".json", ".log");
        process.setStandardOutputFile(said);
        process.setStandardErrorFile(said, QIODevice::Append);
        process.start(QCoreApplication::applicationFilePath(), words);
        process.waitForFinished(-1);
        return ReadResults(file) || Tell("It ended without results: " + said);
    }

    ResultsBySize Gathered(bool onServer) const {
        ResultsBySize gathered;
        for (const int parties : order_.sizes) {
            const Company company = CompanyOf(parties, onServer);
            for (const QString& measurement : QStringList{"company"} + Measurements(company))
                if (const auto results = ReadResults(FileOf(company, measurement))) Join(gathered[parties], *results);
        }
        return gathered;
    }
    static void Join(Results& all, const Results& more) {
        all.when = more.when;
        all.machine = more.machine;
        all.load = std::max(all.load, more.load);
        all.tables.insert(all.tables.end(), more.tables.begin(), more.tables.end());
        all.faults += more.faults;
    }

    bool Write() {
        QFile text(order_.text);
        if (!text.open(QIODevice::ReadOnly)) return Tell(order_.text + " can't be read.");
        QString fault;
        QString page = WritePage(QString::fromUtf8(text.readAll()), {Gathered(false), Gathered(true)}, fault);
        // Where it was measured is of no use to a reader.
        page.replace(order_.work, QStringLiteral("DIR"));
        QSaveFile out(order_.out);
        if (!out.open(QIODevice::WriteOnly) || out.write(page.toUtf8()) < 0 || !out.commit())
            return Tell(order_.out + " can't be written.");
        return fault.isEmpty() || Tell(fault);
    }

    const PageOrder& order_;
    QTextStream& log_;
};

}  // namespace

bool RunPage(const PageOrder& order, QTextStream& log) {
    return PageRun(order, log).Run();
}

}  // namespace bench
