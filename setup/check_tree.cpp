#include "setup/check_tree.h"

#include <QDir>
#include <QFileInfo>

#include "identity/stored_pin.h"
#include "session/server_schema.h"
#include "setup/check_papers.h"
#include "setup/copy_tree.h"
#include "setup/empty_rows.h"
#include "store/postgres_dialect.h"

namespace setup {
namespace {

void CheckFolders(const Tree& tree, QStringList& wrong) {
    for (const QString& name : Tree::FolderNames())
        if (name != Tree::DocumentFolder() && !QFileInfo(tree.Folder(name)).isDir())
            wrong << "The folder " + name + " is missing.";
    if (QFile::exists(UnfinishedCopy(tree)))
        wrong << "The tree holds an unfinished copy: run katsudo-setup copy again.";
    if (!identity::IsPinKey(tree.PinKey())) wrong << "The PIN key conf/pin.key is missing or damaged.";
}

// Reading a row of each table tells as well whether the table is there and which columns it has.
void CheckTables(store::Connection& connection, const std::vector<session::Table>& tables, QStringList& wrong) {
    for (const session::Table& table : tables) {
        store::Fault fault;
        const auto rows = connection.Query("SELECT TOP 1 * FROM " + table.name, fault);
        if (!rows) {
            wrong << QString("The table %1 can't be read: %2").arg(table.name, fault.description);
            continue;
        }
        for (const session::Column& column : table.columns)
            if (!rows->Columns().contains(column.name))
                wrong << QString("The table %1 has no column %2.").arg(table.name, column.name);
    }
}

// The engine's own look at the whole file; a page that is damaged far behind the first row shows only here.
void CheckPages(store::Connection& connection, const QString& name, QStringList& wrong) {
    store::Fault fault;
    const auto rows = connection.Query("PRAGMA quick_check(1)", fault);
    const QString verdict = rows ? rows->Value("quick_check").value_or("ok") : fault.description;
    if (verdict != "ok") wrong << QString("The %1 store is damaged: %2").arg(name, verdict);
}

bool Answers(store::Connection& connection, const QString& sql) {
    store::Fault unused;
    return connection.Query(sql, unused) != nullptr;
}

// Whatever way leads to the engine, only this one keeps its pages in a file that others may damage; a server looks
// after its own.
bool HasPages(const OpenTree& open) {
    return open.dbKind != "S" && Answers(*open.main, "SELECT sqlite_version() AS version");
}

bool IsOnServer(store::Connection& connection) {
    return Answers(connection, "SELECT current_database() AS name");
}

// A login that may not write makes saves fail without a word on the screen.
void CheckRights(store::Connection& connection, QStringList& wrong) {
    if (!IsOnServer(connection)) return;
    for (const session::Table& table : session::MainTables()) {
        QStringList refused;
        for (const QString& right : session::ClientRights(table)) {
            store::Fault unused;
            const auto row = connection.Query(
                QString("SELECT CAST(has_table_privilege('\"%1\"', '%2') AS INTEGER) AS may").arg(table.name, right),
                unused);
            if (row && row->Value("may") == "0") refused << right;
        }
        if (!refused.isEmpty())
            wrong << QString("The clients' login has no right to %1 on the table %2.")
                         .arg(refused.join(", "), table.name);
    }
}

// A server's database that was made by other means lacks what a search calls; one that another version of the program
// made finds less, and nobody hears of it.
void CheckSearch(const Tree& tree, store::Connection& connection, QStringList& wrong) {
    store::Fault fault;
    if (!connection.Query("SELECT TOP 1 * FROM K発信区分 WHERE 名称 LIKE '%当方%'", fault))
        wrong << "Texts can't be searched: " + fault.description;
    else if (IsOnServer(connection) && !store::FoldsAsHere(connection))
        wrong << QString(
                     "Searches miss texts: the database was made by another version of the program. Carry it over: "
                     "katsudo-setup create --root NEW --empty --engine postgresql ..., then "
                     "katsudo-setup copy --from %1 --to NEW --admin-user NAME")
                     .arg(tree.root);
}

/// Asks one store for rows that have to be there.
class RowCheck {
  public:
    RowCheck(store::Connection& connection, QStringList& wrong) : connection_(connection), wrong_(wrong) {}

    /// True when there is a row; otherwise the words are noted. A table that can't be read was noted before.
    bool Has(const QString& from, const QString& words) {
        store::Fault fault;
        const auto rows = connection_.Query("SELECT TOP 1 * FROM " + from, fault);
        if (!rows || !rows->Eof()) return rows != nullptr;
        wrong_ << words;
        return false;
    }

    void Value(const QString& from, const QString& column, const std::function<bool(const QString&)>& good) {
        const QString value = ReadValue(connection_, "SELECT TOP 1 * FROM " + from, column);
        if (!good(value))
            wrong_ << QString("%1 of %2 has the value '%3'.").arg(column, from.section(u' ', 0, 0), value);
    }

