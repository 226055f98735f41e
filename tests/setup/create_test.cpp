#include <QFileInfo>

#include "setup_fixture.h"

namespace setup {
namespace {

TEST(CreateEmpty, HoldsWhatTheClientStartsWithAndNothingElse) {
    TemporaryTree made;
    ASSERT_EQ(made.Create({}), "");
    for (const QString name : {"prgbin", "conf", "data", "report", "manual", "users", "documents"})
        EXPECT_TRUE(QFileInfo(made.tree.Folder(name)).isDir()) << name.toStdString();
    EXPECT_EQ(QFileInfo(made.tree.PinKey()).permissions() & 0x0077, 0) << "others can read the key";

    EXPECT_EQ(Rows(made.tree, "SELECT 情報種類, db, プロバイダ名, データソース名 FROM データベース定義", true),
              QStringList{"GNR|A|SQLite|data/gnrdb.accdb"});
    EXPECT_EQ(Rows(made.tree, "SELECT 動作環境定義ID, 運用事業所コード, インストール区分 FROM 動作環境定義", true),
              QStringList{"001|000|0"});
    EXPECT_EQ(Rows(made.tree, "SELECT プログラムID, 処理分類 FROM 営業支援 ORDER BY プログラムID", true),
              (QStringList{"営業日程移動|1", "活動手帳|1"}));
    EXPECT_EQ(Rows(made.tree, "SELECT ID, 暗証番号有無, 決算月, 決算日, 伝票番号管理区分 FROM Mユーザ"),
              QStringList{"0001|0|3|31|0"});
    EXPECT_EQ(Rows(made.tree, "SELECT 番号ID, 連番種類 FROM A番号情報 ORDER BY 番号ID"),
              (QStringList{"01110|3", "16110|1", "16130|1", "16140|1", "16210|1", "16220|1", "16810|1"}));
    QStringList filled;
    for (const session::Table& table : session::MainTables())
        if (First(made.tree, "SELECT COUNT(*) AS 件数 FROM " + table.name) != "0") filled << table.name;
    EXPECT_EQ(filled, (QStringList{"M事業所", "Mユーザ", "A番号情報"}));
}

TEST(CreateEmpty, KeysRefuseSecondRowsAndOtherColumnsTakeNull) {
    TemporaryTree made;
    ASSERT_EQ(made.Create({}), "");
    const OpenTree open = OpenStores(made.tree);
    for (const auto* tables : {&session::EnvironmentTables(), &session::MainTables()}) {
        store::Connection& connection = tables == &session::MainTables() ? *open.main : *open.config;
        for (const session::Table& table : *tables) {
            QStringList values;
            for (const session::Column& column : table.columns)
                values << (table.key.contains(column.name) ? "'zz'" : "NULL");
            const QString insert = "INSERT INTO " + table.name + " VALUES (" + values.join(u',') + ")";
            store::Fault fault;
            EXPECT_TRUE(connection.Execute(insert, fault)) << fault.description.toStdString();
            EXPECT_EQ(connection.Execute(insert, fault), table.key.isEmpty()) << table.name.toStdString();
        }
    }
}

TEST(Create, LeavesATreeThatIsThereUnlessForced) {
    TemporaryTree made;
    ASSERT_EQ(made.Create({}), "");
    store::Fault fault;
    ASSERT_TRUE(OpenStores(made.tree).main->Execute("UPDATE Mユーザ SET 名称 = '自社'", fault));
    EXPECT_NE(made.Create({}), "");
    EXPECT_EQ(First(made.tree, "SELECT 名称 FROM Mユーザ"), "自社");

    CreateOrder again;
    again.tree = made.tree;
    again.force = true;
    ASSERT_EQ(CreateTree(again), "");
    EXPECT_EQ(First(made.tree, "SELECT 名称 FROM Mユーザ"), "");
}

TEST(Create, CopiesTheClientSoThatItRuns) {
    TemporaryTree made;
    const QString client = made.folder.path() + "/katsudo-techo";
    QFile file(client);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("#!") == 2);
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    CreateOrder order;
    order.tree = made.tree;
    order.clientFile = client;
    ASSERT_EQ(CreateTree(order), "");
    EXPECT_TRUE(QFileInfo(made.tree.Folder("prgbin") + "/katsudo-techo").isExecutable());
}

TEST(Create, AFolderThatCanNotBeMadeIsTold) {
    TemporaryTree made;
    QFile file(made.tree.root);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_NE(made.Create({}), "");
}

}  // namespace
}  // namespace setup
