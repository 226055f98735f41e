#include "move/source_slot.h"

#include "items/calendar.h"
#include "items/text_rules.h"
#include "move/move_statements.h"

namespace move {

using session::TakeColumn;

namespace {

QString LongDate(items::Ymd date) {
    return QStringLiteral("%1年%2月%3日").arg(date.year).arg(date.month).arg(date.day);
}

QString Named(const store::Recordset& row, const char* column) {
    return row.Value(QString::fromUtf8(column)).value_or(QString());
}

/// The name of the row's handling within its matter.
QString HandlingName(MoveContext& move, const store::Recordset& row) {
    std::unique_ptr<store::Recordset> handling;
    const QString sql = "SELECT * FROM K対応分類 WHERE 要件分類 = '" + Named(row, "要件分類") + "' AND 区分 = '" +
                        Named(row, "対応分類") + "'";
    return move.diary.data.OpenMainRecordset(handling, sql) ? Named(*handling, "名称") : QString();
}

void TakeKey(MoveContext& move) {
    const auto text = [&move](const char* item) { return move.diary.Item(item).Text(); };
    move.source = {text("担当者コード"), text("営業活動日付年") + text("営業活動日付月") + text("営業活動日付日"),
                   text("開始時刻時") + ":" + text("開始時刻分"), text("終了時刻時") + ":" + text("終了時刻分")};
    TargetSlot& target = move.target;
    target = {};
    TakeDate(target, move.source.日付);
    TakeTimes(target, move.source.開始時刻, move.source.終了時刻);
    target.移動担当者コード = move.source.担当者コード;
    // The main screen took it from this staff member; a row that has none of its own is never written without one.
    target.事業所コード = move.diary.session.SiteCode;
}

void ShowKey(MoveContext& move) {
    for (const auto& control : move.form.Controls())
        if (control->readOnly) control->SetText(QString());
    const SlotKey& key = move.source;
    if (!move.target.移動曜日.isEmpty()) move.Item("表示日付").SetText(LongDate(items::ReadDate(key.日付)));
    move.Item("曜日").SetText(move.target.移動曜日);
    move.Item("開始時刻").SetText(key.開始時刻);
    move.Item("終了時刻").SetText(key.終了時刻);
    move.Item("担当者コード").SetText(key.担当者コード);
}

/// The names that the row's codes have.
struct Names {
    QString staff, department, section, caller, means, matter;
};

void TakeRow(MoveContext& move, const store::Recordset& row, const Names& names) {
    TargetSlot& target = move.target;
    if (const QString site = Named(row, "事業所コード"); !site.isEmpty()) target.事業所コード = site;
    TakeColumn(row, QStringLiteral("部門コード"), target.移動部門コード);
    TakeColumn(row, QStringLiteral("セクションコード"), target.移動セクションコード);
    target.移動担当者名 = names.staff;
    target.移動部門名 = names.department;
    target.移動セクション名 = names.section;
    move.Item("担当者名").SetText(names.staff);
    move.Item("部門名").SetText(names.department);
    move.Item("セクション名").SetText(names.section);
    for (const char* item : {"相手先略称", "相手先御担当者名", "営業活動摘要"})
        move.Item(item).SetText(Named(row, item));
    move.Item("発信状況").SetText(names.caller + names.means);
    move.Item("要件内容").SetText(names.matter + HandlingName(move, row));
}

/// Of a slot whose codes have lost a name the others are looked up one by one.
void TakeNamelessRow(MoveContext& move) {
    const auto row = move.diary.data.ReadMainUntold(CopiedRowStatement(move.source));
    if (!row || row->Eof()) return;
    const auto name = [&](const char* table, const char* column, const char* key, const char* code) {
        const auto named = move.diary.data.ReadMainUntold(NameStatement(table, column, key, Named(*row, code)));
        return named ? Named(*named, column) : QString();
    };
    TakeRow(move, *row,
            {name("M担当者", "氏名", "コード", "担当者コード"), name("M部門", "名称", "コード", "部門コード"),
             name("Mセクション", "名称", "コード", "セクションコード"), name("K発信区分", "名称", "区分", "発信区分"),
             name("K応対方法", "名称", "区分", "応対方法"), name("K要件分類", "名称", "区分", "要件分類")});
}

}  // namespace

void TakeSource(MoveContext& move) {
    TakeKey(move);
    ShowKey(move);
    std::unique_ptr<store::Recordset> row;
    if (!move.diary.session.NewSlotMode) {
        if (move.diary.data.OpenMainRecordset(row, SourceStatement(move.source)))
            TakeRow(move, *row,
                    {Named(*row, "担当者名"), Named(*row, "部門名"), Named(*row, "セクション名"),
                     Named(*row, "発信区分名"), Named(*row, "応対方法名"), Named(*row, "要件分類名")});
        else
            TakeNamelessRow(move);
    }
    move.PaintTarget();
}

QString MoveTitle(MoveContext& move) {
    const QString title = QStringLiteral("営業日程移動");
    const QString& site = move.diary.session.SiteCode;
    std::unique_ptr<store::Recordset> row;
    QString name;
    if (move.diary.data.OpenMainRecordset(row, "SELECT * FROM M事業所 WHERE コード = '" + site + "'"))
        TakeColumn(*row, QStringLiteral("名称"), name);
    if (site == items::ZeroMask(3)) name = QStringLiteral("全社");
    return name.trimmed().isEmpty() ? title : title + "(" + name + ")";
}

}  // namespace move
