// The ladder that turns the search items of a list window into its statement.
#include "items/calendar.h"
#include "items/text_rules.h"
#include "lists/list_description.h"

namespace lists {

namespace {

const QString kHeadOffice = QStringLiteral("000");

/// Puts pieces behind a head, with " WHERE " before the first and " AND " before the others.
class Ladder {
  public:
    Ladder(const QString& head, bool hasWhere) : sql_(head), hasWhere_(hasWhere) {}

    void Add(const Fragment& fragment, const QString& value) {
        QString body = hasWhere_ && !fragment.bodyBehindAnd.isEmpty() ? fragment.bodyBehindAnd : fragment.body;
        if (body.isEmpty()) return;
        body.replace(QLatin1String("{next}"), items::Padded(items::Val16(value) + 1, 3));
        // A value may itself hold the mark of a place: what was put in is never looked at again.
        Append(body.split(QStringLiteral("{}")).join(value));
    }
    void Append(const QString& body) {
        sql_ += (hasWhere_ ? QStringLiteral(" AND ") : QStringLiteral(" WHERE ")) + body;
        hasWhere_ = true;
    }
    const QString& Sql() const { return sql_; }

  private:
    QString sql_;
    bool hasWhere_;
};

QString InForm(const QString& value, ValueForm form) {
    switch (form) {
        case ValueForm::AsItStands:
            return value;
        case ValueForm::Text:
            return items::EscapeSqlText(value);
        case ValueForm::Name:
            return items::EscapeSqlText(value.trimmed());
        case ValueForm::Digits:
            break;
    }
    return items::EscapeSqlText(items::DigitsOnly(value));
}

void AddSiteFilter(Ladder& ladder, SiteFilter filter, const SearchValues& values) {
    if (filter == SiteFilter::Staff && values.operatingSiteCode != kHeadOffice)
        ladder.Append("(M担当者.事業所コード = '" + values.siteCode + "' OR M担当者.事業所コード = '" + kHeadOffice +
                      "')");
    if (filter == SiteFilter::Party && values.siteCode != kHeadOffice)
        ladder.Append("M担当者.事業所コード = '" + values.siteCode + "'");
}

void AddItems(Ladder& ladder, const ListDescription& list, const ListStatement& statement, const QStringList& names,
              bool negative, const SearchValues& values) {
    for (const QString& name : names) {
        const QString value = values.items.value(name);
        if (value.trimmed().isEmpty()) continue;
        ValueForm form = ValueForm::AsItStands;
        for (const SearchItem& item : list.items)
            if (item.name == name) form = item.value;
        const ItemFragments fragments = statement.items.value(name);
        if (!negative) ladder.Add(fragments.positive, InForm(value, form));
        for (const Fragment& fragment : negative ? fragments.negative : std::vector<Fragment>())
            ladder.Add(fragment, InForm(value, form));
    }
}

void AddClassifications(Ladder& ladder, const ListDescription& list, const ListStatement& statement, bool negative,
                        const SearchValues& values) {
    for (const Classification& classification : list.classifications) {
        const int index = values.classIndex.value(classification.item);
        const bool all = index == values.classAll.value(classification.item);
        const ClassFragments fragments = statement.classifications.value(classification.item);
        const QString value = QString::number(index);
        if (!all)
            ladder.Add(negative ? fragments.negative : fragments.positive, value);
        else if (negative)
            ladder.Add(fragments.negativeAll, value);
    }
}

QString OrderBy(const ListStatement& statement, int mode, const QString& condition) {
    // The negative search is ordered as the composite one.
    const QString column = statement.orderBy.value(mode, statement.orderBy.value(0));
    if (column.isEmpty()) return {};
    for (const OrderPrefix& prefix : statement.orderPrefixes)
        if (condition.contains(prefix.word)) return " ORDER BY " + prefix.columns + column;
    return " ORDER BY " + column;
}

}  // namespace

QString BuildSearchSql(const ListDescription& list, const ListStatement& statement, int mode,
                       const SearchValues& values) {
    const bool underO = values.dbKind == QLatin1String("O");
    if (!underO && values.dbKind != QLatin1String("A") && values.dbKind != QLatin1String("S")) return {};
    Ladder ladder(underO && !statement.headO.isEmpty() ? statement.headO : statement.head,
                  underO && statement.continuesUnderO);
    if (statement.usesCondition && !values.condition.trimmed().isEmpty()) ladder.Append("(" + values.condition + ")");
    AddSiteFilter(ladder, statement.siteFilter, values);
    for (const SearchMode& search : list.modes)
        if (search.number == mode) AddItems(ladder, list, statement, search.items, mode == -1, values);
    AddClassifications(ladder, list, statement, mode == -1, values);
    return ladder.Sql() + OrderBy(statement, mode, values.condition);
}

}  // namespace lists
