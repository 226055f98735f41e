#include <QDir>
#include <functional>

#include "setup/check_tree.h"
#include "setup_fixture.h"

namespace setup {
namespace {

void RunSql(const Tree& tree, bool environment, const QString& sql) {
    const OpenTree open = OpenStores(tree);
    store::Fault fault;
    ASSERT_TRUE((environment ? open.config : open.main)->Execute(sql, fault)) << fault.description.toStdString();
}

void Overwrite(const QString& path, qint64 from, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(from) && file.write(bytes) == bytes.size());
}

using Damage = std::function<void(const Tree&)>;

Damage Sql(const QString& sql) {
    return [sql](const Tree& tree) { RunSql(tree, false, sql); };
}
Damage ConfigSql(const QString& sql) {
    return [sql](const Tree& tree) { RunSql(tree, true, sql); };
}
Damage NoFolder(const QString& name) {
    return [name](const Tree& tree) { QDir(tree.Folder(name)).removeRecursively(); };
}

const std::vector<std::pair<const char*, Damage>>& Damages() {
    static const std::vector<std::pair<const char*, Damage>> damages = {
        {"folder report", NoFolder("report")},
        {"document folder", NoFolder("documents")},
        {"no environment store", [](const Tree& tree) { QFile::remove(tree.ConfigStore()); }},
        {"main store can't be opened", [](const Tree& tree) { QFile::remove(tree.MainStore()); }},
        {"main store can't be opened", [](const Tree& tree) { Overwrite(tree.MainStore(), 0, QByteArray(200, 'x')); }},
        {"environment store can't be opened", [](const Tree& tree) { QFile::resize(tree.ConfigStore(), 0); }},
        {"main store is damaged",
         [](const Tree& tree) {
             Overwrite(tree.MainStore(), QFileInfo(tree.MainStore()).size() / 2, QByteArray(100'000, 'x'));
         }},
        {"pin.key", [](const Tree& tree) { QFile::remove(tree.PinKey()); }},
        {"pin.key", [](const Tree& tree) { Overwrite(tree.PinKey(), 0, "====="); }},
        {"T閲覧 can't be read", Sql("DROP TABLE T閲覧")},
        {"T営業活動明細 has no column 活動時間", Sql("ALTER TABLE T営業活動明細 DROP COLUMN 活動時間")},
        {"no row 'GNR'", ConfigSql("DELETE FROM データベース定義")},
        {"db of データベース定義", ConfigSql("UPDATE データベース定義 SET db = 'X'")},
        {"動作環境定義 has no row '001'", ConfigSql("DELETE FROM 動作環境定義")},
        {"インストール区分", ConfigSql("UPDATE 動作環境定義 SET インストール区分 = '2'")},
        {"no row '009'", ConfigSql("UPDATE 動作環境定義 SET 運用事業所コード = '009'")},
        {"menu 営業支援", ConfigSql("DELETE FROM 営業支援")},
        {"Mユーザ has no row", Sql("DELETE FROM Mユーザ")},
        {"決算月", Sql("UPDATE Mユーザ SET 決算月 = '13'")},
        {"M事業所 has no row '000'", Sql("DELETE FROM M事業所 WHERE コード = '000'")},
        {"series 01110", Sql("DELETE FROM A番号情報 WHERE 番号ID = '01110'")},
        {"K発信区分 has no rows", Sql("DELETE FROM K発信区分")},
        {"matter 4", Sql("DELETE FROM K対応分類 WHERE 要件分類 = '4' AND 区分 > '0'")},
        {"no staff member", Sql("UPDATE M担当者 SET 在籍区分 = '1'")},
    };
    return damages;
}

QStringList Findings(const Tree& tree) {
    const TreeReport report = CheckTree(tree);
    return report.wrong + report.unfinished;
}

TEST(Check, FindsEachKindOfDamageAndNothingInASoundTree) {
    TemporaryTree sound;
    ASSERT_EQ(sound.Create(SmallDemo()), "");
    ASSERT_EQ(Findings(sound.tree), QStringList{});
    for (const auto& [words, damage] : Damages()) {
        TemporaryTree broken;
        ASSERT_EQ(MakeFolders(broken.tree, {}), "");
        for (const QString file : {"/conf/usrcnfg.accdb", "/conf/pin.key", "/data/gnrdb.accdb"})
            ASSERT_TRUE(QFile::copy(sound.tree.root + file, broken.tree.root + file));
        damage(broken.tree);
        EXPECT_TRUE(Findings(broken.tree).join(u'\n').contains(words))
            << words << " is not in: " << Findings(broken.tree).join(u'\n').toStdString();
    }
    EXPECT_FALSE(CheckTree({sound.tree.root + "/nowhere"}).wrong.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(sound.tree.root + "/nowhere"));
}

TEST(Check, TellsPapersThatBelongToNothing) {
    TemporaryTree made;
    ASSERT_EQ(made.Create({}), "");
    RunSql(made.tree, false,
           "INSERT INTO T営業活動明細 (担当者コード, 日付, 開始時刻, 終了時刻) VALUES ('00001', '20261120', '10:00', "
           "'24:30')");
    RunSql(
        made.tree, false,
        "INSERT INTO M付属書類 (情報名, 情報識別ID, SEQNo, 書類名) VALUES ('活動手帳', '202611201000243000001', '001', "
        "'C:\\机\\見積.txt'), ('活動手帳', '202611201000103000001', '001', '/x/図面'), ('他', '1', '001', 'y')");
    for (const QString name :
         {"活動手帳_202611201000243000001_001_見積.txt", "活動手帳_202611201000243000001_002_見積.txt",
          "活動手帳_202611201000103000001_001_図面", "他_1_001_y", ".katsudo-0123", ".katsudo-4567"}) {
        QFile file(made.tree.Folder("documents/" + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        if (name == ".katsudo-4567")
            file.setFileTime(QDateTime(QDate(2026, 1, 1), QTime(9, 0)), QFileDevice::FileModificationTime);
    }
    const TreeReport report = CheckTree(made.tree);
    EXPECT_EQ(report.wrong, QStringList{});
    EXPECT_EQ(report.stranded,
              (QStringList{"1 rows of M付属書類 have a slot that is gone: 活動手帳_202611201000103000001_001_図面.",
                           "2 copies in the document folder have no row: .katsudo-4567, "
                           "活動手帳_202611201000243000001_002_見積.txt."}));
}

TEST(Check, TellsThatAnEmptyTreeHasNoClassesYet) {
    TemporaryTree made;
    ASSERT_EQ(made.Create({}), "");
    const TreeReport report = CheckTree(made.tree);
    EXPECT_TRUE(report.unfinished.join(u'\n').contains("K要件分類 has no rows"));
    EXPECT_EQ(report.wrong, QStringList{}) << "the client starts on it";
}

}  // namespace
}  // namespace setup
