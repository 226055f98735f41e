#include "diary/outcome_words.h"

#include "diary/focus_gate.h"

namespace diary {

QString DateShown(const QString& date) {
    return date.size() < 8 ? date : date.mid(0, 4) + "/" + date.mid(4, 2) + "/" + date.mid(6, 2);
}

QString SlotWords(const QString& date, const QString& start, const QString& end, const QString& party) {
    return (DateShown(date) + " " + start + "～" + end + " " + party).trimmed();
}

QString SlotWords(const DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    return SlotWords(key.SlotDate, key.StartTime, key.EndTime, diary.slot.相手先略称);
}

QString NotChosenWords(const ActivitySlot& slot) {
    QStringList missing;
    if (slot.発信区分 == 0) missing << QStringLiteral("発信者");
    if (slot.応対方法 == 0) missing << QStringLiteral("応対方法");
    if (slot.要件分類 == 0)
        missing << QStringLiteral("要件");
    else if (slot.対応分類 == 0)
        missing << QStringLiteral("対応");
    return missing.isEmpty() ? QString() : missing.join(u'、') + "が選ばれていません。";
}

QString MissingWords(const DiaryContext& diary) {
    static const char* const names[] = {
        "年",           "月",           "日",           "開始時刻の時", "開始時刻の分",
        "終了時刻の時", "終了時刻の分", "担当者コード", "部門コード",   "セクションコード"};
    if (const int missing = FirstMissingKeyItem(diary))
        return QString::fromUtf8(names[missing - 1]) + "が入力されていません。";
    const QString words = NotChosenWords(diary.slot);
    return words.isEmpty() && !diary.state.InputHappened ? QStringLiteral("入力がありません。") : words;
}

}  // namespace diary
