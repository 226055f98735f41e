#include "suite/viewing_log.h"

#include "items/display_forms.h"

namespace suite {

namespace {

const QString kSeries = QStringLiteral("01110");

}  // namespace

QString ViewingLog::DrawFreeNumber(const QString& baseDate) {
    QString previous;
    for (;;) {
        const QString number = series_.IssueNumber(kSeries, baseDate, context_.OperatingSiteCode);
        std::unique_ptr<store::Recordset> taken;
        const bool isTaken =
            data_.OpenMainRecordset(taken, "SELECT 閲覧No FROM T閲覧 WHERE 事業所コード = '" + context_.SiteCode +
                                               "' AND 番号基準日付 = '" + baseDate + "' AND 閲覧No = '" + number + "'");
        // A series that stands still would keep the user here for ever.
        if (!isTaken || number == previous) return number;
        previous = number;
    }
}

void ViewingLog::RecordViewing(const Viewed& viewed) {
    const QString baseDate = series_.ResolveNumberDate(kSeries, items::DateText(clock_.Now()));
    const QString number = DrawFreeNumber(baseDate);
    const QStringList values{context_.SiteCode,
                             baseDate,
                             number,
                             items::DateText(clock_.Now()),
                             items::ViewingTimeText(clock_.Now()),
                             context_.RunningStaffCode,
                             context_.RunningStaffName,
                             viewed.information,
                             viewed.documentSite,
                             viewed.documentBaseDate,
                             viewed.documentNumber,
                             viewed.keyItem,
                             QStringLiteral("0"),
                             QString(),
                             QString(),
                             QString(),
                             QStringLiteral("0"),
                             session::UserStamp(context_),
                             items::StampText(clock_.Now()),
                             QString()};
    data_.ExecuteMain(
        "INSERT INTO [T閲覧] ([事業所コード],[番号基準日付],[閲覧No],[閲覧日付],[閲覧時刻],[担当者コード],[担当者名],"
        "[閲覧情報],[伝票事業所コード],[伝票番号基準日付],[伝票No],[キー項目],[閲覧区分],[閲覧メモ],[承認日付],"
        "[承認者コード],[承認区分],[ユーザID],[登録日付],[更新日付]) VALUES ('" +
        values.join(QStringLiteral("','")) + "')");
}

}  // namespace suite
