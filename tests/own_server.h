#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>

#include "store/postgres_link.h"

/// A PostgreSQL server of a test's own, which may be taken down. It goes with this object, or with a test that is
/// killed.
class OwnServer {
  public:
    /// Starts it with the options of scripts/test_server.sh. No server program, and this is not Running().
    explicit OwnServer(const QStringList& options = {}) {
        static int count = 0;
        folder_ = QString("%1/katsudo-own-%2-%3").arg(QDir::tempPath()).arg(getpid()).arg(++count);
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(KATSUDO_SERVER_SCRIPT, QStringList{"serve", folder_} + options);
        while (!process_.canReadLine() && process_.waitForReadyRead(60'000)) {
        }
        place_ = QString::fromUtf8(process_.readLine()).trimmed();
        if (place_.isEmpty()) process_.waitForFinished();
        EXPECT_TRUE(Running() || process_.exitCode() == kNoServer);
    }
    ~OwnServer() {
        process_.closeWriteChannel();
        process_.waitForFinished();
    }

    bool Running() const { return !place_.isEmpty(); }
    /// The folder of its socket, with ":port" where it has one.
    const QString& Place() const { return place_; }
    /// The same server by TCP under a host's name; only with the option "network".
    QString At(const QString& host) const { return host + place_.mid(place_.lastIndexOf(u':')); }
    QString File(const QString& name) const { return place_.section(u':', 0, 0) + "/" + name; }

    /// Ends it as a crash would, and starts it again.
    void Down() const { Script("down"); }
    void Up() const { Script("up"); }

    /// Runs a statement of its own as its administrator.
    void Do(const QString& sql, const QString& database = "postgres") const {
        store::Fault fault;
        const auto link = Open(database, fault);
        EXPECT_TRUE(link && link->Run(sql, fault)) << fault.description.toStdString();
    }

    /// The first value of a SELECT of its own; what went wrong otherwise.
    QString Ask(const QString& sql, const QString& database = "postgres") const {
        store::Fault fault;
        const auto link = Open(database, fault);
        if (!link) return fault.description;
        QSqlQuery query = link->NewQuery();
        return store::PostgresLink::Start(query, sql, fault) && query.next() ? query.value(0).toString()
                                                                             : fault.description;
    }

    /// False where nothing may be mounted, and the option "small" has no effect.
    bool HasSmallDisk() const {
        return Ask("SELECT count(*) FROM pg_tablespace WHERE spcname = 'katsudo_small'") == "1";
    }
    /// Fills the small disk to its last page with rows of this database, and takes them away again.
    void FillSmallDisk(const QString& database) const {
        Do("CREATE TABLE filler (a TEXT) TABLESPACE katsudo_small", database);
        for (const int rows : {1000, 30, 1})
            while (Ask(QString("INSERT INTO filler SELECT repeat('x', 7000) FROM generate_series(1, %1)").arg(rows),
                       database)
                       .isEmpty()) {
            }
    }
    void FreeSmallDisk(const QString& database) const { Do("DROP TABLE filler", database); }

  private:
    static constexpr int kNoServer = 3;

    std::unique_ptr<store::PostgresLink> Open(const QString& database, store::Fault& fault) const {
        store::PostgresLogin login;
        store::TakeServer(place_, login);
        login.database = database;
        login.user = "katsudo_admin";
        return store::PostgresLink::Open(login, {}, fault);
    }

    void Script(const QString& command) const {
        EXPECT_EQ(QProcess::execute(KATSUDO_SERVER_SCRIPT, {command, folder_}), 0) << command.toStdString();
    }

    QString folder_, place_;
    QProcess process_;
};
