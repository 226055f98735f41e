#include <map>

#include "lists/list_families.h"

namespace lists {

namespace {

using Catalogue = std::map<QString, ListDescription>;

Catalogue MakeCatalogue() {
    Catalogue catalogue;
    const auto add = [&](const std::vector<ListDescription>& family) {
        for (const ListDescription& list : family)
            catalogue.emplace(list.name, list);
    };
    add({StaffList()});
    add(SmallLists());
    add(PartyLists());
    add({CombinedPartyList()});
    add(ContactLists());
    add(NumberLists());
    add(NameLists());
    return catalogue;
}

const Catalogue& AllByName() {
    static const Catalogue catalogue = MakeCatalogue();
    return catalogue;
}

}  // namespace

const ListDescription* FindList(const QString& name) {
    const auto found = AllByName().find(name);
    return found == AllByName().end() ? nullptr : &found->second;
}

std::vector<const ListDescription*> EveryList() {
    std::vector<const ListDescription*> lists;
    for (const auto& [name, list] : AllByName())
        lists.push_back(&list);
    return lists;
}

}  // namespace lists
