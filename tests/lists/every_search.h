#pragma once

#include <functional>

#include "lists/list_description.h"

namespace lists {

struct NamedSearch {
    QString window, sql;
};

/// All items filled; `narrow` narrows site, classes, check boxes and period as well. `valueOf` tells what to search an
/// item for.
inline SearchValues AllFilled(const ListDescription& list, const QString& kind, bool narrow,
                              const std::function<QString(const QString& item)>& valueOf) {
    SearchValues values;
    values.dbKind = kind;
    values.siteCode = values.operatingSiteCode = narrow ? "001" : "000";
    for (const SearchItem& item : list.items)
        values.items.insert(item.name, valueOf(item.name));
    for (const Classification& classification : list.classifications) {
        values.classAll.insert(classification.item, 3);
        values.classIndex.insert(classification.item, narrow ? 1 : 3);
    }
    for (const CheckBox& box : list.checkBoxes)
        values.checks.insert(box.name, narrow ? 1 : 0);
    if (narrow && !list.periods.empty()) values.firstDay = "20260315", values.lastDay = "20260930";
    return values;
}

/// Every search of every list window for a kind of database, with and without everything narrowed. The contacts' lists
/// have no statement for "O".
inline std::vector<NamedSearch> EverySearch(const QString& kind,
                                            const std::function<QString(const QString& item)>& valueOf) {
    std::vector<NamedSearch> searches;
    for (const ListDescription* list : EveryList())
        for (const bool narrow : {false, true}) {
            const SearchValues values = AllFilled(*list, kind, narrow, valueOf);
            for (const ListStatement& statement : list->statements)
                for (const SearchMode& mode : list->modes) {
                    const QString sql = BuildSearchSql(*list, statement, mode.number, values);
                    if (!sql.isEmpty()) searches.push_back({list->name, sql});
                }
        }
    return searches;
}

}  // namespace lists
