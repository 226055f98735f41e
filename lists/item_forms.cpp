#include "lists/item_forms.h"

namespace lists {

namespace {

/// "(A LIKE '%{}%' OR B LIKE '%{}%')" for the columns A and B.
QString Group(const QStringList& columns, const QString& comparison, const QString& connector) {
    QStringList parts;
    for (const QString& column : columns)
        parts.append(column + comparison);
    return u'(' + parts.join(connector) + u')';
}

}  // namespace

SearchItem CodeItem(const QString& name, const QString& mask) {
    SearchItem item;
    item.name = name;
    item.use = screen::EntryUse::Code;
    item.maxLength = static_cast<int>(mask.size());
    item.mask = mask;
    return item;
}

SearchItem TextItem(const QString& name, ValueForm value) {
    SearchItem item;
    item.name = name;
    item.value = value;
    return item;
}

SearchItem SearchedBy(SearchItem item, const QString& what, const QString& caption, int mode) {
    item.button = "btn_" + what + "検索";
    item.buttonCaption = caption;
    item.mode = mode;
    return item;
}

ItemFragments FromHereOn(const QString& column) {
    return {{column + " >= '{}'", {}}, {{column + " < '{}'", {}}}};
}

ItemFragments Exactly(const QString& column) {
    return {{column + " = '{}'", {}}, {{column + " <> '{}'", {}}}};
}

ItemFragments Containing(const QString& column) {
    return {{column + " LIKE '%{}%'", {}}, {{column + " NOT LIKE '%{}%'", {}}}};
}

ItemFragments ContainingInAny(const QStringList& columns) {
    return {{Group(columns, " LIKE '%{}%'", " OR "), {}}, {{Group(columns, " NOT LIKE '%{}%'", " AND "), {}}}};
}

ClassFragments Classified(const QString& column) {
    return {{column + " = '{}'", {}}, {column + " <> '{}'", {}}, {}};
}

}  // namespace lists
