#include "identity/permissions.h"

#include "items/text_rules.h"

namespace identity {

namespace {

/// A permit grants when it reads as 0; only its leading digits count, so a text without any grants too.
bool Grants(const QString& permit) {
    for (const QChar c : permit) {
        if (c < u'0' || c > u'9') break;
        if (c != u'0') return false;
    }
    return true;
}

/// Only the menus of the suite narrow the search for a staff member's own permits.
QString MenuCondition(const QString& menu) {
    static const QStringList menus{"営業支援", "営業支援データ管理", "営業支援補助機能", "営業支援サービスメニュ"};
    return menus.contains(menu) ? " AND 担当者別操作許可プログラム.業務メニュ = '" + menu + "'" : QString();
}

}  // namespace

bool Permissions::EnsureProgramPermission(const QString& menu, const QString& programId, int operation) {
    CheckSignedInPermission(menu, programId, operation);
    // A company without PINs has chosen not to control access at all.
    if (context_.PinRequired != 1) return true;
    if (context_.PinConfirmed) return true;
    dialog_.ConfirmPin(menu + "/暗証確認");
    return context_.PinConfirmed && EvaluatePermission(menu, programId, operation);
}

bool Permissions::CheckSignedInPermission(const QString& menu, const QString& programId, int operation) {
    context_.PinConfirmed = false;
    if (!staff_.ReadRunningStaffCode() || !staff_.LoadRunningStaff(context_.RunningStaffCode)) return false;
    context_.PinConfirmed = EvaluatePermission(menu, programId, operation);
    return context_.PinConfirmed;
}

bool Permissions::EvaluatePermission(const QString& menu, const QString& programId, int operation) {
    std::unique_ptr<store::Recordset> row;
    bool ownRow = false;
    if (!context_.RunningStaffCode.isEmpty()) {
        ownRow = data_.OpenMainRecordset(row,
                                         "SELECT 担当者別操作許可プログラム.* FROM 担当者別操作許可プログラム"
                                         " WHERE 担当者別操作許可プログラム.担当者コード = '" +
                                             context_.RunningStaffCode + "'" + MenuCondition(menu) +
                                             " AND 担当者別操作許可プログラム.プログラムID = '" + programId + "'");
    }
    bool granted = false;
    if (ownRow) {
        for (int number = 0; number < 8; ++number)
            context_.OperationPermits[static_cast<std::size_t>(number)] =
                row->Value(kOperationPermitColumns[number]).value_or(QString());
        granted = Grants(context_.OperationPermits[kOperate]);
    } else {
        granted = MenuRowGrants(menu, programId);
    }
    if (!granted || operation < 0 || operation > 7) return granted;
    return Grants(context_.OperationPermits[static_cast<std::size_t>(operation)]);
}

bool Permissions::MenuRowGrants(const QString& menu, const QString& programId) {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenConfigRecordset(row, "SELECT * FROM " + menu + " WHERE プログラムID = '" + programId + "'"))
        return false;
    const int programClass = session::NumberColumn(*row, QStringLiteral("処理分類")).value_or(0);
    if (programClass < 0 || programClass > 9) return true;
    // Class 3 works on the data of one site: in a company with sites the head office has no such data.
    if (programClass == 3) {
        if (context_.SiteCount < 1) return true;
        if (context_.OperatingSiteCode == QLatin1String("000")) return false;
    }
    return Grants(context_.ClassPermit[static_cast<std::size_t>(programClass)]);
}

void Permissions::UpdateConditionItems(const QString& menu, const QString& programId, const QStringList& names) {
    QStringList settings;
    for (int position = 0; position < 26; ++position)
        settings.append(QStringLiteral(" 条件項目名%1 = '%2'").arg(QChar(u'A' + position)).arg(names.value(position)));
    const QString sql = "UPDATE " + menu + " SET " + settings.join(u',') + " WHERE プログラムID = '" + programId + "'";
    if (!data_.ExecuteConfig(sql)) host_.Tell(QStringLiteral("システムデータベースに問題があり登録できません"));
}

}  // namespace identity
