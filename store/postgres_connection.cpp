#include "store/postgres_connection.h"

#include <QSqlRecord>
#include <QVariant>
#include <algorithm>

#include "store/patience.h"
#include "store/postgres_dialect.h"

namespace store {
namespace {

constexpr int kLongestStatement = 60'000;  // milliseconds

const QString kLockNotAvailable = QStringLiteral("55P03");

std::unique_ptr<PostgresLink> Connect(const PostgresLogin& login, int patience, int seconds, Fault& fault) {
    auto link = PostgresLink::Open(login, {}, fault, seconds);
    return link && link->Run(PostgresClientSettings(patience), fault) ? std::move(link) : nullptr;
}

class PostgresConnection : public Connection {
  public:
    PostgresConnection(PostgresLogin login, std::unique_ptr<PostgresLink> link, int patience)
        : login_(std::move(login)), link_(std::move(link)), patience_(patience) {}

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        const auto written = Prepare(sql, fault);
        if (!written) return nullptr;
        QSqlQuery query = link_->NewQuery();
        std::unique_ptr<Recordset> rows;
        if (PostgresLink::Start(query, LimitedTo(*written, mostRows), fault)) rows = ReadRows(query, mostRows);
        query = QSqlQuery();
        Learn(rows != nullptr, fault);
        return rows;
    }

    bool Execute(const QString& sql, Fault& fault) override {
        const auto written = Prepare(sql, fault);
        if (!written) return false;
        const bool done = link_->Run(*written, fault);
        Learn(done, fault);
        return done;
    }

    void Close() override {
        closed_ = true;
        link_.reset();
    }

  private:
    // The statement as the engine takes it, once there is a link to run it on.
    std::optional<QString> Prepare(const QString& sql, Fault& fault) {
        if (closed_) {
            fault = {0, QStringLiteral("データベースの接続は閉じています。")};
            return std::nullopt;
        }
        const auto written = ToPostgres(sql, fault);
        return written && (link_ || Reopen(fault)) ? written : std::nullopt;
    }

    // Who waited for the server in vain once shall not wait as long before every further statement.
    bool Reopen(Fault& fault) {
        link_ = Connect(login_, patience_, reachable_ ? kConnectSeconds : kImpatientConnectSeconds, fault);
        reachable_ = link_ != nullptr;
        patient_ = true;
        return reachable_;
    }

    void Learn(bool done, const Fault& fault) {
        const QString code = done ? QString() : CodeOf(fault);
        if (!done && link_->IsLost(code)) {
            link_.reset();
            return;
        }
        // The same for a lock, until a statement gets through again.
        const bool wanted = done || code != kLockNotAvailable;
        if (wanted == patient_) return;
        patient_ = wanted;
        link_->WaitForLocks(patient_ ? patience_ : std::min(patience_, kImpatience));
    }

    static std::unique_ptr<Recordset> ReadRows(QSqlQuery& query, int mostRows) {
        QStringList columns;
        const QSqlRecord record = query.record();
        for (int i = 0; i < record.count(); ++i)
            columns.append(record.fieldName(i));
        std::vector<Recordset::Row> rows;
        while (static_cast<int>(rows.size()) < mostRows && query.next()) {
            Recordset::Row& row = rows.emplace_back();
            for (int i = 0; i < record.count(); ++i)
                row.push_back(query.isNull(i) ? std::nullopt : std::optional(query.value(i).toString()));
        }
        return std::make_unique<Recordset>(std::move(columns), std::move(rows));
    }

    PostgresLogin login_;
    std::unique_ptr<PostgresLink> link_;  // null when it was lost
    int patience_;                        // milliseconds
    bool patient_ = true;
    bool reachable_ = true;
    bool closed_ = false;
};

}  // namespace

// A search for a letter that every row has must not make the engine cut the texts of all rows into pieces one by one,
// which it would rather do than look them up in the index.
QString PostgresClientSettings(int patience) {
    return PostgresLink::Settings({patience, kLongestStatement}) + QLatin1String("; SET enable_seqscan = off");
}

std::unique_ptr<Connection> OpenPostgresConnection(const PostgresLogin& login, Fault& fault, int patience) {
    auto link = Connect(login, patience, kConnectSeconds, fault);
    if (!link) return nullptr;
    return std::make_unique<PostgresConnection>(login, std::move(link), patience);
}

}  // namespace store