  private:
    store::Connection& connection_;
    QStringList& wrong_;
};

std::function<bool(const QString&)> OneOf(const QStringList& values) {
    return [values](const QString& value) { return values.contains(value); };
}

std::function<bool(const QString&)> NumberUpTo(int most) {
    return [most](const QString& value) { return value.toInt() >= 1 && value.toInt() <= most; };
}

void CheckEnvironmentRows(store::Connection& config, QStringList& wrong) {
    RowCheck check(config, wrong);
    if (check.Has("データベース定義 WHERE 情報種類 = 'GNR'", "データベース定義 has no row 'GNR'."))
        check.Value("データベース定義 WHERE 情報種類 = 'GNR'", "db", OneOf({"A", "S", "O"}));
    const QString environment = "動作環境定義 WHERE 動作環境定義ID = '001'";
    if (check.Has(environment, "動作環境定義 has no row '001'."))
        check.Value(environment, "インストール区分", OneOf({"0", "1", ""}));
    check.Has("営業支援 WHERE プログラムID = '活動手帳'", "The menu 営業支援 has no row for 活動手帳.");
}

void CheckCompany(const Tree& tree, store::Connection& main, QStringList& wrong) {
    RowCheck check(main, wrong);
    const QString company = "Mユーザ WHERE ID = '0001'";
    if (check.Has(company, "Mユーザ has no row '0001'.")) {
        check.Value(company, "決算月", NumberUpTo(12));
        check.Value(company, "決算日", NumberUpTo(31));
        QString folder = ReadValue(main, "SELECT * FROM " + company, "ドキュメントフォルダ").trimmed();
        folder.replace(u'\\', u'/');
        if (folder.isEmpty() || !QFileInfo(QDir(tree.root), folder).isDir())
            wrong << QString("The document folder '%1' of Mユーザ is missing.").arg(folder);
    }
    for (const Series& series : NumberSeries())
        check.Has("A番号情報 WHERE 番号ID = '" + series.id + "'",
                  "A番号情報 has no row for the series " + series.id + ".");
}

void CheckSites(OpenTree& open, QStringList& wrong) {
    RowCheck check(*open.main, wrong);
    check.Has("M事業所 WHERE コード = '000'", "M事業所 has no row '000'.");
    const QString site =
        ReadValue(*open.config, "SELECT * FROM 動作環境定義 WHERE 動作環境定義ID = '001'", "運用事業所コード");
    if (!site.isEmpty() && site != "000" && !site.contains(u'\''))
        check.Has("M事業所 WHERE コード = '" + site + "'",
                  "M事業所 has no row '" + site + "', which 動作環境定義 names as the operating site.");
}

void CheckClasses(store::Connection& main, QStringList& wrong) {
    RowCheck check(main, wrong);
    for (const QString table : {"K発信区分", "K応対方法", "K要件分類"})
        check.Has(table + " WHERE 区分 > '0'", table + " has no rows, so no slot can be registered.");
    for (const QString table : {"K在籍区分", "K社員区分", "K稼動状況区分", "K取引状況区分"})
        check.Has(table, table + " has no rows.");
    store::Fault fault;
    const auto matters = main.Query("SELECT TOP 9 * FROM K要件分類 WHERE 区分 > '0' ORDER BY 区分", fault);
    for (; matters && !matters->Eof(); matters->MoveNext()) {
        const QString code = matters->Value("区分").value_or("");
        const QString handled = "K対応分類 WHERE 要件分類 = '" + code + "' AND 区分 > '0'";
        check.Has(handled, "K対応分類 has no handling for the matter " + code + ", so it can't be registered.");
    }
    check.Has("M担当者 WHERE 在籍区分 = '0'", "M担当者 has no staff member, so no slot can be registered.");
}

}  // namespace

TreeReport CheckTree(const Tree& tree) {
    if (!QFileInfo(tree.root).isDir()) return {{"There is no folder " + tree.root + "."}, {}, {}};
    TreeReport report;
    QStringList& wrong = report.wrong;
    CheckFolders(tree, wrong);
    OpenTree open = OpenStores(tree);
    if (!open.problem.isEmpty()) wrong << open.problem;
    if (open.config) {
        CheckPages(*open.config, "environment", wrong);
        CheckTables(*open.config, session::EnvironmentTables(), wrong);
        CheckEnvironmentRows(*open.config, wrong);
    }
    if (open.main) {
        if (HasPages(open)) CheckPages(*open.main, "main", wrong);
        CheckTables(*open.main, session::MainTables(), wrong);
        CheckRights(*open.main, wrong);
        CheckSearch(tree, *open.main, wrong);
        CheckCompany(tree, *open.main, wrong);
        CheckSites(open, wrong);
        CheckClasses(*open.main, report.unfinished);
        report.stranded = StrandedPapers(tree, *open.main);
    }
    wrong.removeDuplicates();
    return report;
}

}  // namespace setup
