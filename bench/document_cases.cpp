#include "bench/document_cases.h"

#include "lists/list_families.h"
#include "session/schema.h"

namespace bench {
namespace {

const QString kNobody = "該当なし";

QString FirstValue(store::Connection& store, const QString& sql, const QString& column) {
    store::Fault fault;
    const auto rows = store.Query(sql, fault, 1);
    return rows ? rows->Value(column).value_or(QString()) : QString();
}

QString DayText(QDate day) {
    return day.toString("yyyyMMdd");
}

/// A document from the middle of the last year: its columns by name.
QHash<QString, QString> SampleDocument(store::Connection& store, const QString& kind) {
    store::Fault fault;
    const QString day = DayText(NewestDay(store).addDays(-180));
    const auto rows =
        store.Query(QString("SELECT * FROM T%1 WHERE %1日付 >= '%2' ORDER BY %1日付, %1No").arg(kind, day), fault, 1);
    QHash<QString, QString> sample;
    for (const QString& column : rows ? rows->Columns() : QStringList())
        sample.insert(column, rows->Value(column).value_or(QString()));
    sample.insert("担当者名", NameOfStaff(store));
    return sample;
}

QString NumberList(const QString& kind) {
    return "wnd" + kind + "No一覧";
}

QString BaseCondition(const QString& kind) {
    return QString("T%1.番号基準日付 <> ''").arg(kind);
}

/// What narrows a list to the party of the slot, or to its staff member.
QString Narrowed(const QString& kind, const QHash<QString, QString>& sample) {
    if (kind == "出金") return QString(" AND T出金.担当者コード = '%1'").arg(sample["担当者コード"]);
    if (kind == "案件")
        return QString(" AND T案件.相手先区分 = '1' AND T案件.相手先コード = '%1'").arg(sample["相手先コード"]);
    return QString(" AND T%1.得意先コード = '%2'").arg(kind, sample["得意先コード"]);
}

/// The column whose text a text item looks for.
QString TextColumn(const QString& item) {
    static const QHash<QString, QString> columns = {
        {"得意先名", "得意先名称A"}, {"商品名", "営業引合商品名A"}, {"納品先名", "納品先名称A"}, {"件名", "タイトル"}};
    return columns.value(item, item);
}

ListCase Searched(const lists::ListDescription& list, const QString& kind, int mode, const QString& what,
                  const QString& item, const QString& value) {
    ListCase made{&list, mode, what};
    made.condition = BaseCondition(kind);
    if (!item.isEmpty()) made.items.insert(item, value);
    return made;
}

void AddNumberCases(std::vector<ListCase>& cases, const QString& kind, const QHash<QString, QString>& sample) {
    const lists::ListDescription& list = *lists::FindList(NumberList(kind));
    cases.push_back(Searched(list, kind, 0, "検索", {}, {}));
    for (const lists::SearchItem& item : list.items) {
        const QString value = sample[TextColumn(item.name)];
        const bool text = item.mask.isEmpty() && item.commit != lists::CommitRule::Date;
        cases.push_back(Searched(list, kind, item.mode, item.buttonCaption, item.name, value));
        if (!text) continue;
        cases.push_back(Searched(list, kind, item.mode, item.buttonCaption + ": none", item.name, kNobody));
        cases.push_back(Searched(list, kind, -1, "否検索 " + item.name, item.name, value));
    }
    const QString date = kind + "日付", number = kind + "No";
    cases.push_back(Searched(list, kind, -1, "否検索 " + date, date, sample[date]));
    cases.push_back(Searched(list, kind, -1, "否検索 " + number, number, sample[number]));
}

ListCase InPeriod(const lists::ListDescription& list, int period, int mode, const QString& text) {
    const QString& caption = list.periods.at(std::size_t(period)).caption;
    ListCase made{&list, mode, QString((mode < 0 ? "否検索 " : "検索 ") + caption + " " + text).trimmed()};
    made.period = period;
    if (!text.isEmpty()) made.items.insert(list.items.front().name, text);
    return made;
}

}  // namespace

QDate NewestDay(store::Connection& store) {
    return QDate::fromString(FirstValue(store, "SELECT MAX(営業見積日付) AS 日付 FROM T営業見積", "日付"), "yyyyMMdd");
}

std::vector<Opening> NumberListOpenings(store::Connection& store) {
    std::vector<Opening> openings;
    const QString from = DayText(NewestDay(store).addYears(-1));
    for (const QString& kind : session::DocumentKinds()) {
        const auto sample = SampleDocument(store, kind);
        const lists::ListDescription* list = lists::FindList(NumberList(kind));
        const QString condition = QString("%1 AND T%2.%2日付 >= '%3'").arg(BaseCondition(kind), kind, from);
        const QString narrowed = condition + Narrowed(kind, sample);
        openings.push_back({list, "all", "000", condition});
        openings.push_back({list, "all, of a site", sample["事業所コード"], condition});
        openings.push_back({list, "narrowed", "000", narrowed});
        openings.push_back({list, "narrowed, of a site", sample["事業所コード"], narrowed});
    }
    return openings;
}

std::vector<ListCase> NumberListCases(store::Connection& store) {
    std::vector<ListCase> cases;
    for (const QString& kind : session::DocumentKinds())
        AddNumberCases(cases, kind, SampleDocument(store, kind));
    return cases;
}

std::vector<ListCase> NameListCases() {
    std::vector<ListCase> cases;
    for (const lists::ListDescription& family : lists::NameLists()) {
        const lists::ListDescription& list = *lists::FindList(family.name);
        const int opening = list.openingPeriod, all = int(list.periods.size()) - 1;
        for (int period = 0; period <= all; ++period)
            cases.push_back(InPeriod(list, period, 0, {}));
        for (const QString& text : {QString("商"), kNobody})
            for (const int period : {opening, all})
                cases.push_back(InPeriod(list, period, 0, text));
        for (const int period : {0, opening, all})
            cases.push_back(InPeriod(list, period, -1, {}));
        cases.push_back(InPeriod(list, 0, -1, kNobody));
    }
    return cases;
}

}  // namespace bench
