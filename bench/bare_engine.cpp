#include "bench/bare_engine.h"

#include <sqlite3.h>

#include "store/like_function.h"

namespace bench {
namespace {

constexpr int kPatience = 20000;  // milliseconds, as the program waits for another's lock

}  // namespace

std::unique_ptr<BareEngine> BareEngine::Open(const QString& path, Use use) {
    sqlite3* engine = nullptr;
    const int flags = use == Use::Writing ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &engine, flags, nullptr);
    std::unique_ptr<BareEngine> opened(new BareEngine(engine));
    sqlite3_busy_timeout(engine, kPatience);
    return code == SQLITE_OK ? std::move(opened) : nullptr;
}

BareEngine::~BareEngine() {
    sqlite3_close(engine_);
}

bool BareEngine::UseOurLike() {
    return store::RegisterLike(engine_) == SQLITE_OK;
}

int BareEngine::Step(const QString& sql, int mostRows) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(engine_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) return -1;
    int rows = 0;
    int code = SQLITE_ROW;
    while (rows < mostRows && (code = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            sqlite3_column_text(statement, column);
        ++rows;
    }
    sqlite3_finalize(statement);
    return code == SQLITE_DONE || rows == mostRows ? rows : -1;
}

double BareEngine::Number(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(engine_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) return 0;
    const double number = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_double(statement, 0) : 0;
    sqlite3_finalize(statement);
    return number;
}

}  // namespace bench
