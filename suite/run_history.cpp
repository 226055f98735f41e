#include "suite/run_history.h"

#include "items/display_forms.h"
#include "items/text_rules.h"

namespace suite {

using items::EscapeSqlText;

void RunHistory::WriteRow(const QString& summary) {
    context_.RunCounter += 1;
    const QString counter =
        QStringLiteral("%1").arg(static_cast<qint64>(context_.RunCounter), 12, 10, QLatin1Char('0'));
    const QString values =
        QStringList{
            items::StampText(clock_.Now()), session::kProgramId,           counter, summary, context_.OperatingSiteCode,
            context_.RunningStaffCode,      EscapeSqlText(context_.UserId)}
            .join(QStringLiteral("', '"));
    const QString sql = QStringLiteral(
                            "INSERT INTO プログラム稼動履歴 (実行日付,プログラムID,proccounter,摘要,"
                            "運用事業所コード,起動担当者コード,ユーザID)VALUES ('") +
                        values + QStringLiteral("')");
    store::Fault dropped;
    // The row must be written even when it tells of a statement that failed for its zero characters.
    QString writable = sql;
    writable.remove(QChar(u'\0'));
    if (context_.ConfigConnection) context_.ConfigConnection->Execute(writable, dropped);
}

void RunHistory::WriteStartHistory(const QString& tail) {
    WriteRow(QStringLiteral("開始 ") + EscapeSqlText(tail));
}

void RunHistory::WriteEndHistory() {
    WriteRow(QStringLiteral("終了"));
}

void RunHistory::WriteOutputHistory(const QString& sql) {
    WriteRow(QStringLiteral("出力終了 ") + EscapeSqlText(sql));
}

void RunHistory::WriteErrorHistory(const QString& text) {
    WriteRow(QStringLiteral("エラー ") + EscapeSqlText(text));
}

}  // namespace suite
