#include "diary/replaced_slot.h"

#include "diary/outcome_words.h"
#include "diary/slot_statements.h"
#include "items/display_forms.h"

namespace diary {

namespace {

QString Of(const store::Recordset& row, const char* column) {
    return row.Value(QString::fromUtf8(column)).value_or(QString());
}

bool IsAtLoadedStart(const StoredRow& row, const LoadedRow& loaded) {
    return row["担当者コード"] == loaded.担当者コード && row["日付"] == loaded.日付 &&
           row["開始時刻"] == loaded.開始時刻;
}

QString NewestStamp(const QString& 登録日付, const QString& 更新日付) {
    return std::max(登録日付, 更新日付);
}

/// A row of another end has taken the place of the loaded one when it is younger; otherwise it stood beside it.
bool ChangedSinceLoad(const StoredRow& row, const LoadedRow& loaded) {
    if (!IsAtLoadedStart(row, loaded)) return false;
    if (row["終了時刻"] != loaded.終了時刻)
        return NewestStamp(row["登録日付"], row["更新日付"]) > NewestStamp(loaded.登録日付, loaded.更新日付);
    return row["登録日付"] != loaded.登録日付 || row["更新日付"] != loaded.更新日付 ||
           row["ユーザID"] != loaded.ユーザID;
}

QString Replacing(const StoredRow& row) {
    return row["開始時刻"] + "～" + row["終了時刻"] + " " +
           (row["相手先略称"].isEmpty() ? QString() : row["相手先略称"] + " ") + "を置き換えます。";
}

bool AllDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// The moment of a stamp as it is said on a day "yyyymmdd": "10:42 に", with the date when that is another one. Empty
/// for what is no stamp.
QString SaidOn(const QString& today, const QString& stamp) {
    if (stamp.size() != 15 || !AllDigits(stamp.left(8)) || !AllDigits(stamp.mid(9))) return {};
    QString said = stamp.mid(9, 2) + ":" + stamp.mid(11, 2) + " に";
    if (stamp.left(8) == today) return said;
    const auto number = [&stamp](int at) { return QString::number(stamp.mid(at, 2).toInt()); };
    said.prepend(number(4) + "月" + number(6) + "日 ");
    return stamp.left(4) == today.left(4) ? said : stamp.left(4) + "年" + said;
}

/// The staff member whose code stands in a user's stamp, between a login and a computer that may have digits as well;
/// the stamp itself when nobody's does.
QString WhoStamped(session::DataAccess& data, const QString& stamp) {
    constexpr int kCode = 5;
    for (int at = 0; at + kCode <= stamp.size(); ++at) {
        const QString code = stamp.mid(at, kCode);
        if (!AllDigits(code)) continue;
        const auto row = data.ReadMainUntold("SELECT M担当者.氏名 FROM M担当者 WHERE M担当者.コード = '" + code + "'");
        const QString name = row ? Of(*row, "氏名").trimmed() : QString();
        if (!name.isEmpty()) return name;
    }
    return stamp;
}

QString Changed(DiaryContext& diary, const StoredRow& row) {
    const QString who = WhoStamped(diary.data, row["ユーザID"].trimmed());
    return SaidOn(items::DateText(diary.clock.Now()), NewestStamp(row["登録日付"], row["更新日付"])) +
           (who.isEmpty() ? QStringLiteral("修正されています。") : who + "さんが修正しています。");
}

}  // namespace

std::optional<std::vector<StoredRow>> StoredRowsAtStart(session::DataAccess& data, const QString& staff,
                                                        const QString& date, const QString& start) {
    const auto found =
        data.ReadMainUntold(kSelectDetail + StartKeyCondition(staff, date, start) + " ORDER BY T営業活動明細.終了時刻");
    if (!found) return std::nullopt;
    std::vector<StoredRow> rows;
    for (; !found->Eof(); found->MoveNext()) {
        StoredRow& row = rows.emplace_back();
        for (const QString& column : found->Columns())
            if (const auto value = found->Value(column)) row[column] = *value;
    }
    return rows;
}

std::optional<std::vector<StoredRow>> StoredRowsAtStart(DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    return StoredRowsAtStart(diary.data, key.StaffCode, key.SlotDate, key.StartTime);
}

LoadedRow LoadedRowOf(const store::Recordset& row) {
    return {Of(row, "担当者コード"), Of(row, "日付"),     Of(row, "開始時刻"), Of(row, "終了時刻"),
            Of(row, "登録日付"),     Of(row, "更新日付"), Of(row, "ユーザID")};
}

QString WordsBeforeSave(DiaryContext& diary, const std::vector<StoredRow>& rows) {
    const LoadedRow& loaded = diary.state.Loaded;
    QString words;
    for (const StoredRow& row : rows) {
        if (!IsAtLoadedStart(row, loaded) || row["終了時刻"] != loaded.終了時刻) words += Replacing(row);
        if (ChangedSinceLoad(row, loaded)) words += Changed(diary, row);
    }
    return words + NotChosenWords(diary.slot);
}

}  // namespace diary
