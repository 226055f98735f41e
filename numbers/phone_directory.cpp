#include "numbers/phone_directory.h"

#include "items/display_forms.h"
#include "items/text_rules.h"

namespace numbers {

using items::EscapeSqlText;
using items::WithoutQuotes;

void PhoneDirectory::UpsertPhoneDirectory(const PhoneEntry& entry) {
    const QString stamp = "'" + items::StampText(clock_.Now()) + "'";
    const QString digits = items::DigitsOnly(entry.電話);
    if (entry.電話.trimmed().size() < 7 || digits.size() < 7) return;

    const QString kind = QString::number(entry.法人個人区分);
    const QString user = session::UserStamp(context_);
    std::unique_ptr<store::Recordset> found;
    const bool known = data_.OpenMainRecordset(found, "SELECT * FROM M電話番号 WHERE 電話番号 = '" + digits + "'");
    if (known) {
        data_.ExecuteMain("UPDATE M電話番号 SET 電話 = '" + WithoutQuotes(entry.電話) + "', 名称 = '" +
                          EscapeSqlText(entry.名称) + "', 郵便番号 = '" + WithoutQuotes(entry.郵便番号) +
                          "', 住所A = '" + EscapeSqlText(entry.住所A) + "', 住所B = '" + EscapeSqlText(entry.住所B) +
                          "', 住所C = '" + EscapeSqlText(entry.住所C) + "', 法人個人区分 = '" + kind +
                          "', ユーザID = '" + user + "', 更新日付 = " + stamp + " WHERE 電話番号 = '" + digits + "'");
        return;
    }
    const QStringList values{WithoutQuotes(entry.電話),
                             EscapeSqlText(entry.名称),
                             WithoutQuotes(entry.郵便番号),
                             EscapeSqlText(entry.住所A),
                             EscapeSqlText(entry.住所B),
                             EscapeSqlText(entry.住所C),
                             digits,
                             kind,
                             user};
    data_.ExecuteMain(
        "INSERT INTO M電話番号 (電話,名称,郵便番号,住所A,住所B,住所C,電話番号,法人個人区分,ユーザID,登録日付) VALUES "
        "('" +
        values.join(QStringLiteral("', '")) + "', " + stamp + ")");
}

}  // namespace numbers
