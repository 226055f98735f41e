#include "suite/sibling_calls.h"

#include <QElapsedTimer>

#include "items/display_forms.h"
#include "items/text_rules.h"

namespace suite {

namespace {

constexpr int kSettleMilliseconds = 100;
constexpr int kPaceMilliseconds = 20;
/// How long the answer of a program that has ended may take: it may have handed over to another one, or lie in a store
/// that is slow to show it.
constexpr int kAfterEndMilliseconds = 5000;

/// The key is stored without the blanks that the receiver's command line loses too.
LinkExchange ExchangeWith(const QString& receiver, const QString& information) {
    return {session::kProgramId, receiver, items::WithoutBlanks(information)};
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

/// The way out of a wait, which opens when the program that is waited for has ended without a word.
class SiblingCalls::WayOut {
  public:
    WayOut(screen::ScreenHost& host, screen::Form& form, const QString& receiver,
           const platform::StartedProgram& program)
        : host_(host), form_(form), receiver_(receiver), program_(program) {}
    ~WayOut() { form_.onEscapeDisabled = nullptr; }
    WayOut(const WayOut&) = delete;
    WayOut& operator=(const WayOut&) = delete;

    /// Opens it when it is time. The client's clock may stand still, or be set; this goes by the machine's own.
    void Look() {
        if (form_.onEscapeDisabled || program_.Lives()) return;
        if (!sinceEnd_.isValid()) sinceEnd_.start();
        if (!sinceEnd_.hasExpired(kAfterEndMilliseconds)) return;
        host_.SetWaiting(receiver_, true);
        form_.onEscapeDisabled = [this] {
            taken_ = true;
            host_.SetWaiting(QString());
        };
    }
    bool Taken() const { return taken_; }

  private:
    screen::ScreenHost& host_;
    screen::Form& form_;
    QString receiver_;
    const platform::StartedProgram& program_;
    QElapsedTimer sinceEnd_;
    bool taken_ = false;
};

std::optional<QString> SiblingCalls::WaitForEndLink(screen::Form& mainForm, const QString& receiver,
                                                    const QString& information, const QString& since,
                                                    const QString& sent, const platform::StartedProgram& program) {
    const LinkExchange exchange = ExchangeWith(receiver, information);
    context_.LinkWaitActive = true;
    host_.SetWaiting(receiver);
    WayOut wayOut(host_, mainForm, receiver, program);
    QString reply;
    bool answered = false;
    // Each look is at the store as it is now: another process's row may hide behind an open connection. Opening it
    // fifty times a second for nothing would keep the machine warm.
    while (!answered && !wayOut.Taken() && !host_.Ended()) {
        answered = environment_.ConfigStoreMayHaveChanged() && environment_.DB_CLOSEOPEN(kPaceMilliseconds) &&
                   TakeReply(exchange, since, reply);
        if (answered) break;
        wayOut.Look();
        host_.Sleep(kPaceMilliseconds);
        host_.ProcessEvents();
    }
    // The looks had no time to wait for a lock; what comes behind them has. The answer may have come with the key.
    if (!answered) environment_.DB_CLOSEOPEN();
    answered = answered || (wayOut.Taken() && TakeReply(exchange, since, reply));
    context_.LinkWaitActive = false;
    host_.SetWaiting(QString());
    if (answered) {
        context_.EndLinkInfo = reply;
        mainForm.SetEnabled(true);
        return reply;
    }
    if (wayOut.Taken()) TakeBackStartLink(mainForm, receiver, information, sent);
    return std::nullopt;
}

}  // namespace suite
