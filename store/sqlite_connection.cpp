#include "store/sqlite_connection.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "store/fault_kinds.h"
#include "store/patience.h"
#include "store/qt_query.h"
#include "store/sqlite_dialect.h"
#include "store/sqlite_file.h"

namespace store {
namespace {

constexpr int kBusy = 5;
// The engine's smallest page. It takes anything shorter for a new store.
constexpr qint64 kSmallestStore = 512;

class SqliteConnection : public Connection {
  public:
    SqliteConnection(std::unique_ptr<SqliteFile> file, QString path, int patience)
        : file_(std::move(file)), path_(std::move(path)), patience_(patience) {}

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) {
            return nullptr;
        }
        QSqlQuery query = file_->NewQuery();
        query.setForwardOnly(true);
        auto rows = StartQuery(query, *rewritten, fault) ? ReadRows(query, mostRows, fault) : nullptr;
        query.finish();
        if (!rows) TellKind(fault);
        KeepPatience(rows != nullptr, fault);
        return rows;
    }

    bool Execute(const QString& sql, Fault& fault) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) return false;
        const bool done = file_->Run(*rewritten, fault);
        if (!done) TellKind(fault);
        KeepPatience(done, fault);
        return done;
    }

    void Close() override { file_.reset(); }

  private:
    std::optional<QString> Prepare(const QString& sql, Fault& fault) const {
        if (!file_) {
            fault = {0, QStringLiteral("データベースの接続は閉じています。")};
            return std::nullopt;
        }
        return ToSqlite(sql, fault);
    }

    void TellKind(Fault& fault) const {
        fault.ofFile = true;
        fault.kind = KindOfSqlite(fault.number, fault.description);
        if (IsSqliteIoFault(fault.number) && file_->DiskWasFull()) fault.kind = FaultKind::DiskFull;
        // With the file, or its share, gone the engine complains of whatever it tried next.
        if (fault.number != 0 && !QFileInfo::exists(path_)) fault.kind = FaultKind::Away;
    }

    // Who waited in vain for a lock once has waited enough: until a statement gets through again the next ones give up
    // soon, so that a store that stays locked doesn't hold the user for twenty seconds a statement.
    void KeepPatience(bool done, const Fault& fault) {
        const bool wanted = done || (fault.number & 0xff) != kBusy;
        if (wanted == patient_) return;
        patient_ = wanted;
        Fault unused;
        const int wait = patient_ ? patience_ : std::min(patience_, kImpatience);
        file_->Run(QStringLiteral("PRAGMA busy_timeout = %1").arg(wait), unused);
    }

    std::unique_ptr<SqliteFile> file_;
    QString path_;
    int patience_;  // milliseconds, as the file is opened with
    bool patient_ = true;
};

Fault FileFault(const QString& path, const QString& what, const Fault& engine = {}) {
    const FaultKind kind = QFileInfo::exists(path) ? KindOfSqlite(engine.number, engine.description) : FaultKind::Away;
    return {engine.number, QStringLiteral("%1: %2").arg(what, QDir::toNativeSeparators(path)), kind, true};
}

bool LooksLikeFile(const QString& path, Fault& fault) {
    const QFileInfo info(path);
    if (!info.exists()) {
        fault = FileFault(path, QStringLiteral("データベースファイルがありません"));
    } else if (!info.isFile()) {
        fault = FileFault(path, QStringLiteral("データベースファイルではありません"));
    } else if (info.size() == 0) {
        fault = FileFault(path, QStringLiteral("データベースファイルが空です"));
    } else if (info.size() < kSmallestStore) {
        fault = FileFault(path, QStringLiteral("データベースファイルが壊れています"));
    } else {
        return true;
    }
    return false;
}

}  // namespace

std::unique_ptr<Connection> OpenSqliteConnection(const QString& path, Fault& fault, int patience) {
    if (!LooksLikeFile(path, fault)) {
        return nullptr;
    }
    Fault engine;
    auto file = SqliteFile::Open(path, SqliteFile::Mode::Existing, engine, patience);
    // The engine opens any file; only a look inside tells that it is a store. A store that stays locked all the time is
    // one nevertheless: its statements will say so themselves.
    const bool good = file && (file->Run(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"), engine) ||
                               (engine.number & 0xff) == kBusy);
    if (!good) {
        fault =
            FileFault(path, QStringLiteral("データベースファイルを開けません (%1)").arg(engine.description), engine);
        return nullptr;
    }
    return std::make_unique<SqliteConnection>(std::move(file), path, patience);
}

}  // namespace store
