#include "identity/staff_identity.h"

#include "session/environment.h"

namespace identity {

using session::TakeColumn;

const QStringList kOperationPermitColumns{"操作許可", "入力許可",     "修正許可",         "削除許可",
                                          "印刷許可", "プレビュ許可", "テキスト出力許可", "イメージ出力許可"};

namespace {

QString ClassPermitColumn(std::size_t classNumber) {
    return QStringLiteral("処理分類%1操作許可").arg(classNumber);
}

}  // namespace

void TakeRights(session::RunningStaff& staff, const store::Recordset& row) {
    staff.RunningStaffAccessLevel = session::NumberColumn(row, QStringLiteral("アクセス権限")).value_or(0);
    for (std::size_t number = 0; number < staff.ClassPermit.size(); ++number)
        staff.ClassPermit[number] = row.Value(ClassPermitColumn(number)).value_or(QStringLiteral("0"));
    for (std::size_t operation = 0; operation < staff.OperationPermits.size(); ++operation)
        staff.OperationPermits[operation] =
            row.Value(kOperationPermitColumns[static_cast<qsizetype>(operation)]).value_or(QString());
}

bool StaffIdentity::ReadRunningStaffCode() {
    context_.RunningStaffCode.clear();
    std::unique_ptr<store::Recordset> row;
    if (data_.OpenConfigRecordset(row, session::kEnvironmentRowSql))
        TakeColumn(*row, QStringLiteral("起動担当者コード"), context_.RunningStaffCode);
    return !context_.RunningStaffCode.trimmed().isEmpty();
}

bool StaffIdentity::LoadRunningStaff(const QString& code) {
    std::unique_ptr<store::Recordset> row;
    const bool found =
        data_.OpenMainRecordset(row, "SELECT M担当者.* FROM M担当者 WHERE M担当者.コード = '" + code + "'");
    TakeRights(context_, *row);
    if (!found) return false;
    TakeColumn(*row, QStringLiteral("コード"), context_.RunningStaffCode);
    TakeColumn(*row, QStringLiteral("氏名"), context_.RunningStaffName);
    TakeColumn(*row, QStringLiteral("事業所コード"), context_.RunningStaffSite);
    TakeColumn(*row, QStringLiteral("部門コード"), context_.RunningStaffDepartment);
    TakeColumn(*row, QStringLiteral("セクションコード"), context_.RunningStaffSection);
    TakeColumn(*row, QStringLiteral("役職コード"), context_.RunningStaffPost);
    TakeColumn(*row, QStringLiteral("社員区分"), context_.RunningStaffEmploymentClass);
    return true;
}

void StaffIdentity::StoreRunningStaffCode() {
    if (context_.RunningStaffCode.trimmed().isEmpty()) return;
    const QString sql =
        "UPDATE 動作環境定義 SET 起動担当者コード = '" + context_.RunningStaffCode + "'  WHERE 動作環境定義ID = '001'";
    if (!data_.ExecuteConfigLogged(sql)) {
        host_.Tell(QStringLiteral("データベースに問題が発生し修正できませんでした。"));
        return;
    }
    LoadRunningStaff(context_.RunningStaffCode);
}

}  // namespace identity
