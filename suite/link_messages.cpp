#include "suite/link_messages.h"

#include "items/display_forms.h"
#include "items/text_rules.h"
#include "suite/link_row.h"

namespace suite {

QString LinkMessages::ReceiveStartLink(const QString& tail, const QString& earliest) {
    context_.CallerProgramId.clear();
    std::unique_ptr<store::Recordset> message;
    const QString sql = "SELECT * FROM プログラム連携情報 WHERE 発信日時 >= '" + earliest + "'" +
                        AndLinkColumn(QStringLiteral("受信プログラムID"), programId_) +
                        AndLinkColumn(QStringLiteral("起動連携情報"), tail) +
                        AndLinkColumn(QStringLiteral("連携区分"), kStartMessage);
    if (!data_.OpenConfigRecordset(message, sql)) return {};
    session::TakeColumn(*message, QStringLiteral("発信プログラムID"), context_.CallerProgramId);
    session::TakeColumn(*message, QStringLiteral("起動連携情報"), context_.StartLinkKey);
    const QString sent = message->Value(QStringLiteral("発信日時")).value_or(QString());
    data_.ExecuteConfig("DELETE FROM プログラム連携情報 WHERE 発信日時 = '" + sent + "'" +
                        AndLinkColumn(QStringLiteral("発信プログラムID"), context_.CallerProgramId) +
                        AndLinkColumn(QStringLiteral("受信プログラムID"), programId_) +
                        // Another client may have asked in the same second; its message is for another run.
                        AndLinkColumn(QStringLiteral("起動連携情報"), context_.StartLinkKey) +
                        AndLinkColumn(QStringLiteral("連携区分"), kStartMessage));
    return sent;
}

bool LinkMessages::SendEndLink(const QString& result) {
    staff_.ReadRunningStaffCode();
    context_.EndLinkInfo = result;
    const QString now = items::StampText(clock_.Now());
    const bool sent = data_.ExecuteConfig(LinkRowStatement(
        context_, {context_.CallerProgramId, programId_, context_.StartLinkKey}, kEndMessage, now, now, result));
    environment_.DB_CLOSEOPEN();
    return sent;
}

}  // namespace suite
