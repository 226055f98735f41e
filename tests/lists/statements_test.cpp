// Whole statement texts of the list windows on staff, departments, sections, postcodes and contacts.
#include "tests/lists/statements_fixture.h"

namespace lists {

namespace {

const QString kStaff =
    "SELECT TOP 1000 M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,"
    "Mセクション.名称 AS セクション名 FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者 "
    "ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード) "
    "ON Mセクション.コード = M担当者.セクションコード";
const QString kStaffO =
    "SELECT TOP 1000 M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,"
    "Mセクション.名称 AS セクション名 FROM Mセクション,M部門,M事業所,M担当者 "
    "WHERE M事業所.コード(+) = M担当者.事業所コード AND M部門.コード(+) = M担当者.部門コード "
    "AND Mセクション.コード(+) = M担当者.セクションコード";

const QHash<QString, QString> kAllStaffItems = {
    {"コード", "00012"}, {"名称", "山田"}, {"カナ", "ﾔﾏ"}, {"部門コード", "020"}, {"セクションコード", "031"}};

TEST(Statements, StaffByItem) {
    ExpectStatements(
        "wnd担当者一覧",
        {{__LINE__, 0, {}, kStaff + " ORDER BY M担当者.コード"},
         {__LINE__, 1, {.items = kAllStaffItems}, kStaff + " WHERE M担当者.コード >= '00012' ORDER BY M担当者.コード"},
         {__LINE__, 2, {.items = kAllStaffItems}, kStaff + " WHERE M担当者.カナ LIKE '%ﾔﾏ%' ORDER BY M担当者.カナ"},
         {__LINE__,
          3,
          {.kind = "S", .items = kAllStaffItems},
          kStaff + " WHERE M担当者.氏名 LIKE '%山田%' ORDER BY M担当者.氏名"},
         {__LINE__, 4, {.items = kAllStaffItems}, kStaff + " WHERE M担当者.部門コード = '020' ORDER BY M担当者.コード"},
         {__LINE__,
          5,
          {.items = kAllStaffItems},
          kStaff + " WHERE M担当者.セクションコード = '031' ORDER BY M担当者.コード"},
         {__LINE__,
          0,
          {.items = kAllStaffItems, .classes = {{"在籍区分", 0}, {"社員区分", 1}}},
          kStaff + " WHERE M担当者.コード >= '00012' AND M担当者.氏名 LIKE '%山田%' AND M担当者.カナ LIKE '%ﾔﾏ%'"
                   " AND M担当者.部門コード = '020' AND M担当者.セクションコード = '031'"
                   " AND M担当者.在籍区分 = '0' AND M担当者.社員区分 = '1' ORDER BY M担当者.コード"},
         {__LINE__,
          -1,
          {.items = kAllStaffItems, .classes = {{"在籍区分", 0}, {"社員区分", 1}}},
          kStaff + " WHERE M担当者.コード < '00012' AND M担当者.氏名 NOT LIKE '%山田%'"
                   " AND M担当者.カナ NOT LIKE '%ﾔﾏ%' AND M担当者.部門コード <> '020'"
                   " AND M担当者.セクションコード <> '031' AND M担当者.在籍区分 <> '0'"
                   " AND M担当者.社員区分 <> '1' ORDER BY M担当者.コード"},
         // All of a class is no condition here, in neither search.
         {__LINE__, -1, {}, kStaff + " ORDER BY M担当者.コード"},
         {__LINE__,
          1,
          {.classes = {{"社員区分", 0}}},
          kStaff + " WHERE M担当者.社員区分 = '0' ORDER BY M担当者.コード"}});
}

TEST(Statements, StaffByConditionSiteAndKind) {
    const QString employed = "M担当者.在籍区分 = '0'";
    ExpectStatements(
        "wnd担当者一覧",
        {// The caller's test of the employment state stays beside the item's.
         {__LINE__,
          0,
          {.condition = employed, .classes = {{"在籍区分", 0}}},
          kStaff + " WHERE (M担当者.在籍区分 = '0') AND M担当者.在籍区分 = '0' ORDER BY M担当者.コード"},
         {__LINE__,
          -1,
          {.condition = employed, .items = {{"コード", "00100"}}},
          kStaff + " WHERE (M担当者.在籍区分 = '0') AND M担当者.コード < '00100' ORDER BY M担当者.コード"},
         {__LINE__, 0, {.condition = "  "}, kStaff + " ORDER BY M担当者.コード"},
         {__LINE__,
          2,
          {.site = "012", .operatingSite = "012", .items = {{"カナ", "ｱ"}}},
          kStaff + " WHERE (M担当者.事業所コード = '012' OR M担当者.事業所コード = '000')"
                   " AND M担当者.カナ LIKE '%ｱ%' ORDER BY M担当者.カナ"},
         {__LINE__,
          -1,
          {.condition = employed, .site = "012", .operatingSite = "013"},
          kStaff + " WHERE (M担当者.在籍区分 = '0') AND (M担当者.事業所コード = '012' OR M担当者.事業所コード = '000')"
                   " ORDER BY M担当者.コード"},
         // Who runs the program decides whether there is a filter, whose slot it is decides for which site.
         {__LINE__, 0, {.site = "012"}, kStaff + " ORDER BY M担当者.コード"},
         {__LINE__,
          0,
          {.operatingSite = "012"},
          kStaff + " WHERE (M担当者.事業所コード = '000' OR M担当者.事業所コード = '000') ORDER BY M担当者.コード"},
         {__LINE__, 0, {.kind = "O"}, kStaffO + " ORDER BY M担当者.コード"},
         {__LINE__,
          3,
          {.kind = "O", .items = kAllStaffItems},
          kStaffO + " AND M担当者.氏名 LIKE '%山田%' ORDER BY M担当者.氏名"},
         {__LINE__,
          -1,
          {.kind = "O",
           .condition = employed,
           .site = "012",
           .operatingSite = "012",
           .items = {{"部門コード", "020"}},
           .classes = {{"社員区分", 2}}},
          kStaffO + " AND (M担当者.在籍区分 = '0')"
                    " AND (M担当者.事業所コード = '012' OR M担当者.事業所コード = '000')"
                    " AND M担当者.部門コード <> '020' AND M担当者.社員区分 <> '2' ORDER BY M担当者.コード"},
         {__LINE__, 0, {.kind = "P", .items = kAllStaffItems}, ""},
         {__LINE__, 0, {.kind = ""}, ""}});
}

TEST(Statements, WhatIsTypedInTexts) {
    ExpectStatements("wnd担当者一覧", {{__LINE__,
                                        3,
                                        {.items = {{"名称", "  O'Neil  "}}},
                                        kStaff + " WHERE M担当者.氏名 LIKE '%O''Neil%' ORDER BY M担当者.氏名"},
                                       {__LINE__,
                                        2,
                                        {.items = {{"カナ", " ｱ ｲ' "}}},
                                        kStaff + " WHERE M担当者.カナ LIKE '% ｱ ｲ''%' ORDER BY M担当者.カナ"},
                                       {__LINE__, 3, {.items = {{"名称", "   "}}}, kStaff + " ORDER BY M担当者.氏名"},
                                       {__LINE__,
                                        3,
                                        {.items = {{"名称", "50%_\\"}}},
                                        kStaff + " WHERE M担当者.氏名 LIKE '%50%_\\%' ORDER BY M担当者.氏名"},
                                       {__LINE__,
                                        3,
                                        {.items = {{"名称", "{}{next}%1"}}},
                                        kStaff + " WHERE M担当者.氏名 LIKE '%{}{next}%1%' ORDER BY M担当者.氏名"},
                                       // A code comes through its mask; what gets past it stands as it is.
                                       {__LINE__,
                                        1,
                                        {.items = {{"コード", "1'2"}}},
                                        kStaff + " WHERE M担当者.コード >= '1'2' ORDER BY M担当者.コード"}});
}

TEST(Statements, DepartmentsAndSections) {
    ExpectStatements(
        "wnd部門一覧",
        {{__LINE__, 0, {}, "SELECT コード,名称 FROM M部門 ORDER BY M部門.コード"},
         {__LINE__,
          0,
          {.classes = {{"稼動状況区分", 0}}},
          "SELECT コード,名称 FROM M部門 WHERE M部門.稼動状況区分 = '0' ORDER BY M部門.コード"},
         {__LINE__,
          0,
          {.kind = "O", .condition = "M部門.コード = '001'", .site = "012", .classes = {{"稼動状況区分", 1}}},
          "SELECT コード,名称 FROM M部門 WHERE M部門.稼動状況区分 = '1' ORDER BY M部門.コード"},
         {__LINE__, 0, {.kind = "?"}, ""}});
    ExpectStatements(
        "wndセクション一覧",
        {{__LINE__, 0, {.kind = "S"}, "SELECT コード,名称 FROM Mセクション ORDER BY Mセクション.コード"},
         {__LINE__,
          0,
          {.classes = {{"稼動状況区分", 1}}},
          "SELECT コード,名称 FROM Mセクション WHERE Mセクション.稼動状況区分 = '1' ORDER BY Mセクション.コード"}});
}

TEST(Statements, Postcodes) {
    const QString head = "SELECT 郵便番号,住所A,住所B FROM M郵便番号";
    const QString order = " ORDER BY M郵便番号.郵便番号";
    const QHash<QString, QString> all = {{"郵便番号", "100"}, {"都道府県市町村", "東京"}, {"町域名", " 大手'町 "}};
    ExpectStatements(
        "wnd郵便番号一覧",
        {{__LINE__, 0, {}, head + order},
         {__LINE__, 1, {.items = all}, head + " WHERE 郵便番号 >= '100' AND 郵便番号 < '101'" + order},
         {__LINE__,
          1,
          {.items = {{"郵便番号", "009"}}},
          head + " WHERE 郵便番号 >= '009' AND 郵便番号 < '010'" + order},
         {__LINE__, 1, {.items = {{"郵便番号", "999"}}}, head + " WHERE 郵便番号 >= '999'" + order},
         {__LINE__,
          0,
          {.items = {{"郵便番号", "9-9"}, {"町域名", "丸"}}},
          head + " WHERE 郵便番号 >= '99' AND 住所B LIKE '%丸%'" + order},
         {__LINE__, 1, {.items = {{"郵便番号", "1"}}}, head + " WHERE 郵便番号 >= '1' AND 郵便番号 < '2'" + order},
         {__LINE__, 1, {.items = {{"郵便番号", "-"}}}, head + order},
         {__LINE__, 2, {.items = {{"都道府県市町村", "札幌"}}}, head + " WHERE 住所A LIKE '%札幌%'" + order},
         {__LINE__, 3, {.items = all}, head + " WHERE 住所B LIKE '%大手''町%'" + order},
         {__LINE__,
          0,
          {.kind = "O", .items = {{"郵便番号", "100"}, {"都道府県市町村", "東京"}, {"町域名", "丸"}}},
          head + " WHERE 郵便番号 >= '100' AND 郵便番号 < '101' AND 住所A LIKE '%東京%' AND 住所B LIKE '%丸%'" + order},
         {__LINE__,
          0,
          {.site = "012", .operatingSite = "012", .items = {{"町域名", "丸"}}},
          head + " WHERE 住所B LIKE '%丸%'" + order}});
}

TEST(Statements, Contacts) {
    const QString condition = "M対応先御担当者.メーカコード = '000123'";
    ExpectStatements(
        "wnd対応先御担当者一覧",
        {{__LINE__, 0, {}, "SELECT TOP 1000 * FROM M対応先御担当者 ORDER BY M対応先御担当者.御担当者コード"},
         {__LINE__,
          0,
          {.condition = condition, .site = "012", .operatingSite = "012"},
          "SELECT TOP 1000 * FROM M対応先御担当者 WHERE (M対応先御担当者.メーカコード = '000123')"
          " ORDER BY M対応先御担当者.御担当者コード"},
         // The server behind "O" gets an AND without a WHERE, and lists nothing.
         {__LINE__,
          0,
          {.kind = "O", .condition = condition},
          "SELECT TOP 1000 * FROM M対応先御担当者 AND (M対応先御担当者.メーカコード = '000123')"
          " ORDER BY M対応先御担当者.御担当者コード"},
         {__LINE__, 0, {.kind = "O"}, "SELECT TOP 1000 * FROM M対応先御担当者 ORDER BY M対応先御担当者.御担当者コード"},
         {__LINE__, 0, {.kind = "x", .condition = condition}, ""}});
    for (const QString kind : {"得意先", "納品先", "仕入先", "メーカ"}) {
        const QString table = "M" + kind + "御担当者";
        EXPECT_EQ(
            SqlOf("wnd" + kind + "御担当者一覧", 0, {.kind = "S", .condition = table + ".x = '1'"}),
            "SELECT TOP 1000 * FROM " + table + " WHERE (" + table + ".x = '1') ORDER BY " + table + ".御担当者コード");
    }
}

}  // namespace

}  // namespace lists
