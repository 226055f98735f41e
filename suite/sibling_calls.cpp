#include "suite/sibling_calls.h"

#include "items/display_forms.h"

namespace suite {

namespace {

constexpr int kSettleMilliseconds = 100;
constexpr int kPaceMilliseconds = 20;

QString WithoutTrailingBlanks(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// The key is stored without the blanks that the receiver's command line loses too.
LinkExchange ExchangeWith(const QString& receiver, const QString& information) {
    return {session::kProgramId, receiver, WithoutTrailingBlanks(information)};
}

QString KeyCondition(const LinkExchange& exchange, const QString& kind) {
    return AndLinkColumn(QStringLiteral("発信プログラムID"), exchange.sender) +
           AndLinkColumn(QStringLiteral("受信プログラムID"), exchange.receiver) +
           AndLinkColumn(QStringLiteral("起動連携情報"), exchange.key) +
           AndLinkColumn(QStringLiteral("連携区分"), kind);
}

}  // namespace

QString SiblingCalls::SendStartLink(screen::Form& mainForm, const QString& receiver, const QString& information) {
    mainForm.SetEnabled(false);
    staff_.ReadRunningStaffCode();
    const QString sent = items::StampText(clock_.Now());
    const QString deadline = items::StampText(clock_.Now());
    data_.ExecuteConfig(
        LinkRowStatement(context_, ExchangeWith(receiver, information), kStartMessage, sent, deadline, QString()));
    environment_.DB_CLOSEOPEN();
    host_.ProcessEvents();
    host_.Sleep(kSettleMilliseconds);
    return sent;
}

void SiblingCalls::TakeBackStartLink(screen::Form& mainForm, const QString& receiver, const QString& information,
                                     const QString& sent) {
    data_.ExecuteConfig("DELETE FROM プログラム連携情報 WHERE 発信日時 = '" + sent + "'" +
                        AndLinkColumn(QStringLiteral("ユーザID"), context_.UserId) +
                        KeyCondition(ExchangeWith(receiver, information), kStartMessage));
    mainForm.SetEnabled(true);
}

bool SiblingCalls::TakeReply(const LinkExchange& exchange, const QString& since, QString& reply) {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenConfigRecordset(row, "SELECT * FROM プログラム連携情報 WHERE 発信日時 >= '" + since + "'" +
                                            KeyCondition(exchange, kEndMessage)))
        return false;
    reply = row->Value(QStringLiteral("終了連携情報")).value_or(QString());
    // The look had no time to wait for a lock; the delete has.
    environment_.DB_CLOSEOPEN();
    data_.ExecuteConfig("DELETE FROM プログラム連携情報 WHERE 発信日時 = '" +
                        row->Value(QStringLiteral("発信日時")).value_or(QString()) + "'" +
                        KeyCondition(exchange, kEndMessage));
    return true;
}

QString SiblingCalls::WaitForEndLink(screen::Form& mainForm, const QString& receiver, const QString& information,
                                     const QString& since) {
    const LinkExchange exchange = ExchangeWith(receiver, information);
    context_.LinkWaitActive = true;
    host_.SetWaiting(receiver);
    QString reply;
    // Each look is at the store as it is now: another process's row may hide behind an open connection. Opening it
    // fifty times a second for nothing would keep the machine warm.
    while (!host_.Ended()) {
        if (environment_.ConfigStoreMayHaveChanged() && environment_.DB_CLOSEOPEN(kPaceMilliseconds) &&
            TakeReply(exchange, since, reply))
            break;
        host_.Sleep(kPaceMilliseconds);
        host_.ProcessEvents();
    }
    context_.EndLinkInfo = reply;
    context_.LinkWaitActive = false;
    mainForm.SetEnabled(true);
    host_.SetWaiting(QString());
    return reply;
}

}  // namespace suite
