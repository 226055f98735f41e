#include "suite/viewing_log.h"

#include "items/display_forms.h"
#include "session/insert_builder.h"

namespace suite {

namespace {

const QString kSeries = QStringLiteral("01110");

/// How often in a row a series may give one taken number before it counts as standing still.
constexpr int kMostRepeats = 10;

}  // namespace

bool ViewingLog::IsTaken(const QString& baseDate, const QString& number) {
    std::unique_ptr<store::Recordset> row;
    return data_.OpenMainRecordset(row, "SELECT 閲覧No FROM T閲覧 WHERE 事業所コード = '" + context_.SiteCode +
                                            "' AND 番号基準日付 = '" + baseDate + "' AND 閲覧No = '" + number + "'");
}

ViewingLog::Drawn ViewingLog::DrawNumber(const QString& baseDate) {
    QString previous;
    for (int repeats = 0;;) {
        const QString number = series_.IssueNumber(kSeries, baseDate, context_.OperatingSiteCode);
        if (!IsTaken(baseDate, number)) return {number, true};
        // A series that stands still would keep the user here for ever. One that counts may give a number again: a
        // client that read the count long ago writes it back late. That ends when it has written.
        repeats = number == previous ? repeats + 1 : 0;
        const bool counts = !number.isEmpty() && number != numbers::kNoNumber;
        if (repeats == (counts ? kMostRepeats : 1)) return {number, false};
        previous = number;
    }
}

void ViewingLog::RecordViewing(const Viewed& viewed) {
    const QString baseDate = series_.ResolveNumberDate(kSeries, items::DateText(clock_.Now()));
    for (;;) {
        const Drawn drawn = DrawNumber(baseDate);
        if (data_.ExecuteMain(RowStatement(viewed, baseDate, drawn.number)) || !drawn.free) return;
        // Another client may have taken the number between the test and the insert: then the next one is drawn, and the
        // row isn't lost. Whatever else went wrong would go wrong again.
        if (!IsTaken(baseDate, drawn.number)) return;
    }
}

QString ViewingLog::RowStatement(const Viewed& viewed, const QString& baseDate, const QString& number) const {
    session::InsertBuilder insert(QStringLiteral("T閲覧"));
    insert.Quoted("事業所コード", context_.SiteCode);
    insert.Quoted("番号基準日付", baseDate);
    insert.Quoted("閲覧No", number);
    insert.Quoted("閲覧日付", items::DateText(clock_.Now()));
    insert.Quoted("閲覧時刻", items::ViewingTimeText(clock_.Now()));
    insert.Quoted("担当者コード", context_.RunningStaffCode);
    insert.Escaped("担当者名", context_.RunningStaffName);
    insert.Quoted("閲覧情報", viewed.information);
    insert.Quoted("伝票事業所コード", viewed.documentSite);
    insert.Quoted("伝票番号基準日付", viewed.documentBaseDate);
    insert.Quoted("伝票No", viewed.documentNumber);
    insert.Quoted("キー項目", viewed.keyItem);
    insert.Digit("閲覧区分", 0);
    for (const char* unused : {"閲覧メモ", "承認日付", "承認者コード"})
        insert.Quoted(unused, QString());
    insert.Digit("承認区分", 0);
    insert.Quoted("ユーザID", session::UserStamp(context_));
    insert.Quoted("登録日付", items::StampText(clock_.Now()));
    insert.Quoted("更新日付", QString());
    return insert.Statement();
}

}  // namespace suite
