#include "diary/staff_resolution.h"

#include "diary/masked_item.h"
#include "diary/painting.h"
#include "diary/slot_loading.h"
#include "items/text_rules.h"

namespace diary {

using session::TakeColumn;

QString StaffStatement(const QString& site, const QString& code) {
    const QString allSites = items::ZeroMask(3);
    QString sql =
        "SELECT M担当者.*, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名"
        " FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN M担当者 ON M部門.コード = M担当者.部門コード)"
        " ON Mセクション.コード = M担当者.セクションコード WHERE M担当者.コード = '" +
        code + "'";
    if (site != allSites)
        sql += " AND (M担当者.事業所コード = '" + site + "' OR M担当者.事業所コード = '" + allSites + "')";
    return sql + " AND M担当者.在籍区分 = '0'";
}

QString DepartmentStatement(const QString& code) {
    return "SELECT M部門.* FROM M部門 WHERE M部門.コード = '" + code + "'";
}

QString SectionStatement(const QString& code) {
    return "SELECT Mセクション.* FROM Mセクション WHERE Mセクション.コード = '" + code + "'";
}

bool ResolveStaff(DiaryContext& diary, const QString& code) {
    std::unique_ptr<store::Recordset> row;
    if (!diary.data.OpenMainRecordset(row, StaffStatement(diary.session.SiteCode, code))) return false;
    TakeColumn(*row, QStringLiteral("コード"), diary.session.StaffCode);
    TakeColumn(*row, QStringLiteral("氏名"), diary.slot.担当者名);
    TakeColumn(*row, QStringLiteral("事業所コード"), diary.session.SiteCode);
    TakeColumn(*row, QStringLiteral("部門コード"), diary.slot.部門コード);
    TakeColumn(*row, QStringLiteral("部門名"), diary.slot.部門名);
    TakeColumn(*row, QStringLiteral("セクションコード"), diary.slot.セクションコード);
    TakeColumn(*row, QStringLiteral("セクション名"), diary.slot.セクション名);
    return true;
}

bool ResolveDepartment(DiaryContext& diary, const QString& code) {
    std::unique_ptr<store::Recordset> row;
    if (!diary.data.OpenMainRecordset(row, DepartmentStatement(code))) return false;
    TakeColumn(*row, QStringLiteral("コード"), diary.slot.部門コード);
    TakeColumn(*row, QStringLiteral("名称"), diary.slot.部門名);
    return true;
}

bool ResolveSection(DiaryContext& diary, const QString& code) {
    std::unique_ptr<store::Recordset> row;
    if (!diary.data.OpenMainRecordset(row, SectionStatement(code))) return false;
    TakeColumn(*row, QStringLiteral("コード"), diary.slot.セクションコード);
    TakeColumn(*row, QStringLiteral("名称"), diary.slot.セクション名);
    return true;
}

namespace {

/// The common way of the three code items; `resolve` looks up and takes, `field` is what the item stands for.
void CodeLeft(DiaryContext& diary, const char* item, QString& field, bool (*resolve)(DiaryContext&, const QString&),
              void (*found)(DiaryContext&) = nullptr) {
    const auto code = ChangedCode(diary, item, items::ZeroMask(diary.Item(item).maxLength), field);
    if (!code) return;
    diary.state.InputHappened = true;
    if (code->isEmpty()) {
        field.clear();
    } else if (resolve(diary, *code)) {
        if (found) found(diary);
        diary.state.NoticeText.clear();
    } else {
        diary.state.NoticeText = kNotFound;
    }
    PaintScreen(diary);
    diary.ShowNotice(diary.state.NoticeText);
}

}  // namespace

void StaffCodeLeft(DiaryContext& diary) {
    CodeLeft(diary, "担当者コード", diary.session.StaffCode, ResolveStaff, LoadSlotExact);
}

void DepartmentCodeLeft(DiaryContext& diary) {
    CodeLeft(diary, "部門コード", diary.slot.部門コード, ResolveDepartment);
}

void SectionCodeLeft(DiaryContext& diary) {
    CodeLeft(diary, "セクションコード", diary.slot.セクションコード, ResolveSection);
}

}  // namespace diary
