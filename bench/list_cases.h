#pragma once

#include <vector>

#include "lists/list_description.h"
#include "store/connection.h"

namespace bench {

/// One search of a list window.
struct ListCase {
    const lists::ListDescription* list = nullptr;
    int mode = 0;
    QString what;  ///< for people: "名称検索 none"
    lists::SearchValues values;
    int period = -1;  ///< index of the chosen period, for a list that has periods

    /// The statements of the search, those of check boxes that open off left out.
    QStringList Statements() const;
};

/// The searches of the five party lists and of the combined one: every mode with a value that finds many rows, and the
/// text modes with one that finds none, for which the engine has to look at every party. Values that find few are taken
/// from a party of the store. Empty when the store has no parties.
std::vector<ListCase> PartyCases(store::Connection& store);

}  // namespace bench
