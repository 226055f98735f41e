#pragma once

#include <QDate>

#include "bench/list_cases.h"

namespace bench {

/// The opening of a number list over the main screen.
struct Opening {
    const lists::ListDescription* list = nullptr;
    QString what;       ///< for people
    QString site;       ///< of the session
    QString condition;  ///< as the main screen hands it over
};

/// The last day of which a store has quotations; an invalid date when it has none.
QDate NewestDay(store::Connection& store);

/// Each number list opened without a party and for one (for a staff member: payments), at the head office and at a
/// site.
std::vector<Opening> NumberListOpenings(store::Connection& store);

/// The searches of the six number lists, every mode with a value that is in the store, texts also with one that is not.
std::vector<ListCase> NumberListCases(store::Connection& store);

/// The searches of the eleven lists of used names: each period without a text, the opening one with texts, and the
/// negative search.
std::vector<ListCase> NameListCases();

}  // namespace bench
