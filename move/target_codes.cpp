#include "move/target_codes.h"

#include <algorithm>

#include "diary/staff_resolution.h"
#include "items/text_rules.h"

namespace move {

using session::TakeColumn;

namespace {

/// A column of the found row and the text of the target that takes it.
struct Taken {
    const char* column;
    QString TargetSlot::*field;
    bool own = true;  ///< the code doesn't stand without it, where the others may be chosen apart
};

const Taken kStaff[] = {{"コード", &TargetSlot::移動担当者コード},
                        {"氏名", &TargetSlot::移動担当者名},
                        {"事業所コード", &TargetSlot::事業所コード},
                        {"部門コード", &TargetSlot::移動部門コード, false},
                        {"部門名", &TargetSlot::移動部門名, false},
                        {"セクションコード", &TargetSlot::移動セクションコード, false},
                        {"セクション名", &TargetSlot::移動セクション名, false}};
const Taken kDepartment[] = {{"コード", &TargetSlot::移動部門コード}, {"名称", &TargetSlot::移動部門名}};
const Taken kSection[] = {{"コード", &TargetSlot::移動セクションコード}, {"名称", &TargetSlot::移動セクション名}};

/// `columns` begin with the item's own code.
template <std::size_t Count>
void CodeLeft(MoveContext& move, const char* item, const Taken (&columns)[Count],
              const std::function<QString(const QString& code)>& statement) {
    screen::Control& control = move.Item(item);
    const QString code = items::FormatToMask(control.Text(), items::ZeroMask(control.maxLength));
    // A code whose row was missing when it came may have got one.
    const bool complete = code.isEmpty() || std::none_of(columns, columns + Count, [&move](const Taken& taken) {
                              return taken.own && (move.target.*taken.field).isEmpty();
                          });
    if (code == move.target.*columns[0].field && complete) {
        control.SetText(code);
        return;
    }
    const bool isCode = !code.isEmpty() && items::DigitsOnly(code) == code;
    std::unique_ptr<store::Recordset> row;
    const bool found = isCode && move.diary.data.OpenMainRecordset(row, statement(code));
    for (const Taken& taken : columns) {
        QString& field = move.target.*taken.field;
        // No row of the diary is without a site: it stays what it was until somebody brings another.
        const bool site = taken.field == &TargetSlot::事業所コード;
        const QString former = field;
        if (found)
            TakeColumn(*row, QString::fromUtf8(taken.column), field);
        else if (!site)
            field.clear();
        if (site && field.isEmpty()) field = former;
    }
    move.PaintTarget();
    if (found)
        move.ShowNotice(QString());
    else if (isCode)
        move.ShowNotice(QStringLiteral("該当情報が有りません。"));
    else
        move.ShowNotice(kWrongCode);
}

}  // namespace

void StaffCodeLeft(MoveContext& move) {
    CodeLeft(move, "移動担当者コード", kStaff,
             [&move](const QString& code) { return diary::StaffStatement(move.diary.session.SiteCode, code); });
}

void DepartmentCodeLeft(MoveContext& move) {
    CodeLeft(move, "移動部門コード", kDepartment, diary::DepartmentStatement);
}

void SectionCodeLeft(MoveContext& move) {
    CodeLeft(move, "移動セクションコード", kSection, diary::SectionStatement);
}

}  // namespace move
