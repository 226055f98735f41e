#include "setup_fixture.h"

namespace setup {
namespace {

class Demo : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        made_ = new TemporaryTree;
        ASSERT_EQ(made_->Create(SmallDemo()), "");
    }
    static void TearDownTestSuite() {
        delete made_;
        made_ = nullptr;
    }
    static int Count(const QString& from) { return First(made_->tree, "SELECT COUNT(*) AS 件数 FROM " + from).toInt(); }
    static const Tree& TheTree() { return made_->tree; }

  private:
    static inline TemporaryTree* made_ = nullptr;
};

TEST_F(Demo, HasTheSizesThatWereAskedFor) {
    EXPECT_EQ(Count("M担当者"), 14);
    EXPECT_EQ(Count("M担当者 WHERE 在籍区分 = '1'"), 1);
    int parties = 0;
    for (const QString& kind : PartyKinds()) {
        parties += Count("M" + kind);
        EXPECT_GT(Count("M" + kind + "御担当者"), 0) << kind.toStdString();
    }
    EXPECT_EQ(parties, 120);
    for (const QString& kind : session::DocumentKinds())
        EXPECT_EQ(Count("T" + kind), 40) << kind.toStdString();
    EXPECT_GT(Count("M郵便番号"), 50);
    EXPECT_EQ(First(TheTree(), "SELECT MAX(日付) AS 日付 FROM T営業活動"), "20260731");
    EXPECT_LT(First(TheTree(), "SELECT MIN(日付) AS 日付 FROM T営業活動"), "20260510");
}

TEST_F(Demo, CountsSlotsExactlyWhateverTheyAreSpreadOver) {
    for (const int slotCount : {0, 7, 30011}) {
        DemoSizes sizes = SmallDemo();
        sizes.staff = 3;
        sizes.activities = slotCount;
        TemporaryTree made;
        ASSERT_EQ(made.Create(sizes), "");
        EXPECT_EQ(First(made.tree, "SELECT COUNT(*) AS 件数 FROM T営業活動明細").toInt(), slotCount);
    }
}

// Each statement finds the rows that make no sense.
TEST_F(Demo, NoRowPointsAtNothing) {
    QStringList senseless = {
        "T営業活動明細 WHERE NOT EXISTS (SELECT * FROM T営業活動 WHERE T営業活動.担当者コード = "
        "T営業活動明細.担当者コード AND "
        "T営業活動.日付 = T営業活動明細.日付)",
        "T営業活動明細 WHERE 担当者コード NOT IN (SELECT コード FROM M担当者 WHERE 在籍区分 = '0')",
        "T営業活動明細 WHERE 開始時刻 >= 終了時刻 OR 活動時間 < 15 OR LENGTH(開始時刻) <> 5 OR 日付 > '20260731'",
        "T営業活動明細 WHERE 発信区分 NOT IN (SELECT 区分 FROM K発信区分) OR 応対方法 NOT IN (SELECT 区分 FROM "
        "K応対方法)",
        "T営業活動明細 WHERE 対応分類 = '0' OR NOT EXISTS (SELECT * FROM K対応分類 WHERE K対応分類.要件分類 = "
        "T営業活動明細.要件分類 AND 区分 = 対応分類)",
        "T営業活動明細 AS 前 WHERE EXISTS (SELECT * FROM T営業活動明細 AS 後 WHERE 後.担当者コード = 前.担当者コード "
        "AND "
        "後.日付 = 前.日付 AND 後.開始時刻 > 前.開始時刻 AND 後.開始時刻 < 前.終了時刻)",
        "M担当者 WHERE 部門コード NOT IN (SELECT コード FROM M部門) OR セクションコード NOT IN (SELECT コード FROM "
        "Mセクション) "
        "OR 事業所コード NOT IN (SELECT コード FROM M事業所)",
        "M納品先 WHERE 得意先コード <> '' AND 得意先コード NOT IN (SELECT コード FROM M得意先)",
        "M郵便番号 WHERE 郵便番号 NOT LIKE '___-____' OR 住所A = ''"};
    for (int i = 0; i < 5; ++i) {
        const QString kind = PartyKinds()[std::size_t(i)];
        senseless << QString(
                         "T営業活動明細 WHERE 相手先区分 = '%1' AND NOT EXISTS (SELECT * FROM M%2 WHERE コード = "
                         "相手先コード AND 略称 = 相手先略称)")
                         .arg(i + 1)
                         .arg(kind)
                  << QString(
                         "M%1 WHERE 担当者コード NOT IN (SELECT コード FROM M担当者) OR 電話番号 <> "
                         "REPLACE(電話, '-', '') OR 郵便番号 NOT IN (SELECT 郵便番号 FROM M郵便番号)")
                         .arg(kind)
                  << QString("M%1御担当者 WHERE %1コード NOT IN (SELECT コード FROM M%1)").arg(kind);
    }
    for (const QString& kind : session::DocumentKinds())
        senseless << QString(
                         "T営業活動明細 WHERE %1No <> '' AND NOT EXISTS (SELECT * FROM T%1 WHERE T%1.事業所コード = "
                         "%1事業所コード AND T%1.番号基準日付 = %1番号基準日付 AND T%1.%1No = T営業活動明細.%1No AND "
                         "T%1.担当者コード = T営業活動明細.担当者コード AND %1日付 <= 日付)")
                         .arg(kind)
                  << QString("T%1 WHERE (%1日付 <= '20260331') <> (番号基準日付 = '20260331')").arg(kind);
    for (const QString& rows : senseless)
        EXPECT_EQ(First(TheTree(), "SELECT COUNT(*) AS 件数 FROM " + rows), "0") << rows.toStdString();
    for (const QString& kind : session::DocumentKinds())
        EXPECT_GT(Count("T営業活動明細 WHERE " + kind + "No <> ''"), 0);
}

