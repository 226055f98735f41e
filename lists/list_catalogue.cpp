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

}  // namespace

const ListDescription* FindList(const QString& name) {
    static const Catalogue catalogue = MakeCatalogue();
    const auto found = catalogue.find(name);
    return found == catalogue.end() ? nullptr : &found->second;
}

}  // namespace lists
