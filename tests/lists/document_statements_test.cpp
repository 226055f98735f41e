// Whole statement texts of the lists of sales documents and of the texts used in them.
#include "tests/lists/statements_fixture.h"

namespace lists {

namespace {

const QString kQuotation =
    "SELECT TOP 1000 T営業見積.事業所コード,T営業見積.番号基準日付,T営業見積.営業見積No,T営業見積.営業見積日付,"
    "T営業見積.得意先コード,T営業見積.得意先名称A,T営業見積.タイトル,T営業見積.見積金額合計 FROM T営業見積";
const QString kQuotationNewest = " ORDER BY T営業見積.営業見積日付 DESC, T営業見積.営業見積No DESC";
const QHash<QString, QString> kAllQuotationItems = {{"営業見積日付", "20260401"},
                                                    {"営業見積No", "00000100"},
                                                    {"得意先名", " 青葉' "},
                                                    {"件名", " 空調 "},
                                                    {"得意先コード", "000012"}};

TEST(DocumentStatements, QuotationsByItem) {
    const Given all = {.items = kAllQuotationItems};
    const Given ofOther = {.items = {{"得意先コード", "000012"}}, .checks = {{"chb_得意先対応先", 1}}};
    ExpectStatements(
        "wnd営業見積No一覧",
        {{__LINE__, 0, {}, kQuotation + kQuotationNewest},
         {__LINE__, 1, all,
          kQuotation + " WHERE T営業見積.営業見積日付 >= '20260401'"
                       " ORDER BY T営業見積.営業見積日付, T営業見積.営業見積No "},
         {__LINE__, 2, all,
          kQuotation + " WHERE T営業見積.営業見積No >= '00000100'"
                       " ORDER BY T営業見積.営業見積No,T営業見積.営業見積日付 DESC"},
         {__LINE__, 3, all,
          kQuotation + " WHERE (T営業見積.得意先名称A LIKE '%青葉''%' OR T営業見積.得意先名称B LIKE '%青葉''%')" +
              kQuotationNewest},
         {__LINE__, 4, all, kQuotation + " WHERE T営業見積.タイトル LIKE '% 空調%'" + kQuotationNewest},
         {__LINE__, 5, all,
          kQuotation + " WHERE T営業見積.得意先コード = '000012' AND T営業見積.得意先対応先区分 = '0'" +
              kQuotationNewest},
         {__LINE__, 5, ofOther,
          kQuotation + " WHERE T営業見積.得意先コード = '000012' AND T営業見積.得意先対応先区分 = '1'" +
              kQuotationNewest},
         {__LINE__, -1, ofOther,
          kQuotation + " WHERE (T営業見積.得意先コード <> '000012' OR T営業見積.得意先対応先区分 <> '1')" +
              kQuotationNewest},
         // The box says whose code it is, and nothing without a code.
         {__LINE__, 0, {.checks = {{"chb_得意先対応先", 1}}}, kQuotation + kQuotationNewest},
         {__LINE__, 0, all,
          kQuotation +
              " WHERE T営業見積.営業見積日付 >= '20260401' AND T営業見積.営業見積No >= '00000100'"
              " AND T営業見積.タイトル LIKE '% 空調%'"
              " AND (T営業見積.得意先名称A LIKE '%青葉''%' OR T営業見積.得意先名称B LIKE '%青葉''%')"
              " AND T営業見積.得意先コード = '000012' AND T営業見積.得意先対応先区分 = '0'" +
              kQuotationNewest},
         {__LINE__, -1, all,
          kQuotation +
              " WHERE T営業見積.営業見積日付 < '20260401' AND T営業見積.営業見積No < '00000100'"
              " AND T営業見積.タイトル NOT LIKE '% 空調%'"
              " AND (T営業見積.得意先名称A NOT LIKE '%青葉''%' AND T営業見積.得意先名称B NOT LIKE '%青葉''%')"
              " AND (T営業見積.得意先コード <> '000012' OR T営業見積.得意先対応先区分 <> '0')" +
              kQuotationNewest}});
}

TEST(DocumentStatements, SiteAheadOfTheConditionUnderEachKind) {
    const QString condition = "T営業見積.番号基準日付 <> ''";
    const QString sql = kQuotation +
                        " WHERE T営業見積.事業所コード = '012' AND (T営業見積.番号基準日付 <> '')"
                        " AND T営業見積.営業見積No >= '00000001'"
                        " ORDER BY T営業見積.営業見積No,T営業見積.営業見積日付 DESC";
    const QHash<QString, QString> number = {{"営業見積No", "00000001"}};
    for (const QString kind : {"A", "S", "O"})
        EXPECT_EQ(SqlOf("wnd営業見積No一覧", 2, {.kind = kind, .condition = condition, .site = "012", .items = number}),
                  sql);
    // It is the slot's site that counts here, not the one that runs the program.
    ExpectStatements("wnd営業見積No一覧", {{__LINE__,
                                            0,
                                            {.condition = condition, .operatingSite = "012"},
                                            kQuotation + " WHERE (T営業見積.番号基準日付 <> '')" + kQuotationNewest},
                                           {__LINE__, 0, {.kind = "P"}, ""}});
}

TEST(DocumentStatements, CustomerOrdersDifferInNamesAndABlank) {
    const QString head =
        "SELECT TOP 1000 T顧客注文.事業所コード,T顧客注文.番号基準日付,T顧客注文.顧客注文No,T顧客注文.顧客注文日付,"
        "T顧客注文.得意先コード,T顧客注文.得意先名称A,T顧客注文.タイトル,T顧客注文.注文金額合計 FROM T顧客注文";
    ExpectStatements("wnd顧客注文No一覧",
                     {{__LINE__, 1, {}, head + " ORDER BY T顧客注文.顧客注文日付, T顧客注文.顧客注文No "},
                      {__LINE__, 2, {}, head + " ORDER BY T顧客注文.顧客注文No, T顧客注文.顧客注文日付 DESC"},
                      {__LINE__,
                       -1,
                       {.items = {{"得意先コード", "000012"}}, .checks = {{"chb_得意先対応先", 1}}},
                       head + " WHERE (T顧客注文.得意先コード <> '000012' OR T顧客注文.得意先対応先区分 <> '1')"
                              " ORDER BY T顧客注文.顧客注文日付 DESC, T顧客注文.顧客注文No DESC"}});
}

TEST(DocumentStatements, Enquiries) {
    const QString head =
        "SELECT TOP 1000 T営業引合.事業所コード,T営業引合.番号基準日付,T営業引合.営業引合No,T営業引合.営業引合日付,"
        "T営業引合.営業引合納期,T営業引合.得意先コード,T営業引合.得意先名称A,T営業引合.営業引合商品名A,"
        "T営業引合.営業引合納期,T営業引合.営業引合金額 FROM T営業引合";
    const QString newest = " ORDER BY T営業引合.営業引合日付 DESC, T営業引合.営業引合No DESC";
    const Given all = {.site = "012",
                       .items = {{"営業引合日付", "20260401"},
                                 {"営業引合No", "00000007"},
                                 {"営業引合納期", "20260501"},
                                 {"得意先名", "青葉"},
                                 {"商品名", "ポンプ"},
                                 {"得意先コード", "000012"}},
                       .checks = {{"chb_得意先対応先", 1}}};
    const QString site = head + " WHERE T営業引合.事業所コード = '012'";
    ExpectStatements(
        "wnd営業引合No一覧",
        {{__LINE__, 3, all,
          site + " AND T営業引合.営業引合納期 >= '20260501'"
                 " ORDER BY T営業引合.営業引合納期, T営業引合.営業引合日付 DESC"},
         {__LINE__, 0, all,
          site +
              " AND T営業引合.営業引合日付 >= '20260401' AND T営業引合.営業引合No >= '00000007'"
              " AND T営業引合.営業引合納期 >= '20260501'"
              " AND (T営業引合.得意先名称A LIKE '%青葉%' OR T営業引合.得意先名称B LIKE '%青葉%')"
              " AND (T営業引合.営業引合商品名A LIKE '%ポンプ%' OR T営業引合.営業引合商品名B LIKE '%ポンプ%')"
              " AND T営業引合.得意先コード = '000012' AND T営業引合.得意先対応先区分 = '1'" +
              newest},
         // The kind stands without its table in the negative search.
         {__LINE__,
          -1,
          {.items = {{"得意先コード", "000012"}}},
          head + " WHERE (T営業引合.得意先コード <> '000012' OR 得意先対応先区分 <> '0')" + newest}});
}

TEST(DocumentStatements, SalesOrders) {
    const QString head =
        "SELECT TOP 1000 T営業受注.事業所コード,T営業受注.番号基準日付,T営業受注.営業受注No,T営業受注.営業受注日付,"
        "T営業受注.受注納期,T営業受注.得意先コード,T営業受注.得意先名称A,T営業受注.納品先コード,"
        "T営業受注.納品先名称A,T営業受注.受注金額合計 FROM T営業受注";
    const QString newest = " ORDER BY T営業受注.営業受注日付 DESC, T営業受注.営業受注No DESC";
    const Given all = {.items = {{"営業受注日付", "20260401"},
                                 {"営業受注No", "00000007"},
                                 {"営業受注納期", "20260501"},
                                 {"得意先名", "青葉"},
                                 {"納品先名", "倉庫"},
                                 {"得意先コード", "000012"},
                                 {"納品先コード", "000034"}}};
    ExpectStatements("wnd営業受注No一覧",
                     {{__LINE__, 1, {}, head + " ORDER BY T営業受注.営業受注日付, T営業受注.営業受注No"},
                      {__LINE__, 2, {}, head + " ORDER BY T営業受注.営業受注No, T営業受注.営業受注日付 DESC"},
                      {__LINE__, 3, all,
                       head + " WHERE T営業受注.営業受注納期 >= '20260501'"
                              " ORDER BY T営業受注.営業受注納期, T営業受注.営業受注日付 DESC"},
                      {__LINE__, 7, all, head + " WHERE T営業受注.納品先コード = '000034'" + newest},
                      {__LINE__, -1, all,
                       head +
                           " WHERE T営業受注.営業受注日付 < '20260401' AND T営業受注.営業受注No < '00000007'"
                           " AND T営業受注.営業受注納期 < '20260501'"
                           " AND (T営業受注.得意先名称A NOT LIKE '%青葉%' AND T営業受注.得意先名称B NOT LIKE '%青葉%')"
                           " AND (T営業受注.納品先名称A NOT LIKE '%倉庫%' AND T営業受注.納品先名称B NOT LIKE '%倉庫%')"
                           " AND T営業受注.得意先コード <> '000012' AND T営業受注.納品先コード <> '000034'" +
                           newest}});
}

TEST(DocumentStatements, Deals) {
    const QString head =
        "SELECT TOP 1000 T案件.事業所コード,T案件.番号基準日付,T案件.案件No,T案件.案件日付,T案件.相手先略称,"
        "T案件.相手先御担当者名,T案件.案件名 FROM T案件";
    const QString newest = " ORDER BY T案件.案件日付 DESC, T案件.案件No DESC";
    const QHash<QString, QString> party = {{"相手先略称", "青葉"}};
    ExpectStatements("wnd案件No一覧",
                     {{__LINE__,
                       3,
                       {.items = {{"案件名", "改修"}}},
                       head + " WHERE T案件.案件名 LIKE '%改修%' ORDER BY T案件.案件名"},
                      {__LINE__,
                       4,
                       {.items = party},
                       head + " WHERE (T案件.相手先略称 LIKE '%青葉%' OR T案件.相手先名称A LIKE '%青葉%'"
                              " OR T案件.相手先名称B LIKE '%青葉%') ORDER BY T案件.相手先略称"},
                      {__LINE__,
                       5,
                       {.items = {{"相手先御担当者名", "森"}}},
                       head + " WHERE T案件.相手先御担当者名 LIKE '%森%' ORDER BY T案件.相手先御担当者名"},
                      // As the first condition the party is negated by its short name alone.
                      {__LINE__,
                       -1,
                       {.items = party},
                       head +
                           " WHERE T案件.相手先略称 NOT LIKE '%青葉%' AND T案件.相手先名称A LIKE '%青葉%'"
                           " AND T案件.相手先名称B LIKE '%青葉%'" +
                           newest},
                      {__LINE__,
                       -1,
                       {.condition = "T案件.番号基準日付 <> ''", .items = party},
                       head +
                           " WHERE (T案件.番号基準日付 <> '') AND T案件.相手先略称 NOT LIKE '%青葉%'"
                           " AND T案件.相手先名称A NOT LIKE '%青葉%' AND T案件.相手先名称B NOT LIKE '%青葉%'" +
                           newest}});
}

TEST(DocumentStatements, PaymentsJoinByKind) {
    const QString columns =
        "SELECT TOP 1000 T出金.事業所コード, T出金.番号基準日付, T出金.出金No, T出金.出金日付, T出金.担当者コード,"
        " T出金.実質出金金額合計, M担当者.氏名 as 担当者名";
    const QString joined = columns + " FROM M担当者 INNER JOIN T出金 ON M担当者.コード = T出金.担当者コード ";
    const QString listed = columns + " FROM M担当者, T出金 WHERE M担当者.コード = T出金.担当者コード ";
    const QString newest = " ORDER BY T出金.出金日付 DESC, T出金.出金No DESC";
    const Given ofSite = {.condition = "T出金.番号基準日付 <> ''",
                          .site = "012",
                          .items = {{"担当者名", " 佐藤 "}, {"担当者コード", "00003"}}};
    const auto under = [&](const QString& kind) {
        Given given = ofSite;
        given.kind = kind;
        return given;
    };
    const QString conditions =
        "T出金.事業所コード = '012' AND (T出金.番号基準日付 <> '')"
        " AND M担当者.氏名 LIKE '%佐藤%' AND T出金.担当者コード = '00003'";
    ExpectStatements("wnd出金No一覧",
                     {{__LINE__, 0, under("A"), joined + " WHERE " + conditions + newest},
                      {__LINE__, 0, under("S"), listed + " AND " + conditions + newest},
                      {__LINE__, 0, under("O"), listed + " AND " + conditions + newest},
                      {__LINE__, 1, {.kind = "S"}, listed + " ORDER BY T出金.出金日付, T出金.出金No"},
                      {__LINE__, 2, {}, joined + " ORDER BY T出金.出金No, T出金.出金日付 DESC"},
                      {__LINE__,
                       -1,
                       {.items = {{"担当者名", "佐藤"}, {"担当者コード", "00003"}}},
                       joined + " WHERE M担当者.氏名 NOT LIKE '%佐藤%' AND T出金.担当者コード <> '00003'" + newest}});
}

TEST(DocumentStatements, UsedNames) {
    // Neither the caller's condition nor the site takes part.
    const Given lastYear = {.condition = "T案件.番号基準日付 <> ''",
                            .site = "012",
                            .items = {{"検索文字列", "改'修 "}},
                            .firstDay = "20250731",
                            .lastDay = "20260731"};
    ExpectStatements("wnd案件名一覧",
                     {{__LINE__, 0, lastYear,
                       "SELECT DISTINCT 案件名 FROM T案件 WHERE 案件日付 >= '20250731' AND 案件日付 <= '20260731'"
                       " AND 案件名 <> '' AND 案件名 LIKE '%改''修%' ORDER BY 案件名"},
                      // The period's OR stands without brackets.
                      {__LINE__, -1, lastYear,
                       "SELECT DISTINCT 案件名 FROM T案件 WHERE 案件日付 < '20250731' OR 案件日付 > '20260731'"
                       " AND 案件名 <> '' AND 案件名 NOT LIKE '%改''修%' ORDER BY 案件名"},
                      {__LINE__,
                       0,
                       {.kind = "O"},
                       "SELECT DISTINCT 案件名 FROM T案件 WHERE 案件日付 <> '' AND 案件名 <> '' ORDER BY 案件名"},
                      {__LINE__,
                       -1,
                       {.kind = "S"},
                       "SELECT DISTINCT 案件名 FROM T案件 WHERE 案件日付 <> '' AND 案件名 <> '' ORDER BY 案件名"},
                      {__LINE__, 0, {.kind = "x"}, ""}});
    const struct {
        QString list, table, column, date;
    } others[] = {{"案件相手先名", "T案件", "相手先略称", "案件日付"},
                  {"案件相手先御担当者名", "T案件", "相手先御担当者名", "案件日付"},
                  {"引合得意先名", "T営業引合", "得意先名称A", "営業引合日付"},
                  {"引合商品名", "T営業引合", "営業引合商品名A", "営業引合日付"},
                  {"見積得意先名", "T営業見積", "得意先名称A", "営業見積日付"},
                  {"営業見積タイトル", "T営業見積", "タイトル", "営業見積日付"},
                  {"注文得意先名", "T顧客注文", "得意先名称A", "顧客注文日付"},
                  {"顧客注文タイトル", "T顧客注文", "タイトル", "顧客注文日付"},
                  {"受注得意先名", "T営業受注", "得意先名称A", "営業受注日付"},
                  {"受注納品先名", "T営業受注", "納品先名称A", "営業受注日付"}};
    for (const auto& other : others) {
        const QString column = other.table + "." + other.column, date = other.table + "." + other.date;
        EXPECT_EQ(SqlOf("wnd" + other.list + "一覧", 0,
                        {.items = {{"検索文字列", "山"}}, .firstDay = "20260430", .lastDay = "20260731"}),
                  "SELECT DISTINCT " + column + " FROM " + other.table + " WHERE " + date + " >= '20260430' AND " +
                      date + " <= '20260731' AND " + column + " <> '' AND " + column + " LIKE '%山%' ORDER BY " +
                      column);
    }
}

}  // namespace

}  // namespace lists