TEST_F(Demo, SeriesStandAtTheLastNumberGiven) {
    const QString sql = "SELECT 番号基準日付, MAX(営業受注No) AS 連番 FROM T営業受注 GROUP BY 番号基準日付 ORDER BY 1";
    EXPECT_EQ(Rows(TheTree(), "SELECT 期日, 連番 FROM A期日別番号情報 WHERE 番号ID = '16140' ORDER BY 期日"),
              Rows(TheTree(), sql));
    EXPECT_EQ(Rows(TheTree(), sql).size(), 2);
}

QStringList AllRows(const Tree& tree) {
    QStringList rows;
    for (const session::Table& table : session::MainTables())
        rows << Rows(tree, "SELECT * FROM " + table.name);
    return rows;
}

TEST_F(Demo, TheSeedAloneMakesTheRows) {
    TemporaryTree same;
    ASSERT_EQ(same.Create(SmallDemo()), "");
    EXPECT_EQ(AllRows(same.tree), AllRows(TheTree()));
    DemoSizes sizes = SmallDemo();
    sizes.seed = 2;
    TemporaryTree other;
    ASSERT_EQ(other.Create(sizes), "");
    EXPECT_NE(Rows(other.tree, "SELECT 氏名 FROM M担当者"), Rows(TheTree(), "SELECT 氏名 FROM M担当者"));
}

TEST(Postcodes, SplitsBehindTheMunicipality) {
    const struct {
        const char *address, *city, *town;
    } cases[] = {{"東京都千代田区丸の内", "東京都千代田区", "丸の内"},
                 {"東京都港区港南", "東京都港区", "港南"},
                 {"東京都東村山市本町", "東京都東村山市", "本町"},
                 {"東京都利島村", "東京都利島村", ""},
                 {"北海道札幌市中央区北一条西", "北海道札幌市中央区", "北一条西"},
                 {"千葉県市川市市川", "千葉県市川市", "市川"},
                 {"三重県四日市市諏訪町", "三重県四日市市", "諏訪町"},
                 {"福島県郡山市朝日", "福島県郡山市", "朝日"},
                 {"大阪府寝屋川市郡元町", "大阪府寝屋川市", "郡元町"},
                 {"富山県富山市太田中区", "富山県富山市", "太田中区"},
                 {"北海道余市郡余市町大川町", "北海道余市郡余市町", "大川町"},
                 {"佐賀県杵島郡大町町大町", "佐賀県杵島郡大町町", "大町"},
                 {"群馬県佐波郡玉村町飯倉", "群馬県佐波郡玉村町", "飯倉"},
                 {"どこにもない所", "どこにもない所", ""}};
    for (const auto& each : cases) {
        const Postcode split = SplitAddress("1234567", each.address);
        EXPECT_EQ(split.code, "123-4567");
        EXPECT_EQ(split.city, each.city);
        EXPECT_EQ(split.town, each.town);
    }
}

TEST(Postcodes, ReadsADictionaryAndPassesOverWhatItCanNotUse) {
    QTemporaryDir folder;
    QFile file(folder.path() + "/zipcode");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // The last town's name is cut in the middle of a character; the towns before are 東京都千代田区, in EUC.
    file.write(
        ";; note\n1000001 /\xc5\xec\xb5\xfe\xc5\xd4\xc0\xe9\xc2\xe5\xc5\xc4\xb6\xe8\xc0\xe9\xc2\xe5\xc5\xc4;x/\n"
        "1000001 /\xc5\xec/\n0600000 /\xcb\xcc\xb3\xa4\xc6\xbb/\n12345 /\xc5\xec/\nabc /x/\n2000000 /\xc5/\n");
    file.close();
    const auto found = ReadPostcodes(file.fileName());
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].code, "060-0000");
    EXPECT_EQ(found[1].city + "/" + found[1].town, "東京都千代田区/千代田");
    EXPECT_TRUE(ReadPostcodes(folder.path() + "/none").empty());
}

}  // namespace
}  // namespace setup
