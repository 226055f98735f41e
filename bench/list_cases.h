#pragma once

#include <vector>

#include "lists/list_description.h"
#include "store/connection.h"

namespace bench {

/// One search of a list window.
struct ListCase {
    const lists::ListDescription* list = nullptr;
    int mode = 0;  ///< as the list's description counts them
    QString what;  ///< for people: "名称検索: none"
    QHash<QString, QString> items{};
    QHash<QString, int> classIndex{};
    QString condition{};  ///< as the main screen hands it over
    int period = -1;      ///< index of the chosen period, for a list that has periods
    int characters = 0;   ///< that are looked for within a text
};

/// The searches of the five party lists and of the combined one: every mode with a value that finds many rows, and the
/// text modes with one that finds none, for which the engine may have to look at every party. Values that find few are
/// taken from a party of the store. Empty when the store has no parties.
std::vector<ListCase> PartyCases(store::Connection& store);

/// The first two characters of a staff member's name, as somebody would look for it.
QString NameOfStaff(store::Connection& store);

/// The searches of the lists that aren't of parties or documents: staff, departments, sections, postcodes, contacts.
std::vector<ListCase> OtherCases(store::Connection& store);

}  // namespace bench
