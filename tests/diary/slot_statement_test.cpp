#include <gtest/gtest.h>

#include "diary/date_time_entry.h"
#include "diary/slot_saving.h"

namespace {

TEST(ActivityMinutes, CountsOverMidnightInBothForms) {
    EXPECT_EQ(diary::ActivityMinutes("23:40", "24:10"), 30);
    EXPECT_EQ(diary::ActivityMinutes("23:40", "00:10"), 30);
    EXPECT_EQ(diary::ActivityMinutes("09:00", "09:00"), 0);
    EXPECT_EQ(diary::ActivityMinutes("00:00", "47:59"), 2879);
}

TEST(DetailInsert, WritesAllColumnsInOrderEachInItsForm) {
    session::SessionContext session;
    session.StaffCode = "00001";
    session.SlotDate = "20261120";
    session.StartTime = "10:00";
    session.EndTime = "10:30";
    session.SiteCode = "000";
    session.UserId = "sato";
    session.RunningStaffCode = "00009";
    session.ComputerId = "PC1";
    diary::ActivitySlot slot;
    slot.部門コード = "100";
    slot.セクションコード = "110";
    slot.発信区分 = 1;
    slot.応対方法 = 2;
    slot.要件分類 = 3;
    slot.対応分類 = 4;
    slot.相手先区分 = 5;
    slot.相手先コード = "0'0";
    slot.相手先略称 = "O'Neil  ";
    slot.相手先名称入力区分 = 1;
    slot.documents[1] = {1, "000", "20270331", "00000007"};
    slot.営業活動摘要 = "it's\r\n";
    slot.承認区分 = 1;
    slot.登録日付 = "20261120 100000";
    slot.更新日付 = "20261001 090000";
    EXPECT_EQ(
        diary::DetailInsertStatement(session, slot).toStdString(),
        "INSERT INTO [T営業活動明細] ([担当者コード],[日付],[開始時刻],[終了時刻],[事業所コード],[部門コード],"
        "[セクションコード],[発信区分],[応対方法],[要件分類],[対応分類],[相手先区分],[相手先コード],[相手先略称],"
        "[相手先郵便番号],[相手先住所A],[相手先住所B],[相手先住所C],[相手先名称A],[相手先名称B],[相手先電話],"
        "[相手先FAX],[相手先御担当者コード],[相手先御担当者名],[相手先御担当者電話],[相手先名称入力区分],"
        "[出金新規区分],[出金事業所コード],[出金番号基準日付],[出金No],[案件新規区分],[案件事業所コード],"
        "[案件番号基準日付],[案件No],[営業引合新規区分],[営業引合事業所コード],[営業引合番号基準日付],[営業引合No],"
        "[営業見積新規区分],[営業見積事業所コード],[営業見積番号基準日付],[営業見積No],[顧客注文新規区分],"
        "[顧客注文事業所コード],[顧客注文番号基準日付],[顧客注文No],[営業受注新規区分],[営業受注事業所コード],"
        "[営業受注番号基準日付],[営業受注No],[営業活動摘要],[活動時間],[承認日付],[承認者コード],[承認区分],"
        "[ユーザID],[登録日付],[更新日付]) VALUES ('00001','20261120','10:00','10:30','000','100','110','1','2','3',"
        "'4','5','0'0','O''Neil','','','','','','','','','','','','1','0','','','','1','000','20270331','00000007',"
        "'0','','','','0','','','','0','','','','0','','','','it''s\r\n',30,'','','1','sato00009PC1',"
        "'20261120 100000','20261001 090000')");
}

}  // namespace
