#include "suite/link_messages.h"

#include "items/display_forms.h"

namespace suite {

using session::kProgramId;

void LinkMessages::ReceiveStartLink(const QString& tail, const QString& earliest) {
    context_.CallerProgramId.clear();
    std::unique_ptr<store::Recordset> message;
    const QString sql = "SELECT * FROM プログラム連携情報 WHERE 発信日時 >= '" + earliest +
                        "' AND 受信プログラムID = '" + kProgramId + "' AND 起動連携情報 = '" + tail +
                        "' AND 連携区分 = '00'";
    if (!data_.OpenConfigRecordset(message, sql)) return;
    session::TakeColumn(*message, QStringLiteral("発信プログラムID"), context_.CallerProgramId);
    session::TakeColumn(*message, QStringLiteral("起動連携情報"), context_.StartLinkKey);
    const QString sent = message->Value(QStringLiteral("発信日時")).value_or(QString());
    data_.ExecuteConfig("DELETE FROM プログラム連携情報 WHERE 発信日時 = '" + sent + "' AND 発信プログラムID = '" +
                        context_.CallerProgramId + "' AND 受信プログラムID = '" + kProgramId + "' AND 連携区分 = '00'");
}

void LinkMessages::SendEndLink(const QString& result) {
    staff_.ReadRunningStaffCode();
    context_.EndLinkInfo = result;
    const QString now = items::StampText(clock_.Now());
    const QString values = QStringList{now,
                                       context_.CallerProgramId,
                                       kProgramId,
                                       now,
                                       QStringLiteral("99"),
                                       context_.StartLinkKey,
                                       result,
                                       context_.OperatingSiteCode,
                                       context_.RunningStaffCode,
                                       context_.UserId}
                               .join(QStringLiteral("', '"));
    data_.ExecuteConfig(
        "INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,受信プログラムID,受信期限,連携区分,"
        "起動連携情報,終了連携情報,運用事業所コード,起動担当者コード,ユーザID)VALUES ('" +
        values + "')");
    environment_.DB_CLOSEOPEN();
}

}  // namespace suite
