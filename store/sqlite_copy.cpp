#include "store/sqlite_copy.h"

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>

namespace store {
namespace {

constexpr int kPagesOfAStep = 2048;
constexpr int kAllPages = -1;
constexpr double kLongestHold = 8000;  // milliseconds; a client's save waits for more than twice that
constexpr int kMostRestarts = 20;
constexpr int kMostTries = 10;
constexpr qint64 kSmallestStore = 512;

using Engine = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Fault FaultOf(sqlite3* engine, int code) {
    return {code, QString::fromUtf8(engine ? sqlite3_errmsg(engine) : sqlite3_errstr(code))};
}

Engine OpenEngine(const QString& path, int flags, int patience, Fault& fault) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &opened, flags, nullptr);
    Engine engine(opened, sqlite3_close);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(engine.get(), patience);
        return engine;
    }
    fault = FaultOf(engine.get(), code);
    return {nullptr, sqlite3_close};
}

// One run of the engine's copying from a store into another.
class PageCopy {
  public:
    PageCopy(sqlite3* from, sqlite3* to) : to_(to), copy_(sqlite3_backup_init(to, "main", from, "main")) {}
    ~PageCopy() {
        if (copy_) sqlite3_backup_finish(copy_);
    }
    PageCopy(const PageCopy&) = delete;
    PageCopy& operator=(const PageCopy&) = delete;

    int Step(int pages) {
        const int code = copy_ ? sqlite3_backup_step(copy_, pages) : sqlite3_errcode(to_);
        done_ = code == SQLITE_DONE;
        return code;
    }
    bool Done() const { return done_; }
    qint64 Total() const { return sqlite3_backup_pagecount(copy_); }
    qint64 Copied() const { return Total() - sqlite3_backup_remaining(copy_); }

    /// Commits when all was copied, takes everything back otherwise.
    bool Finish(Fault& fault) {
        const int code = copy_ ? sqlite3_backup_finish(std::exchange(copy_, nullptr)) : sqlite3_errcode(to_);
        if (code != SQLITE_OK) fault = FaultOf(to_, code);
        return code == SQLITE_OK && done_;
    }

  private:
    sqlite3* to_;
    sqlite3_backup* copy_;
    bool done_ = false;
};

bool CopyInPieces(PageCopy& copy, Fault& fault, const PageProgress& progress) {
    QElapsedTimer clock;
    clock.start();
    qint64 before = 0, stepped = 0;
    for (int restarts = 0; !copy.Done();) {
        // Pages of a moment ago and of now don't belong together: after another's save the engine begins again. Where
        // that is short, the next saves wait.
        const double whole = stepped > 0 ? double(copy.Total()) * double(clock.elapsed()) / double(stepped) : 0;
        const int code = copy.Step(restarts > 0 && whole < kLongestHold ? kAllPages : kPagesOfAStep);
        if (code != SQLITE_OK && code != SQLITE_DONE) {
            fault = {code, QString::fromUtf8(sqlite3_errstr(code))};
            return false;
        }
        restarts += copy.Copied() < before + 1 && !copy.Done() ? 1 : 0;
        stepped += kPagesOfAStep;
        before = copy.Copied();
        if (restarts > kMostRestarts) {
            fault = {SQLITE_BUSY, QStringLiteral("データベースの更新が続いているため複写できません。")};
            return false;
        }
        if (progress) progress(copy.Copied(), copy.Total());
    }
    return true;
}

bool CopyInto(const QString& from, const QString& to, Fault& fault, const PageProgress& progress, int patience) {
    const Engine source = OpenEngine(from, SQLITE_OPEN_READWRITE, patience, fault);
    const Engine target =
        source ? OpenEngine(to, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, patience, fault) : Engine(nullptr, nullptr);
    if (!target) return false;
    PageCopy copy(source.get(), target.get());
    return CopyInPieces(copy, fault, progress) && copy.Finish(fault);
}

bool IsThere(const QString& path, Fault& fault) {
    const QFile file(path);
    if (file.size() >= kSmallestStore) return true;
    fault = file.exists() ? Fault{SQLITE_NOTADB, QStringLiteral("データベースファイルではありません: %1").arg(path)}
                          : Fault{SQLITE_CANTOPEN, QStringLiteral("データベースファイルがありません: %1").arg(path)};
    return false;
}

