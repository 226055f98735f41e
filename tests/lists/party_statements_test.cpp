// Whole statement texts of the party lists and of the list of all parties.
#include "tests/lists/statements_fixture.h"

namespace lists {

namespace {

const QString kCustomers =
    "SELECT TOP 1000 M得意先.コード, M得意先.略称, M得意先.カナ, M得意先.電話, M得意先.郵便番号, M得意先.住所A, "
    "M得意先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者 INNER JOIN M得意先 ON M得意先.担当者コード = M担当者.コード";
const QString kCustomersO =
    "SELECT TOP 1000 M得意先.コード, M得意先.略称, M得意先.カナ, M得意先.電話, M得意先.郵便番号, M得意先.住所A, "
    "M得意先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者, M得意先 WHERE M得意先.担当者コード = M担当者.コード";
const QString kDestinations =
    "SELECT TOP 1000 M納品先.コード, M納品先.略称, M納品先.カナ, M納品先.電話, M納品先.郵便番号, M納品先.住所A, "
    "M納品先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者 INNER JOIN M納品先 ON M納品先.担当者コード = M担当者.コード";
const QString kSuppliers =
    "SELECT TOP 1000 M仕入先.コード, M仕入先.略称, M仕入先.カナ, M仕入先.電話, M仕入先.郵便番号, M仕入先.住所A, "
    "M仕入先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者 INNER JOIN M仕入先 ON M仕入先.担当者コード = M担当者.コード";
const QString kMakers =
    "SELECT TOP 1000 Mメーカ.コード, Mメーカ.略称, Mメーカ.カナ, Mメーカ.電話, Mメーカ.郵便番号, Mメーカ.住所A, "
    "Mメーカ.住所B, M担当者.氏名 AS 担当者名 FROM M担当者 INNER JOIN Mメーカ ON Mメーカ.担当者コード = M担当者.コード";
const QString kMakersO =
    "SELECT TOP 1000 Mメーカ.コード, Mメーカ.略称, Mメーカ.カナ, Mメーカ.電話, Mメーカ.郵便番号, Mメーカ.住所A, "
    "Mメーカ.住所B, M担当者.氏名 AS 担当者名 FROM M担当者, Mメーカ WHERE Mメーカ.担当者コード = M担当者.コード";
const QString kOthersO =
    "SELECT TOP 1000 M対応先.コード, M対応先.略称, M対応先.カナ, M対応先.電話, M対応先.郵便番号, M対応先.住所A, "
    "M対応先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者, M対応先 WHERE M対応先.担当者コード = M担当者.コード";
const QString kOthers =
    "SELECT TOP 1000 M対応先.コード, M対応先.略称, M対応先.カナ, M対応先.電話, M対応先.郵便番号, M対応先.住所A, "
    "M対応先.住所B, M担当者.氏名 AS 担当者名 FROM M担当者 INNER JOIN M対応先 ON M対応先.担当者コード = M担当者.コード";

const QHash<QString, QString> kSixItems = {{"コード", "000100"}, {"名称", " 山 "},         {"カナ", "ﾔﾏ"},
                                           {"住所", "千代田"},   {"郵便番号", "100-0001"}, {"電話", "03-12 (34)"}};

QHash<QString, QString> WithStaff(QHash<QString, QString> items) {
    items["担当者コード"] = "00007";
    return items;
}

TEST(PartyStatements, CustomersByItem) {
    const auto only = [](const char* name) { return QHash<QString, QString>{{name, kSixItems.value(name)}}; };
    ExpectStatements(
        "wnd得意先一覧",
        {{__LINE__, 0, {}, kCustomers + " ORDER BY M得意先.コード"},
         {__LINE__, 1, {.items = kSixItems}, kCustomers + " WHERE M得意先.コード >= '000100' ORDER BY M得意先.コード"},
         {__LINE__, 2, {.items = kSixItems}, kCustomers + " WHERE M得意先.カナ LIKE '%ﾔﾏ%' ORDER BY M得意先.カナ"},
         {__LINE__,
          3,
          {.items = kSixItems},
          kCustomers + " WHERE (M得意先.名称A LIKE '%山%' OR M得意先.名称B LIKE '%山%' OR M得意先.略称 LIKE '%山%')"
                       " ORDER BY M得意先.名称A"},
         {__LINE__,
          4,
          {.items = only("電話")},
          kCustomers + " WHERE (M得意先.電話番号 LIKE '%031234%' OR EXISTS (SELECT * FROM M得意先御担当者"
                       " WHERE 得意先コード = M得意先.コード AND 電話番号 LIKE '%031234%')) ORDER BY M得意先.電話"},
         {__LINE__,
          5,
          {.items = kSixItems},
          kCustomers + " WHERE M得意先.郵便番号 LIKE '%100-0001%' ORDER BY M得意先.郵便番号"},
         {__LINE__,
          6,
          {.kind = "S", .items = only("住所")},
          kCustomers + " WHERE (M得意先.住所A LIKE '%千代田%' OR M得意先.住所B LIKE '%千代田%' OR M得意先.住所C LIKE "
                       "'%千代田%') ORDER BY M得意先.住所A"},
         {__LINE__,
          0,
          {.items = WithStaff(kSixItems), .classes = {{"取引状況区分", 1}}},
          kCustomers + " WHERE M得意先.コード >= '000100'"
                       " AND (M得意先.名称A LIKE '%山%' OR M得意先.名称B LIKE '%山%' OR M得意先.略称 LIKE '%山%')"
                       " AND M得意先.カナ LIKE '%ﾔﾏ%'"
                       " AND (M得意先.住所A LIKE '%千代田%' OR M得意先.住所B LIKE '%千代田%' OR M得意先.住所C LIKE "
                       "'%千代田%') AND M得意先.郵便番号 LIKE '%100-0001%'"
                       " AND (M得意先.電話番号 LIKE '%031234%' OR EXISTS (SELECT * FROM M得意先御担当者"
                       " WHERE 得意先コード = M得意先.コード AND 電話番号 LIKE '%031234%'))"
                       " AND M得意先.担当者コード = '00007' AND M得意先.取引状況区分 = '1' ORDER BY M得意先.コード"},
         {__LINE__,
          -1,
          {.items = WithStaff(kSixItems), .classes = {{"取引状況区分", 1}}},
          kCustomers +
              " WHERE M得意先.コード < '000100'"
              " AND (M得意先.名称A NOT LIKE '%山%' AND M得意先.名称B NOT LIKE '%山%'"
              " AND M得意先.略称 NOT LIKE '%山%') AND M得意先.カナ NOT LIKE '%ﾔﾏ%'"
              " AND (M得意先.住所A NOT LIKE '%千代田%' AND M得意先.住所B NOT LIKE '%千代田%'"
              " AND M得意先.住所C NOT LIKE '%千代田%') AND M得意先.郵便番号 NOT LIKE '%100-0001%'"
              " AND (M得意先.電話番号 NOT LIKE '%031234%' AND NOT EXISTS (SELECT * FROM M得意先御担当者"
              " WHERE 得意先コード = M得意先.コード AND 電話番号 LIKE '%031234%'))"
              " AND M得意先.担当者コード <> '00007' AND M得意先.取引状況区分 <> '1' ORDER BY M得意先.コード"}});
}

TEST(PartyStatements, CustomersByConditionSiteStaffAndState) {
    ExpectStatements(
        "wnd得意先一覧",
        {// All states in the negative search: those past the last known one.
         {__LINE__, -1, {}, kCustomers + " WHERE M得意先.取引状況区分 >= '4' ORDER BY M得意先.コード"},
         {__LINE__,
          4,
          {.items = {{"担当者コード", "00007"}}},
          kCustomers + " WHERE M得意先.担当者コード = '00007' ORDER BY M得意先.電話"},
         // Here it is the site of the slot alone that decides, whoever runs the program.
         {__LINE__,
          2,
          {.site = "012", .items = WithStaff({{"カナ", "ｱ"}}), .classes = {{"取引状況区分", 0}}},
          kCustomers + " WHERE M担当者.事業所コード = '012' AND M得意先.カナ LIKE '%ｱ%'"
                       " AND M得意先.担当者コード = '00007' AND M得意先.取引状況区分 = '0' ORDER BY M得意先.カナ"},
         {__LINE__, 0, {.operatingSite = "012"}, kCustomers + " ORDER BY M得意先.コード"},
         {__LINE__,
          -1,
          {.condition = "M得意先.略称 <> ''", .site = "012", .items = {{"コード", "000100"}}},
          kCustomers + " WHERE (M得意先.略称 <> '') AND M担当者.事業所コード = '012' AND M得意先.コード < '000100'"
                       " AND M得意先.取引状況区分 >= '4' ORDER BY M得意先.コード"},
         {__LINE__, 3, {.kind = "O"}, kCustomersO + " ORDER BY M得意先.名称A"},
         {__LINE__,
          1,
          {.kind = "O",
           .condition = "M得意先.得意先コード = '1'",
           .site = "012",
           .items = {{"コード", "000100"}},
           .classes = {{"取引状況区分", 1}}},
          kCustomersO + " AND (M得意先.得意先コード = '1') AND M担当者.事業所コード = '012'"
                        " AND M得意先.コード >= '000100' AND M得意先.取引状況区分 = '1' ORDER BY M得意先.コード"},
         {__LINE__, 0, {.kind = "M"}, ""}});
}

TEST(PartyStatements, OwnersFirst) {
    const QString customer = "M納品先.得意先コード = '000001'", supplier = "M納品先.仕入先コード = '000002'";
    ExpectStatements("wnd納品先一覧",
                     {{__LINE__, 0, {}, kDestinations + " ORDER BY M納品先.コード"},
                      {__LINE__,
                       0,
                       {.condition = customer},
                       kDestinations + " WHERE (" + customer + ") ORDER BY M納品先.得意先コード DESC,M納品先.コード"},
                      {__LINE__,
                       4,
                       {.condition = supplier},
                       kDestinations + " WHERE (" + supplier + ") ORDER BY M納品先.仕入先コード DESC,M納品先.電話"},
                      {__LINE__,
                       6,
                       {.condition = supplier + " OR " + customer},
                       kDestinations + " WHERE (" + supplier + " OR " + customer +
                           ") ORDER BY M納品先.得意先コード DESC,M納品先.住所A"},
                      {__LINE__,
                       -1,
                       {.condition = customer, .classes = {{"取引状況区分", 1}}},
                       kDestinations + " WHERE (" + customer +
                           ") AND M納品先.取引状況区分 <> '1' ORDER BY M納品先.得意先コード DESC,M納品先.コード"},
                      // The word has to stand as the column is written.
                      {__LINE__,
                       0,
                       {.condition = "M納品先.得意先ｺｰﾄﾞ = '1'"},
                       kDestinations + " WHERE (M納品先.得意先ｺｰﾄﾞ = '1') ORDER BY M納品先.コード"}});
    ExpectStatements(
        "wnd対応先一覧",
        {{__LINE__,
          3,
          {.kind = "O", .condition = "M対応先.仕入先コード <> ''"},
          kOthersO + " AND (M対応先.仕入先コード <> '') ORDER BY M対応先.仕入先コード DESC,M対応先.名称A"}});
}

TEST(PartyStatements, ContactsOfEachKind) {
    const Given phone{.items = {{"電話", "03"}}};
    ExpectStatements("wnd納品先一覧",
                     {{__LINE__, 4, phone,
                       kDestinations + " WHERE (M納品先.電話番号 LIKE '%03%' OR EXISTS (SELECT * FROM M納品先御担当者"
                                       " WHERE 納品先コード = M納品先.コード AND 電話番号 LIKE '%03%'))"
                                       " ORDER BY M納品先.電話"}});
    ExpectStatements("wnd仕入先一覧",
                     {{__LINE__, 4, phone,
                       kSuppliers + " WHERE (M仕入先.電話番号 LIKE '%03%' OR EXISTS (SELECT * FROM M仕入先御担当者"
                                    " WHERE 仕入先コード = M仕入先.コード AND 電話番号 LIKE '%03%'))"
                                    " ORDER BY M仕入先.電話"}});
    ExpectStatements("wndメーカ一覧",
                     {{__LINE__, 4, phone,
                       kMakers + " WHERE (Mメーカ.電話番号 LIKE '%03%' OR EXISTS (SELECT * FROM Mメーカ御担当者"
                                 " WHERE メーカコード = Mメーカ.コード AND 電話番号 LIKE '%03%'))"
                                 " ORDER BY Mメーカ.電話"},
                      // The maker's own list has the sound form in every place.
                      {__LINE__,
                       -1,
                       {.items = {{"コード", "000100"}, {"住所", "港"}, {"担当者コード", "00007"}}},
                       kMakers + " WHERE Mメーカ.コード < '000100' AND (Mメーカ.住所A NOT LIKE '%港%'"
                                 " AND Mメーカ.住所B NOT LIKE '%港%' AND Mメーカ.住所C NOT LIKE '%港%')"
                                 " AND Mメーカ.担当者コード <> '00007' AND Mメーカ.取引状況区分 >= '4'"
                                 " ORDER BY Mメーカ.コード"}});
    ExpectStatements("wnd対応先一覧",
                     {{__LINE__, -1, phone,
                       kOthers + " WHERE (M対応先.電話番号 NOT LIKE '%03%' AND NOT EXISTS (SELECT * FROM"
                                 " M対応先御担当者 WHERE 対応先コード = M対応先.コード AND 電話番号 LIKE '%03%'))"
                                 " AND M対応先.取引状況区分 >= '4' ORDER BY M対応先.コード"}});
}

enum Kind { Customer, Destination, Supplier, Maker, Other };

// A party whose staff member has left is everybody's.
TEST(PartyStatements, AllPartiesOfTheStaffMember) {
    const auto staff = [](Kind kind) { return Given{.items = {{"担当者コード", "00007"}}, .statement = kind}; };
    ExpectStatements(
        "wnd相手先一覧",
        {{__LINE__, 0, staff(Customer),
          kCustomers + " WHERE (M得意先.担当者コード = '00007' OR M担当者.在籍区分 <> '0') ORDER BY M得意先.コード"},
         {__LINE__, 5, staff(Destination),
          kDestinations +
              " WHERE (M納品先.担当者コード = '00007' OR M担当者.在籍区分 <> '0') ORDER BY M納品先.郵便番号"},
         {__LINE__, 0, staff(Supplier),
          kSuppliers + " WHERE (M仕入先.担当者コード = '00007' OR M担当者.在籍区分 <> '0') ORDER BY M仕入先.コード"},
         {__LINE__, 0, staff(Maker),
          kMakers + " WHERE (Mメーカ.担当者コード = '00007' OR M担当者.在籍区分 <> '0') ORDER BY Mメーカ.コード"},
         {__LINE__,
          3,
          {.kind = "O",
           .site = "012",
           .items = WithStaff(kSixItems),
           .classes = {{"取引状況区分", 1}},
           .statement = Other},
          kOthersO + " AND M担当者.事業所コード = '012' AND (M対応先.名称A LIKE '%山%' OR M対応先.名称B LIKE '%山%'"
                     " OR M対応先.略称 LIKE '%山%') AND (M対応先.担当者コード = '00007' OR M担当者.在籍区分 <> '0')"
                     " AND M対応先.取引状況区分 = '1' ORDER BY M対応先.名称A"},
         {__LINE__, 0, {.kind = "Q", .statement = Maker}, ""}});
}

// The uneven places of the negative search, and what stands even beside them.
TEST(PartyStatements, AllPartiesNegated) {
    const auto negated = [](Kind kind) {
        return Given{.items = {{"担当者コード", "00007"}},
                     .classes = {{"取引状況区分", 1}},
                     .statement = static_cast<int>(kind)};
    };
    const auto address = [](Kind kind, const QString& code) {
        return Given{.items = {{"住所", "港"}, {"コード", code}},
                     .classes = {{"取引状況区分", 1}},
                     .statement = static_cast<int>(kind)};
    };
    ExpectStatements(
        "wnd相手先一覧",
        {{__LINE__, -1, negated(Customer),
          kCustomers + " WHERE M得意先.担当者コード <> '00007'"
                       " AND (M得意先.担当者コード <> '00007' AND M担当者.在籍区分 = '0')"
                       " AND M得意先.取引状況区分 <> '1' ORDER BY M得意先.コード"},
         {__LINE__, -1, negated(Destination),
          kDestinations + " WHERE (M納品先.担当者コード <> '00007' AND M担当者.在籍区分 = '0')"
                          " AND M納品先.取引状況区分 <> '1' ORDER BY M納品先.コード"},
         {__LINE__, -1, negated(Supplier),
          kSuppliers + " WHERE (M仕入先.担当者コード <> '00007' AND M担当者.在籍区分 = '0')"
                       " AND M仕入先.取引状況区分 <> '1' ORDER BY M仕入先.コード"},
         {__LINE__, -1, negated(Maker),
          kMakers + " WHERE (Mメーカ.担当者コード <> '00007' AND M担当者.在籍区分 = '1')"
                    " AND Mメーカ.取引状況区分 <> '1' ORDER BY Mメーカ.コード"},
         {__LINE__, -1, negated(Other),
          kOthers + " WHERE (M対応先.担当者コード <> '00007' AND M担当者.在籍区分 = '0')"
                    " AND M対応先.取引状況区分 <> '1' ORDER BY M対応先.コード"},
         {__LINE__, -1, address(Maker, "000100"),
          kMakers +
              " WHERE Mメーカ.コード < '000100' AND (Mメーカ.住所A NOT LIKE '%港%' AND Mメーカ.NOT 住所B LIKE '%港%'"
              " AND Mメーカ.住所C NOT LIKE '%港%') AND Mメーカ.取引状況区分 <> '1' ORDER BY Mメーカ.コード"},
         {__LINE__, -1, address(Maker, ""),
          kMakers + " WHERE (Mメーカ.住所A NOT LIKE '%港%' AND Mメーカ.住所B NOT LIKE '%港%'"
                    " AND Mメーカ.住所C NOT LIKE '%港%') AND Mメーカ.取引状況区分 <> '1' ORDER BY Mメーカ.コード"},
         {__LINE__,
          -1,
          {.kind = "O", .items = {{"住所", "港"}}, .classes = {{"取引状況区分", 1}}, .statement = Maker},
          kMakersO + " AND (Mメーカ.住所A NOT LIKE '%港%' AND Mメーカ.NOT 住所B LIKE '%港%'"
                     " AND Mメーカ.住所C NOT LIKE '%港%') AND Mメーカ.取引状況区分 <> '1' ORDER BY Mメーカ.コード"},
         {__LINE__, -1, address(Supplier, "000100"),
          kSuppliers +
              " WHERE M仕入先.コード < '000100' AND (M仕入先.住所A NOT LIKE '%港%' AND M仕入先.住所B NOT LIKE '%港%'"
              " AND M仕入先.住所C NOT LIKE '%港%') AND M仕入先.取引状況区分 <> '1' ORDER BY M仕入先.コード"},
         {__LINE__, -1, {.statement = Maker}, kMakers + " WHERE Mメーカ.取引状況区分 >= '4' ORDER BY Mメーカ.コード"}});
}

}  // namespace

}  // namespace lists
