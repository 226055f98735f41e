#include "setup/tree_files.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
namespace setup {
namespace {

const QString kCompanyRow = "SELECT * FROM Mユーザ WHERE ID = '0001'";

bool IsFileProvider(const QString& provider) {
    for (const char* name : {"SQLite", "Microsoft.ACE.OLEDB.12.0", "Microsoft.Jet.OLEDB.4.0"})
        if (provider.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) return true;
    return false;
}

QString PathFrom(const Tree& tree, QString named) {
    named.replace(u'\\', u'/');
    return named.isEmpty() ? QString() : QDir::cleanPath(QDir(tree.root).absoluteFilePath(named));
}

QString StoreIn(const QString& folder) {
    for (const QString name : {"usrcnfg.accdb", "usrcnfg.mdb"})
        if (QFileInfo(folder + "/" + name).isFile()) return folder + "/" + name;
    return {};
}

}  // namespace

QString MainStoreFile(const Tree& tree, store::Connection& config) {
    const QString sql = "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'";
    if (!IsFileProvider(ReadValue(config, sql, "プロバイダ名").trimmed())) return {};
    return PathFrom(tree, ReadValue(config, sql, "データソース名").trimmed());
}

bool LiesInTree(const Tree& tree, const QString& path) {
    return path.startsWith(QDir::cleanPath(tree.root) + "/");
}

QString DocumentFolderOf(const Tree& tree, store::Connection& main) {
    return PathFrom(tree, ReadValue(main, kCompanyRow, "ドキュメントフォルダ").trimmed());
}

TreeFiles FindTreeFiles(const Tree& tree) {
    TreeFiles files;
    const OpenTree open = OpenStores(tree);
    files.problem = open.problem;
    if (!open.config) return files;
    const QString main = MainStoreFile(tree, *open.config);
    if (main.isEmpty())
        files.problem = "The main store isn't a file of this tree; a server has tools of its own for that.";
    else if (!LiesInTree(tree, main))
        files.problem = "The main store lies outside the tree: " + main;
    if (!files.problem.isEmpty()) return files;
    const QDir root(tree.root);
    files.stores = {root.relativeFilePath(main), root.relativeFilePath(StoreIn(tree.Folder("conf")))};
    for (const QString& user : QDir(tree.Folder("users")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString own = StoreIn(tree.Folder("users/" + user + "/conf"));
        if (!own.isEmpty()) files.stores << root.relativeFilePath(own);
    }
    files.documents = DocumentFolderOf(tree, *open.main);
    files.documentsInside = LiesInTree(tree, files.documents);
    return files;
}

QString CopyMissingDocuments(const QString& from, const QString& to) {
    if (!QDir().mkpath(to)) return "The folder " + to + " can't be made.";
    const auto entries = QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(from).entryList(entries, QDir::Name)) {
        const QString source = from + "/" + name, target = to + "/" + name;
        if (name.startsWith(".katsudo-") || QFileInfo::exists(target)) continue;
        const platform::FileFault fault = platform::CopyWhole(source, target).fault;
        if (fault != platform::FileFault::None && fault != platform::FileFault::Missing)
            return source + " can't be copied: " + FileFaultWords(fault);
    }
    return {};
}

bool CopyPinKey(const QString& from, const QString& to) {
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) return false;
    target.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const QByteArray key = source.readAll();
    return target.write(key) == key.size() && target.commit();
}

QString FileFaultWords(platform::FileFault fault) {
    using platform::FileFault;
    switch (fault) {
        case FileFault::DiskFull:
            return "the disk is full.";
        case FileFault::NoAccess:
            return "it may not be read or written.";
        case FileFault::NameRefused:
            return "the file system refuses its name.";
        case FileFault::InUse:
            return "it is in use.";
        case FileFault::TargetExists:
            return "something bears its name already.";
        case FileFault::Changed:
            return "it changed while it was copied.";
        default:
            return "its disk fails.";
    }
}

}  // namespace setup
