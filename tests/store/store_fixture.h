#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <ostream>

#include "store/connection.h"
#include "store/create_store.h"
#include "store/postgres_dialect.h"
#include "store/postgres_link.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace store {

inline void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.number << ' ' << fault.description.toStdString();
}

/// One engine to run the storage tests on: how to make a fresh empty store in a folder, and how to name it.
struct Engine {
    const char* name;
    QString (*make)(const QString& folder);  ///< the connection string; empty on failure
    const char* begin;                       ///< starts a transaction that writes
};

inline QString MakeSqlite(const QString& folder) {
    Fault fault;
    const QString path = folder + QStringLiteral("/store.accdb");
    return CreateSqliteStore(path, fault)
               ? QStringLiteral("Provider=SQLite;User ID=;Password=;Data Source=%1;").arg(path)
               : QString();
}

/// The folder of the test server's socket; empty when none was started (scripts/test_server.sh).
inline QString TestServer() {
    return qEnvironmentVariable("KATSUDO_TEST_SERVER");
}

/// A new database on the test server, with the functions that LIKE needs; its administrator needs no password.
inline QString MakePostgres(const QString&) {
    static int count = 0;
    const QString name = QStringLiteral("store_%1_%2").arg(QCoreApplication::applicationPid()).arg(++count);
    PostgresLogin login{TestServer(), 0, QStringLiteral("postgres"), QStringLiteral("katsudo_admin"), {}};
    Fault fault;
    auto link = PostgresLink::Open(login, {}, fault);
    bool made = link && link->Run(QStringLiteral("CREATE DATABASE %1 TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' "
                                                 "LC_CTYPE 'C.UTF-8'")
                                      .arg(name),
                                  fault);
    login.database = name;
    link = made ? PostgresLink::Open(login, {}, fault) : nullptr;
    made = link != nullptr;
    for (const QString& function : FoldFunctions())
        made = made && link->Run(function, fault);
    EXPECT_TRUE(made) << fault.description.toStdString();
    return QStringLiteral("Provider=PostgreSQL;User ID=katsudo_admin;Password=;Data Source=%1;Initial Catalog=%2;")
        .arg(TestServer(), name);
}

/// The same file through SQLite's ODBC driver.
inline QString MakeSqliteOverOdbc(const QString& folder) {
    return MakeSqlite(folder).replace(QLatin1String("=SQLite"), QLatin1String("=ODBC:SQLite3"));
}

/// The same database through PostgreSQL's ODBC driver.
inline QString MakePostgresOverOdbc(const QString& folder) {
    return MakePostgres(folder).replace(QLatin1String("=PostgreSQL"), QLatin1String("=ODBC:PostgreSQL Unicode"));
}

inline const Engine kSqlite{"sqlite", MakeSqlite, "BEGIN IMMEDIATE"};
inline const Engine kPostgres{"postgresql", MakePostgres, "BEGIN"};
inline const Engine kSqliteOverOdbc{"sqlite_odbc", MakeSqliteOverOdbc, "BEGIN IMMEDIATE"};
inline const Engine kPostgresOverOdbc{"postgresql_odbc", MakePostgresOverOdbc, "BEGIN"};

/// Tests on every engine. That of a server is left out where none was started; "./test" starts one.
class OnEngine : public testing::TestWithParam<Engine> {
  protected:
    void SetUp() override {
        const bool onServer = GetParam().make == MakePostgres || GetParam().make == MakePostgresOverOdbc;
        if (onServer && TestServer().isEmpty()) GTEST_SKIP() << "no test server was started";
    }
};

/// A fresh store of an engine with one open connection.
class OpenStore {
  public:
    explicit OpenStore(const Engine& engine = kSqlite) : text_(engine.make(folder_.path())) {
        connection_ = Another();
        EXPECT_TRUE(connection_);
    }

    std::unique_ptr<Connection> Another(int patience = kPatience) const {
        Fault fault;
        auto connection = OpenConnection(text_, folder_.path(), fault, patience);
        EXPECT_TRUE(connection) << fault.description.toStdString();
        return connection;
    }

    void Do(const QString& sql) {
        Fault fault;
        EXPECT_TRUE(connection_->Execute(sql, fault)) << fault.description.toStdString();
    }

    /// The rows of a SELECT as "a,b;c,d"; Null is "-".
    QString Rows(const QString& sql) {
        Fault fault;
        const auto rows = connection_->Query(sql, fault);
        if (!rows) {
            return QStringLiteral("fault: ") + fault.description;
        }
        QStringList lines;
        for (; !rows->Eof(); rows->MoveNext()) {
            QStringList values;
            for (const QString& column : rows->Columns()) {
                values.append(rows->Value(column).value_or(QStringLiteral("-")));
            }
            lines.append(values.join(u','));
        }
        return lines.join(u';');
    }

    Connection& operator*() { return *connection_; }
    Connection* operator->() { return connection_.get(); }
    QString Folder() const { return folder_.path(); }
    QString Path() const { return folder_.path() + QStringLiteral("/store.accdb"); }

  private:
    QTemporaryDir folder_;
    QString text_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace store
