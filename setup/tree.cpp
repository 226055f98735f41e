#include "setup/tree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace setup {
namespace {

// An existing store of the tree, ".accdb" before ".mdb"; empty when there is neither.
QString FindStore(const QString& base) {
    for (const QString& file : {base + ".accdb", base + ".mdb"})
        if (QFileInfo(file).isFile()) return file;
    return {};
}

// As the client composes it.
QString MainConnectionString(store::Connection& config, const QString& kind, const std::optional<ServerAdmin>& admin) {
    const auto value = [&config](const QString& column) {
        return ReadValue(config, "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'", column).trimmed();
    };
    const bool server = kind == "S";
    const bool asAdmin = server && admin;
    const QString text =
        QString("Provider=%1;User ID=%2;Password=%3;Data Source=%4;")
            .arg(value("プロバイダ名"), asAdmin ? admin->user : value("ユーザーID"),
                 asAdmin ? admin->password : value("パスワード"), value(server ? "サーバー名" : "データソース名"));
    return server ? text + "Initial Catalog=" + value("データベース名") + ";" : text;
}

std::unique_ptr<store::Connection> OpenMain(const Tree& tree, OpenTree& open, const std::optional<ServerAdmin>& admin) {
    const QString sql = "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'";
    open.dbKind = ReadValue(*open.config, sql, "db");
    if (ReadValue(*open.config, sql, "プロバイダ名").trimmed().isEmpty()) {
        open.problem = "The environment store has no row データベース定義 'GNR' with a provider.";
        return nullptr;
    }
    store::Fault fault;
    auto main = store::OpenConnection(MainConnectionString(*open.config, open.dbKind, admin), tree.root, fault);
    if (!main) open.problem = "The main store can't be opened: " + fault.description;
    return main;
}

}  // namespace

bool Tree::Exists() const {
    return !FindStore(root + "/conf/usrcnfg").isEmpty() || !FindStore(root + "/data/gnrdb").isEmpty();
}

const QStringList& Tree::FolderNames() {
    static const QStringList names = {"prgbin", "conf", "data", "report", "manual", "users", DocumentFolder()};
    return names;
}

const QString& Tree::DocumentFolder() {
    static const QString name = "documents";
    return name;
}

QString MakeFolders(const Tree& tree, const QString& clientFile) {
    for (const QString& name : Tree::FolderNames())
        if (!QDir().mkpath(tree.Folder(name))) return "The folder " + tree.Folder(name) + " can't be made.";
    if (clientFile.isEmpty() || !QFileInfo(clientFile).isFile()) return {};
    const QString target = tree.Folder("prgbin") + "/" + QFileInfo(clientFile).fileName();
    if (QFileInfo(clientFile).canonicalFilePath() == QFileInfo(target).canonicalFilePath()) return {};
    QFile::remove(target);
    if (!QFile::copy(clientFile, target)) return "The client can't be copied to " + target + ".";
    return {};
}

OpenTree OpenStores(const Tree& tree, const std::optional<ServerAdmin>& admin) {
    OpenTree open;
    const QString config = FindStore(tree.root + "/conf/usrcnfg");
    if (config.isEmpty()) {
        open.problem = "There is no environment store conf/usrcnfg.accdb.";
        return open;
    }
    store::Fault fault;
    open.config = store::OpenConnection("Provider=SQLite;Data Source=" + config + ";", tree.root, fault);
    if (!open.config) {
        open.problem = "The environment store can't be opened: " + fault.description;
        return open;
    }
    open.main = OpenMain(tree, open, admin);
    return open;
}

QString ReadValue(store::Connection& connection, const QString& sql, const QString& column) {
    store::Fault fault;
    const auto rows = connection.Query(sql, fault);
    return rows ? rows->Value(column).value_or(QString()) : QString();
}

}  // namespace setup
