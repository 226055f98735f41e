#include "store/fault_kinds.h"

#include <sqlite3.h>

#include <array>

namespace store {
namespace {

FaultKind KindOfConstraint(int code, const QString& words) {
    const bool key = code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_UNIQUE ||
                     code == SQLITE_CONSTRAINT_ROWID || words.contains(QLatin1String("UNIQUE constraint failed"));
    return key ? FaultKind::KeyTaken : FaultKind::RuleBroken;
}

struct State {
    QLatin1String head;
    FaultKind kind;
};

// The first head that fits counts. Drivers have a few states of their own; P0001 is a trigger's refusal.
constexpr std::array kStates = {
    State{QLatin1String("53100"), FaultKind::DiskFull},    State{QLatin1String("25006"), FaultKind::NotWritable},
    State{QLatin1String("42501"), FaultKind::NotWritable}, State{QLatin1String("55P03"), FaultKind::Locked},
    State{QLatin1String("40P01"), FaultKind::Locked},      State{QLatin1String("40001"), FaultKind::Locked},
    State{QLatin1String("HYT00"), FaultKind::Locked},      State{QLatin1String("S1T00"), FaultKind::Locked},
    State{QLatin1String("HYT01"), FaultKind::Away},        State{QLatin1String("08"), FaultKind::Away},
    State{QLatin1String("57P"), FaultKind::Away},          State{QLatin1String("23505"), FaultKind::KeyTaken},
    State{QLatin1String("23"), FaultKind::RuleBroken},     State{QLatin1String("P0001"), FaultKind::RuleBroken},
};

}  // namespace

FaultKind KindOfSqlite(int code, const QString& words) {
    switch (code & 0xff) {
        case SQLITE_FULL:
            return FaultKind::DiskFull;
        case SQLITE_READONLY:
            // The file isn't where it was opened any more.
            return code == SQLITE_READONLY_DBMOVED ? FaultKind::Away : FaultKind::NotWritable;
        case SQLITE_PERM:
        case SQLITE_CANTOPEN:
            return FaultKind::NotWritable;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return FaultKind::Locked;
        case SQLITE_CONSTRAINT:
            return KindOfConstraint(code, words);
        default:
            return FaultKind::Other;
    }
}

bool IsSqliteIoFault(int code) {
    return (code & 0xff) == SQLITE_IOERR;
}

FaultKind KindOfSqlState(const QString& state) {
    for (const State& known : kStates)
        if (state.startsWith(known.head)) return known.kind;
    return FaultKind::Other;
}

}  // namespace store
