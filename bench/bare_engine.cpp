#include "bench/bare_engine.h"

#include <sqlite3.h>

#include "store/like_function.h"

namespace bench {

std::unique_ptr<BareEngine> BareEngine::Open(const QString& path) {
    sqlite3* engine = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &engine, SQLITE_OPEN_READONLY, nullptr);
    std::unique_ptr<BareEngine> opened(new BareEngine(engine));
    return code == SQLITE_OK ? std::move(opened) : nullptr;
}

BareEngine::~BareEngine() {
    sqlite3_close(engine_);
}

bool BareEngine::UseOurLike() {
    return store::RegisterLike(engine_) == SQLITE_OK;
}

int BareEngine::Step(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(engine_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) return -1;
    int rows = 0;
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            sqlite3_column_text(statement, column);
        ++rows;
    }
    sqlite3_finalize(statement);
    return code == SQLITE_DONE ? rows : -1;
}

}  // namespace bench
