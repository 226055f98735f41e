// The ladder that turns the search items of a list window into its statement.
#include "items/text_rules.h"
#include "lists/list_description.h"

namespace lists {

namespace {

const QString kHeadOffice = QStringLiteral("000");

/// The first text behind all that begin with these digits; empty when they are all nines.
QString BehindThoseOf(QString digits) {
    qsizetype at = digits.size();
    while (at > 0 && digits[at - 1] == u'9')
        digits[--at] = u'0';
    if (at == 0) return {};
    digits[at - 1] = QChar(digits[at - 1].unicode() + 1);
    return digits;
}

/// Puts pieces behind a head, with " WHERE " before the first and " AND " before the others.
class Ladder {
  public:
    Ladder(const QString& head, bool hasWhere) : sql_(head), hasWhere_(hasWhere) {}

    void Add(const Fragment& fragment, const QString& value, int check = 0) {
        QString body = hasWhere_ && !fragment.bodyBehindAnd.isEmpty() ? fragment.bodyBehindAnd : fragment.body;
        if (body.isEmpty()) return;
        if (const QString next = fragment.below.isEmpty() ? QString() : BehindThoseOf(value); !next.isEmpty())
            body += " AND " + QString(fragment.below).replace(QLatin1String("{next}"), next);
        body.replace(QLatin1String("{check}"), QString::number(check));
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

void AddSiteFilter(Ladder& ladder, const ListStatement& statement, const SearchValues& values) {
    const SiteFilter filter = statement.siteFilter;
    if (filter == SiteFilter::Staff && values.operatingSiteCode != kHeadOffice)
        ladder.Append("(M担当者.事業所コード = '" + values.siteCode + "' OR M担当者.事業所コード = '" + kHeadOffice +
                      "')");
    if (filter == SiteFilter::Party && values.siteCode != kHeadOffice)
        ladder.Append("M担当者.事業所コード = '" + values.siteCode + "'");
    if (filter == SiteFilter::Own && values.siteCode != kHeadOffice)
        ladder.Append(statement.siteColumn + " = '" + values.siteCode + "'");
}

void AddFixedCondition(Ladder& ladder, const ListStatement& statement, const SearchValues& values) {
    if (statement.usesCondition && !values.condition.trimmed().isEmpty()) ladder.Append("(" + values.condition + ")");
}

void AddPeriod(Ladder& ladder, const ListStatement& statement, bool negative, const SearchValues& values) {
    const QString& day = statement.periodColumn;
    if (day.isEmpty()) return;
    if (values.firstDay.isEmpty())
        ladder.Append(day + " <> ''");
    else if (!negative)
        ladder.Append(day + " >= '" + values.firstDay + "' AND " + day + " <= '" + values.lastDay + "'");
    else  // No brackets: what follows narrows the days to come alone, as it does in the other programs of the suite.
        ladder.Append(day + " < '" + values.firstDay + "' OR " + day + " > '" + values.lastDay + "'");
}

void AddItems(Ladder& ladder, const ListDescription& list, const ListStatement& statement, const QStringList& names,
              bool negative, const SearchValues& values) {
    for (const QString& name : names) {
        ValueForm form = ValueForm::AsItStands;
        int check = 0;
        for (const SearchItem& item : list.items) {
            if (item.name != name) continue;
            form = item.value;
            check = values.checks.value(item.whenChecked.checkBox);
        }
        const QString value = InForm(values.items.value(name), form);
        if (value.trimmed().isEmpty()) continue;
        const ItemFragments fragments = statement.items.value(name);
        if (!negative) ladder.Add(fragments.positive, value, check);
        for (const Fragment& fragment : negative ? fragments.negative : std::vector<Fragment>())
            ladder.Add(fragment, value, check);
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
    const bool asO = underO || (statement.sharesHeadO && values.dbKind == QLatin1String("S"));
    Ladder ladder(asO && !statement.headO.isEmpty() ? statement.headO : statement.head,
                  asO && statement.continuesUnderO);
    const bool siteFirst = statement.siteFilter == SiteFilter::Own;
    if (siteFirst) AddSiteFilter(ladder, statement, values);
    AddFixedCondition(ladder, statement, values);
    if (!siteFirst) AddSiteFilter(ladder, statement, values);
    AddPeriod(ladder, statement, mode == -1, values);
    if (!statement.always.isEmpty()) ladder.Append(statement.always);
    for (const SearchMode& search : list.modes)
        if (search.number == mode) AddItems(ladder, list, statement, search.items, mode == -1, values);
    AddClassifications(ladder, list, statement, mode == -1, values);
    return ladder.Sql() + OrderBy(statement, mode, values.condition);
}

}  // namespace lists
