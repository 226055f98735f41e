#include "move/move_statements.h"

#include <QHash>

#include "diary/date_time_entry.h"
#include "diary/slot_statements.h"
#include "diary/text_items.h"
#include "session/insert_builder.h"
#include "session/schema.h"

namespace move {

namespace {

QString KeyCondition(const SlotKey& key) {
    return " WHERE [T営業活動明細].[担当者コード] = '" + key.担当者コード + "' AND [T営業活動明細].[日付] = '" +
           key.日付 + "' AND [T営業活動明細].[開始時刻] = '" + key.開始時刻 + "' AND [T営業活動明細].[終了時刻] = '" +
           key.終了時刻 + "'";
}

QString Minutes(const SlotKey& key) {
    return QString::number(diary::ActivityMinutes(key.開始時刻, key.終了時刻));
}

/// What a copy has of its own; all other columns are those of its source.
QHash<QString, QString> OwnValues(const session::SessionContext& session, const TargetSlot& target,
                                  const QString& stamp) {
    const SlotKey key = target.Key();
    QHash<QString, QString> values{{"担当者コード", key.担当者コード},
                                   {"日付", key.日付},
                                   {"開始時刻", key.開始時刻},
                                   {"終了時刻", key.終了時刻},
                                   {"事業所コード", target.事業所コード},
                                   {"部門コード", target.移動部門コード},
                                   {"セクションコード", target.移動セクションコード},
                                   {"承認日付", {}},
                                   {"承認者コード", {}},
                                   {"承認区分", "0"},
                                   {"ユーザID", UserStamp(session)},
                                   {"登録日付", stamp},
                                   {"更新日付", {}}};
    for (const QString& kind : session::DocumentKinds())
        values[kind + "新規区分"] = QStringLiteral("0");
    return values;
}

}  // namespace

QString SourceStatement(const SlotKey& key) {
    return "SELECT T営業活動明細.*, M担当者.氏名 AS 担当者名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名,"
           " K発信区分.名称 AS 発信区分名, K応対方法.名称 AS 応対方法名, K要件分類.名称 AS 要件分類名"
           " FROM T営業活動明細"
           " INNER JOIN M担当者 ON M担当者.コード = T営業活動明細.担当者コード"
           " INNER JOIN Mセクション ON Mセクション.コード = T営業活動明細.セクションコード"
           " INNER JOIN M部門 ON M部門.コード = T営業活動明細.部門コード"
           " INNER JOIN K発信区分 ON K発信区分.区分 = T営業活動明細.発信区分"
           " INNER JOIN K応対方法 ON K応対方法.区分 = T営業活動明細.応対方法"
           " INNER JOIN K要件分類 ON K要件分類.区分 = T営業活動明細.要件分類" +
           diary::StartKeyCondition(key.担当者コード, key.日付, key.開始時刻) + " AND T営業活動明細.終了時刻 = '" +
           key.終了時刻 + "'";
}

QString NameStatement(const QString& table, const QString& column, const QString& key, const QString& code) {
    return "SELECT " + table + "." + column + " FROM " + table + " WHERE " + table + "." + key + " = '" + code + "'";
}

QString CopiedRowStatement(const SlotKey& key) {
    return "SELECT TOP 1 * FROM T営業活動明細" + KeyCondition(key);
}

QString MoveStatement(const session::SessionContext& session, const SlotKey& source, const TargetSlot& target,
                      const QString& stamp) {
    const SlotKey key = target.Key();
    return "UPDATE [T営業活動明細] SET [担当者コード] = '" + key.担当者コード + "',[日付] = '" + key.日付 +
           "',[開始時刻] = '" + key.開始時刻 + "',[終了時刻] = '" + key.終了時刻 + "',[事業所コード] = '" +
           target.事業所コード + "',[部門コード] = '" + target.移動部門コード + "',[セクションコード] = '" +
           target.移動セクションコード + "',[活動時間] = " + Minutes(key) +
           ",[承認日付] = '',[承認者コード] = '',[承認区分] = '0',[ユーザID] = '" + UserStamp(session) +
           "',[更新日付] = '" + stamp + "'" + KeyCondition(source);
}

QString AddStatement(const session::SessionContext& session, const store::Recordset& row, const TargetSlot& target,
                     const QString& stamp) {
    session::InsertBuilder insert(QStringLiteral("T営業活動明細"));
    const QHash<QString, QString> own = OwnValues(session, target, stamp);
    for (const QString& column : session::FindTable(QStringLiteral("T営業活動明細"))->ColumnNames()) {
        // The suite's copies never say how the name was entered; a later load keeps what its screen has.
        if (column == QStringLiteral("相手先名称入力区分")) continue;
        const QString content = row.Value(column).value_or(QString());
        if (column == QStringLiteral("活動時間"))
            insert.Bare(column, Minutes(target.Key()));
        else if (own.contains(column))
            insert.Quoted(column, own[column]);
        else
            diary::AddText(insert, column, content);
    }
    return insert.Statement();
}

}  // namespace move
