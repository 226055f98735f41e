#include "store/sqlite_connection.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "platform/files.h"
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

// An open store, and which file it is.
struct StoreFile {
    std::unique_ptr<SqliteFile> file;
    std::optional<platform::FileIdentity> identity;
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

// Without a file on a fault.
StoreFile OpenStoreFile(const QString& path, Fault& fault, int patience) {
    if (!LooksLikeFile(path, fault)) {
        return {};
    }
    // Before the file is opened: one that takes its place just then is another one at the next look.
    const auto identity = platform::IdentityOf(path);
    Fault engine;
    auto file = SqliteFile::Open(path, SqliteFile::Mode::Existing, engine, patience);
    // The engine opens any file; only a look inside tells that it is a store. A store that stays locked all the time is
    // one nevertheless: its statements will say so themselves.
    const bool good = file && (file->Run(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"), engine) ||
                               (engine.number & 0xff) == kBusy);
    if (!good) {
        fault =
            FileFault(path, QStringLiteral("データベースファイルを開けません (%1)").arg(engine.description), engine);
        return {};
    }
    return {std::move(file), identity};
}

class SqliteConnection : public Connection {
  public:
    SqliteConnection(QString path, StoreFile store, int patience)
        : path_(std::move(path)), store_(std::move(store)), patience_(patience) {}

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) {
            return nullptr;
        }
        QSqlQuery query = store_.file->NewQuery();
        query.setForwardOnly(true);
        auto rows = StartQuery(query, *rewritten, fault) ? ReadRows(query, mostRows, fault) : nullptr;
        query.finish();
        if (!rows) TellKind(fault);
        KeepPatience(rows != nullptr, fault);
        return rows;
    }

    bool Execute(const QString& sql, Fault& fault) override {
        const auto rewritten = Prepare(sql, fault);
        const bool done = rewritten && MakeLasting(fault) && store_.file->Run(*rewritten, fault);
        if (!rewritten) return false;
        if (!done) TellKind(fault);
        KeepPatience(done, fault);
        return done;
    }

    bool MayWrite(const QString& /*table*/) override {
        // The journal of a save lies beside the store.
        const QFileInfo store(path_);
        return store.isWritable() && QFileInfo(store.absolutePath()).isWritable();
    }

    void Close() override { store_.file.reset(); }

  private:
    std::optional<QString> Prepare(const QString& sql, Fault& fault) {
        if (!store_.file) {
            fault = {0, QStringLiteral("データベースの接続は閉じています。")};
            return std::nullopt;
        }
        return FollowStore(fault) ? ToSqlite(sql, fault) : std::nullopt;
    }

    void TellKind(Fault& fault) const {
        fault.ofFile = true;
        fault.kind = KindOfSqlite(fault.number, fault.description);
        if (IsSqliteIoFault(fault.number) && store_.file->DiskWasFull()) fault.kind = FaultKind::DiskFull;
        // With the file, or its share, gone the engine complains of whatever it tried next.
        if (fault.number != 0 && !QFileInfo::exists(path_)) fault.kind = FaultKind::Away;
    }

    // A store that another one was put in the place of would go on being read and written here, and whatever was saved
    // would go with it. The file that is held open keeps its number from being given to another one.
    bool FollowStore(Fault& fault) {
        const auto now = platform::IdentityOf(path_);
        if (now && now == store_.identity) return true;
        StoreFile anew = OpenStoreFile(path_, fault, patience_);
        if (!anew.file) return false;
        store_ = std::move(anew);
        patient_ = true;
        lasting_ = false;
        return true;
    }

    // What was acknowledged outlives a power cut: the folder is synced behind the journal's removal too. It is asked
    // for before the first write and not on opening, when it would wait for another process's lock once more.
    bool MakeLasting(Fault& fault) {
        lasting_ = lasting_ || store_.file->Run(QStringLiteral("PRAGMA synchronous = EXTRA"), fault);
        return lasting_;
    }

    // Who waited in vain for a lock once has waited enough: until a statement gets through again the next ones give up
    // soon, so that a store that stays locked doesn't hold the user for twenty seconds a statement.
    void KeepPatience(bool done, const Fault& fault) {
        const bool wanted = done || (fault.number & 0xff) != kBusy;
        if (wanted == patient_) return;
        patient_ = wanted;
        Fault unused;
        const int wait = patient_ ? patience_ : std::min(patience_, kImpatience);
        store_.file->Run(QStringLiteral("PRAGMA busy_timeout = %1").arg(wait), unused);
    }

    QString path_;
    StoreFile store_;
    int patience_;  // milliseconds, as the file is opened with
    bool patient_ = true;
    bool lasting_ = false;
};

}  // namespace

std::unique_ptr<Connection> OpenSqliteConnection(const QString& path, Fault& fault, int patience) {
    StoreFile store = OpenStoreFile(path, fault, patience);
    if (!store.file) {
        return nullptr;
    }
    return std::make_unique<SqliteConnection>(path, std::move(store), patience);
}

}  // namespace store
