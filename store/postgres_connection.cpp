#include "store/postgres_connection.h"

#include <QRegularExpression>
#include <QVariant>
#include <algorithm>

#include "store/patience.h"
#include "store/postgres_dialect.h"
#include "store/postgres_search.h"
#include "store/qt_query.h"

namespace store {
namespace {

constexpr int kLongestStatement = 60'000;  // milliseconds

const QString kLockNotAvailable = QStringLiteral("55P03");

std::unique_ptr<PostgresLink> Connect(const PostgresLogin& login, int patience, int seconds, Fault& fault) {
    auto link = PostgresLink::Open(login, {}, fault, seconds);
    return link && link->Run(PostgresClientSettings(patience), fault) ? std::move(link) : nullptr;
}

// How many rows a SELECT gives, as the engine guesses before it looks.
std::optional<double> GuessRows(const PostgresLink& link, const QString& select, Fault& fault) {
    static const QRegularExpression rows(QStringLiteral("rows=(\\d+)"));
    QSqlQuery query = link.NewQuery();
    if (!PostgresLink::Start(query, QStringLiteral("EXPLAIN ") + select, fault)) return std::nullopt;
    const auto match = rows.match(query.next() ? query.value(0).toString() : QString());
    return match.hasMatch() ? match.captured(1).toDouble() : 0;
}

class PostgresConnection : public Connection {
  public:
    PostgresConnection(PostgresLogin login, std::unique_ptr<PostgresLink> link, int patience)
        : login_(std::move(login)), link_(std::move(link)), patience_(patience) {}

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        auto written = Prepare(sql, fault);
        if (!written) return nullptr;
        std::unique_ptr<Recordset> rows;
        if (ChooseWay(sql, *written, fault)) {
            QSqlQuery query = link_->NewQuery();
            if (PostgresLink::Start(query, LimitedTo(*written, mostRows), fault))
                rows = ReadRows(query, mostRows, fault);
        }
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

    bool MayWrite(const QString& table) override {
        Fault untold;
        if (closed_ || !link_) return false;
        QSqlQuery query = link_->NewQuery();
        const QString sql = QStringLiteral(
                                "SELECT current_setting('transaction_read_only') = 'off' AND"
                                " has_table_privilege('\"%1\"', 'INSERT') AND has_table_privilege('\"%1\"', 'DELETE')")
                                .arg(table);
        // A table that isn't there is told by the statements that miss it.
        return !PostgresLink::Start(query, sql, untold) || !query.next() || query.value(0).toBool();
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

    // Writes a search anew with what the database has for it. Returns false on a fault, and not because of a search
    // that can't be written so.
    bool ChooseWay(const QString& sql, QString& written, Fault& fault) {
        if (!sql.contains(QLatin1String("LIKE"), Qt::CaseInsensitive)) return true;
        if (!searchTables_) {
            QSqlQuery query = link_->NewQuery();
            if (!PostgresLink::Start(query, AskForSearchTables(), fault)) return false;
            searchTables_ = TakeSearchTables(query);
        }
        if (searchTables_->empty()) return true;
        const auto ways = WaysOf(sql, *searchTables_);
        const auto way = ways ? Quickest(*ways, [&](const QString& select) { return GuessRows(*link_, select, fault); })
                              : ToPostgres(sql, *searchTables_, fault);
        if (way) written = *way;
        return way.has_value();
    }

    // Who waited for the server in vain once shall not wait as long before every further statement.
    bool Reopen(Fault& fault) {
        link_ = Connect(login_, patience_, reachable_ ? kConnectSeconds : kImpatientConnectSeconds, fault);
        reachable_ = link_ != nullptr;
        searchTables_.reset();
        patient_ = true;
        return reachable_;
    }

    void Learn(bool done, Fault& fault) {
        const QString code = done ? QString() : CodeOf(fault);
        if (!done && link_->IsLost(code)) {
            fault.kind = FaultKind::Away;
            link_.reset();
            return;
        }
        // The same for a lock, until a statement gets through again.
        const bool wanted = done || code != kLockNotAvailable;
        if (wanted == patient_) return;
        patient_ = wanted;
        link_->WaitForLocks(patient_ ? patience_ : std::min(patience_, kImpatience));
    }

    PostgresLogin login_;
    std::unique_ptr<PostgresLink> link_;        // null when it was lost
    std::optional<SearchTables> searchTables_;  // of the link's database, once a search asked
    int patience_;                              // milliseconds
    bool patient_ = true;
    bool reachable_ = true;
    bool closed_ = false;
};

}  // namespace

// A search for a letter that every row has must not make the engine cut the texts of all rows into pieces one by one,
// which it would rather do than look them up in the index. Helpers for one statement take longer to start than a list
// may take. What a search reads is nearly always in the server's memory, where to look for each page beforehand costs
// as much as to read it.
QString PostgresClientSettings(int patience) {
    return PostgresLink::Settings({patience, kLongestStatement}) +
           QLatin1String(
               "; SET enable_seqscan = off; SET max_parallel_workers_per_gather = 0; "
               "SET effective_io_concurrency = 0");
}

std::unique_ptr<Connection> OpenPostgresConnection(const PostgresLogin& login, Fault& fault, int patience) {
    auto link = Connect(login, patience, kConnectSeconds, fault);
    if (!link) return nullptr;
    return std::make_unique<PostgresConnection>(login, std::move(link), patience);
}

}  // namespace store
