#include "bench/statement_trace.h"

#include <sqlite3.h>

#include "store/postgres_link.h"

namespace bench {
namespace {

bool watching = false;
bool noting = false;
std::vector<Traced> noted;

void NoteOne(const QString& store, const QString& sql) {
    if (!noting) return;
    for (const char* word : {"SELECT", "WITH", "INSERT", "UPDATE", "DELETE", "SET"})
        if (sql.trimmed().startsWith(QLatin1String(word), Qt::CaseInsensitive)) noted.push_back({store, sql});
}

int Note(unsigned, void*, void* statement, void* text) {
    sqlite3* engine = sqlite3_db_handle(static_cast<sqlite3_stmt*>(statement));
    NoteOne(QString::fromUtf8(sqlite3_db_filename(engine, "main")), QString::fromUtf8(static_cast<const char*>(text)));
    return 0;
}

int WatchOne(sqlite3* engine, char**, const struct sqlite3_api_routines*) {
    return sqlite3_trace_v2(engine, SQLITE_TRACE_STMT, Note, nullptr);
}

}  // namespace

void StatementTrace::Watch(const QString& server) {
    watching = true;
    store::PostgresLink::watcher = [server](const QString& sql) { NoteOne(server, sql); };
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(WatchOne));
}

bool StatementTrace::Watching() {
    return watching;
}

void StatementTrace::Begin() {
    noted.clear();
    noting = true;
}

std::vector<Traced> StatementTrace::End() {
    noting = false;
    return std::move(noted);
}

}  // namespace bench
