#include "suite/link_row.h"

#include "items/text_rules.h"

namespace suite {

QString LinkRowStatement(const session::SessionContext& context, const LinkExchange& exchange, const QString& kind,
                         const QString& sent, const QString& deadline, const QString& result) {
    QStringList values{sent,   exchange.sender,           exchange.receiver,        deadline,      kind, exchange.key,
                       result, context.OperatingSiteCode, context.RunningStaffCode, context.UserId};
    for (QString& value : values)
        value = items::EscapeSqlText(value);
    return "INSERT INTO プログラム連携情報 (発信日時,発信プログラムID,受信プログラムID,受信期限,連携区分,"
           "起動連携情報,終了連携情報,運用事業所コード,起動担当者コード,ユーザID) VALUES ('" +
           values.join(QStringLiteral("', '")) + "')";
}

QString AndLinkColumn(const QString& column, const QString& value) {
    return " AND " + column + " = '" + items::EscapeSqlText(value) + "'";
}

}  // namespace suite