// The engine's count of changes to a store, in its header. Read past the engine, from a file that stays open: closing
// it would drop every lock that this process holds on the store.
QByteArray ChangeCount(QFile& header) {
    constexpr qint64 kPlace = 24;
    return header.seek(kPlace) ? header.read(4) : QByteArray();
}

enum class Try { Done, Changed, Failed };

bool Run(sqlite3* engine, const char* sql, Fault& fault) {
    const int code = sqlite3_exec(engine, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fault = FaultOf(engine, code);
    return code == SQLITE_OK;
}

// Copies a store while others can read it, but wait with their saves until the copy is there.
bool KeepStore(const QString& from, const QString& keep, QFile& header, QByteArray& change, Fault& fault,
               int patience) {
    const Engine gate = OpenEngine(from, SQLITE_OPEN_READWRITE, patience, fault);
    if (!gate || !Run(gate.get(), "BEGIN IMMEDIATE", fault)) return false;
    change = ChangeCount(header);
    return CopySqliteStore(from, keep, fault, {}, patience) && Run(gate.get(), "ROLLBACK", fault);
}

Try ReplaceOnce(const QString& from, const QString& to, const QString& keep, QFile& header, Fault& fault,
                int patience) {
    QByteArray kept;
    if (!KeepStore(to, keep, header, kept, fault, patience)) return Try::Failed;
    const Engine source = OpenEngine(from, SQLITE_OPEN_READWRITE, patience, fault);
    const Engine target = source ? OpenEngine(to, SQLITE_OPEN_READWRITE, patience, fault) : Engine(nullptr, nullptr);
    if (!target) return Try::Failed;
    PageCopy copy(source.get(), target.get());
    // The first page locks the target; from then on nobody changes it. Who waited to save may have come first.
    int code = copy.Step(1);
    if (code == SQLITE_OK || code == SQLITE_DONE) {
        if (ChangeCount(header) != kept) return Try::Changed;
        if (code == SQLITE_OK) code = copy.Step(kAllPages);
    }
    if (code == SQLITE_DONE && copy.Finish(fault)) return Try::Done;
    if (code != SQLITE_DONE) fault = {code, QString::fromUtf8(sqlite3_errstr(code))};
    return Try::Failed;
}

}  // namespace

bool CopySqliteStore(const QString& from, const QString& to, Fault& fault, const PageProgress& progress, int patience) {
    if (!IsThere(from, fault)) return false;
    if (QFile::exists(to)) {
        fault = {0, QStringLiteral("ファイルは既にあります: %1").arg(to)};
        return false;
    }
    if (CopyInto(from, to, fault, progress, patience)) return true;
    QFile::remove(to);
    QFile::remove(to + QStringLiteral("-journal"));
    return false;
}

bool ReplaceSqliteStore(const QString& from, const QString& to, const QString& keep, Fault& fault, int patience) {
    QFile header(to);
    if (!IsThere(from, fault) || !IsThere(to, fault)) return false;
    if (!header.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fault = {SQLITE_CANTOPEN, header.errorString()};
        return false;
    }
    for (int tries = 0; tries < kMostTries; ++tries) {
        const bool ours = !QFile::exists(keep);
        const Try outcome = ReplaceOnce(from, to, keep, header, fault, patience);
        if (outcome == Try::Done) return true;
        if (ours) QFile::remove(keep);
        if (outcome == Try::Failed) return false;
    }
    fault = {SQLITE_BUSY, QStringLiteral("データベースの更新が続いているため置き換えできません。")};
    return false;
}

bool IsNoStore(const Fault& fault) {
    return (fault.number & 0xff) == SQLITE_NOTADB || (fault.number & 0xff) == SQLITE_CORRUPT;
}

bool CheckSqliteStore(const QString& path, Fault& fault) {
    if (!IsThere(path, fault)) return false;
    const Engine engine = OpenEngine(path, SQLITE_OPEN_READWRITE, kPatience, fault);
    if (!engine) return false;
    sqlite3_stmt* statement = nullptr;
    int code = sqlite3_prepare_v2(engine.get(), "PRAGMA integrity_check(1)", -1, &statement, nullptr);
    QString verdict;
    if (code == SQLITE_OK && (code = sqlite3_step(statement)) == SQLITE_ROW)
        verdict = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    fault = verdict.isEmpty() ? FaultOf(engine.get(), code) : Fault{SQLITE_CORRUPT, verdict};
    sqlite3_finalize(statement);
    return verdict == QLatin1String("ok");
}

}  // namespace store
