#include "store/like_function.h"

#include <sqlite3.h>

#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>
#include <cstring>
#include <new>

#include "store/kana_fold.h"

namespace store {
namespace {

constexpr int kPatternArgument = 0;

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, std::size_t(sqlite3_value_bytes(value))) : std::string_view();
}

// "text LIKE pattern ESCAPE escape" arrives as like(pattern, text, escape). Null when the escape isn't one character;
// the fault is told already.
std::unique_ptr<LikePattern> ReadPattern(sqlite3_context* context, int count, sqlite3_value** arguments) {
    std::optional<Letter> escape;
    if (count == 3) {
        escape = OnlyCharacter(TextOf(arguments[2]));
        if (!escape) {
            sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
            return nullptr;
        }
    }
    return std::make_unique<LikePattern>(TextOf(arguments[kPatternArgument]), escape);
}

void MatchRow(sqlite3_context* context, int count, sqlite3_value** arguments) {
    // A constant pattern is folded once a statement: the engine keeps it for the next row.
    auto* kept = static_cast<LikePattern*>(sqlite3_get_auxdata(context, kPatternArgument));
    std::unique_ptr<LikePattern> fresh;
    if (!kept) fresh = ReadPattern(context, count, arguments);
    LikePattern* pattern = kept ? kept : fresh.get();
    if (!pattern) return;
    sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])));
    // An ESCAPE may change from row to row although the pattern doesn't.
    if (fresh && count == 2)
        sqlite3_set_auxdata(context, kPatternArgument, fresh.release(),
                            [](void* data) { delete static_cast<LikePattern*>(data); });
}

void Like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    for (int i = 0; i < count; ++i)
        if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) return;  // the result stays Null
    try {
        MatchRow(context, count, arguments);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

// Qt may carry an engine of its own. Its connections must not be handed to another copy of the library.
bool IsOurEngine(const QSqlDatabase& database) {
    QSqlQuery query(database);
    return query.exec(QStringLiteral("SELECT sqlite_source_id()")) && query.next() &&
           query.value(0).toString() == QLatin1String(sqlite3_sourceid());
}

}  // namespace

bool InstallLike(const QSqlDatabase& database, Fault& fault) {
    const QVariant handle = database.driver()->handle();
    if (std::strcmp(handle.typeName(), "sqlite3*") != 0 || !IsOurEngine(database)) {
        fault = {0, QStringLiteral("Qt の SQLite とプログラムの SQLite が違います。")};
        return false;
    }
    sqlite3* engine = *static_cast<sqlite3* const*>(handle.constData());
    const int code = RegisterLike(engine);
    if (code != SQLITE_OK) fault = {code, QString::fromUtf8(sqlite3_errmsg(engine))};
    return code == SQLITE_OK;
}

int RegisterLike(sqlite3* engine) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    int code = SQLITE_OK;
    for (int arguments = 2; arguments <= 3 && code == SQLITE_OK; ++arguments)
        code = sqlite3_create_function_v2(engine, "like", arguments, kFlags, nullptr, Like, nullptr, nullptr, nullptr);
    return code;
}

}  // namespace store
