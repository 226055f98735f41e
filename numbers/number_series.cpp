#include "numbers/number_series.h"

#include "items/display_forms.h"
#include "items/text_rules.h"
#include "session/insert_builder.h"

namespace numbers {

namespace {

const QString kMaster = QStringLiteral("A番号情報");
const QString kDated = QStringLiteral("A期日別番号情報");
const QString kBySite = QStringLiteral("A事業所別番号情報");
const QString kBySiteDated = QStringLiteral("A事業所別期日別番号情報");

enum SerialKind { kForEver = 0, kFiscalYear = 1, kClosingMonth = 2, kDay = 3 };

QString KeyCondition(const QString& table, const QString& column, const QString& value) {
    return table + "." + column + " = '" + value + "'";
}

/// The number behind a stored one. It widens past eight digits; there is no wrap.
QString NextNumber(const QString& stored) {
    const double next = items::Val(stored) + 1;
    return next == 0 ? QStringLiteral("00000001") : QString::number(next, 'f', 0).rightJustified(8, u'0');
}

}  // namespace

Closing CompanyClosing(const session::SessionContext& context) {
    return {context.Company.決算月, context.Company.決算日};
}

QString NumberSeries::CountRow::Condition() const {
    QStringList keys;
    if (site) keys << KeyCondition(table, QStringLiteral("事業所コード"), *site);
    keys << KeyCondition(table, QStringLiteral("番号ID"), seriesId);
    if (periodDate) keys << KeyCondition(table, QStringLiteral("期日"), *periodDate);
    return " WHERE " + keys.join(" AND ");
}

QString NumberSeries::CountRow::InsertStatement() const {
    session::InsertBuilder insert(table);
    if (site) insert.Quoted(QStringLiteral("事業所コード"), *site);
    insert.Quoted(QStringLiteral("番号ID"), seriesId);
    if (periodDate) insert.Quoted(QStringLiteral("期日"), *periodDate);
    insert.Quoted(QStringLiteral("連番"), kNoNumber);
    insert.Quoted(QStringLiteral("履歴連番"), kNoNumber);
    return insert.Statement();
}

bool NumberSeries::ReadMaster(std::unique_ptr<store::Recordset>& master, const QString& condition) {
    return data_.OpenMainRecordset(master, "SELECT A番号情報.* FROM A番号情報 WHERE " + condition);
}

QString NumberSeries::ResolveNumberDate(const QString& seriesId, const QString& date) {
    const QString day = date == QLatin1String("99999999") ? items::DateText(clock_.Now()) : date;
    std::unique_ptr<store::Recordset> master;
    if (!ReadMaster(master, KeyCondition(kMaster, QStringLiteral("番号ID"), seriesId))) return {};
    const Closing closing = CompanyClosing(context_);
    switch (session::NumberColumn(*master, QStringLiteral("連番種類")).value_or(0)) {
        case kForEver:
            return QStringLiteral("99999999");
        case kFiscalYear:
            return FiscalYearEnd(closing, day);
        case kClosingMonth:
            return MonthClosingDate(closing, day);
        case kDay:
            return day;
        default:
            return QStringLiteral("88888888");
    }
}

QString NumberSeries::IssueNumber(const QString& seriesId, const QString& periodDate, const QString& site) {
    const QString number = IssueSerial(seriesId, periodDate, site, context_.Company.伝票番号管理区分 != 0);
    // The second telling of the same failure: the users know the pair of messages as it is.
    if (number == kNoNumber) TellFailure();
    return number;
}

void NumberSeries::TellFailure() {
    host_.Tell(QStringLiteral("番号情報に問題が発生設定できませんでした。"));
}

QString NumberSeries::IssueSerial(const QString& seriesId, const QString& periodDate, const QString& site,
                                  bool bySite) {
    std::unique_ptr<store::Recordset> master;
    if (!ReadMaster(master, KeyCondition(kMaster, QStringLiteral("番号ID"), seriesId))) {
        TellFailure();
        return kNoNumber;
    }
    const int kind = session::NumberColumn(*master, QStringLiteral("連番種類")).value_or(0);
    CountRow row{kMaster, seriesId, std::nullopt, std::nullopt};
    if (kind == kForEver) {
        if (bySite) {
            row = {kBySite, seriesId, site, std::nullopt};
            EnsureRow(row);
        }
    } else {
        row = {bySite ? kBySiteDated : kDated, seriesId, bySite ? std::optional(site) : std::nullopt, periodDate};
        // Even a series of an unknown kind gets its row.
        EnsureRow(row);
        if (kind < kForEver || kind > kDay) return {};
    }
    return DrawFrom(row);
}

QString NumberSeries::DrawFrom(const CountRow& row) {
    std::unique_ptr<store::Recordset> count;
    QString number;
    if (data_.OpenMainRecordset(count, "SELECT " + row.table + ".* FROM " + row.table + row.Condition()))
        number = NextNumber(count->Value(QStringLiteral("連番")).value_or(QString()));
    data_.ExecuteMain("UPDATE " + row.table + " SET  連番 = '" + number + "'" + row.Condition());
    return number;
}

void NumberSeries::EnsureRow(const CountRow& row) {
    std::unique_ptr<store::Recordset> found;
    if (data_.OpenMainRecordset(found, "SELECT " + row.table + ".* FROM " + row.table + row.Condition())) return;
    // Numbers by site and period ask the series' master under the wrong table's name: the statement fails, no row is
    // made, and such a series issues nothing until an administrator makes its row. The suite relies on that.
    const QString table = row.table == kBySiteDated ? kBySite : kMaster;
    std::unique_ptr<store::Recordset> master;
    if (!ReadMaster(master, KeyCondition(table, QStringLiteral("番号ID"), row.seriesId))) return;
    data_.ExecuteMain(row.InsertStatement());
}

}  // namespace numbers
