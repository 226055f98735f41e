#include "setup/backup.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>

#include "platform/clock.h"
#include "session/schema.h"
#include "store/sqlite_copy.h"

namespace setup {
namespace {

const QString kList = "backup.json";
constexpr int kForm = 1;

QString HashOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? QString::fromLatin1(hash.result().toHex())
                                                                 : QString();
}

/// How many rows each table of a store has; empty when one can't be counted.
std::map<QString, qint64> RowsOf(const QString& path) {
    store::Fault fault;
    const QString quoted = QString(path).replace("\"", "\"\"");
    const auto connection = store::OpenConnection("Provider=SQLite;Data Source=\"" + quoted + "\";", {}, fault);
    if (!connection) return {};
    const auto names = connection->Query(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name", fault);
    std::map<QString, qint64> counts;
    for (; names && !names->Eof(); names->MoveNext()) {
        const QString name = names->Value("name").value_or(QString());
        const auto row = connection->Query(QString("SELECT COUNT(*) AS 件数 FROM [%1]").arg(name), fault);
        if (!row) return {};
        counts[name] = row->Value("件数").value_or(QString()).toLongLong();
    }
    return counts;
}

/// A backup on its way, in a folder of a passing name.
class BackupWork {
  public:
    BackupWork(const Tree& tree, QString folder) : tree_(tree), folder_(std::move(folder)) {}

    QString Run() {
        const TreeFiles files = FindTreeFiles(tree_);
        if (!files.problem.isEmpty()) return files.problem;
        if (QFile::exists(tree_.PinKey())) AddPinKey();
        // The stores before the documents: a document has its row before its copy.
        for (const QString& name : files.stores)
            if (problem_.isEmpty()) AddStore(name);
        if (problem_.isEmpty() && QFileInfo(files.documents).isDir()) AddDocuments(files.documents);
        return problem_.isEmpty() ? WriteList() : problem_;
    }

  private:
    QString Place(const QString& name) const { return folder_ + "/" + name; }

    void AddPinKey() {
        QDir().mkpath(folder_ + "/conf");
        if (CopyPinKey(tree_.PinKey(), Place("conf/pin.key")))
            Add("conf/pin.key");
        else
            problem_ = tree_.PinKey() + " can't be copied.";
    }

    void AddStore(const QString& name) {
        store::Fault fault;
        const QString place = Place(name);
        QDir().mkpath(QFileInfo(place).path());
        if (!store::CopySqliteStore(tree_.root + "/" + name, place, fault))
            problem_ = QString("The store %1 can't be copied: %2").arg(name, fault.description);
        else if (!store::CheckSqliteStore(place, fault))
            problem_ = QString("The store %1 is damaged: %2").arg(name, fault.description);
        else
            Add(name, RowsOf(place));
    }

    void AddDocuments(const QString& documents) {
        problem_ = CopyMissingDocuments(documents, Place(Tree::DocumentFolder()));
        QDirIterator entries(Place(Tree::DocumentFolder()), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (problem_.isEmpty() && entries.hasNext())
            Add(QDir(folder_).relativeFilePath(entries.next()));
    }

    void Add(const QString& name, const std::map<QString, qint64>& rows = {}) {
        QJsonObject file{{"name", name}, {"bytes", QFileInfo(Place(name)).size()}, {"sha256", HashOf(Place(name))}};
        QJsonObject counts;
        for (const auto& [table, count] : rows)
            counts.insert(table, count);
        if (!rows.empty()) file.insert("rows", counts);
        if (file["sha256"].toString().isEmpty()) problem_ = Place(name) + " can't be read.";
        files_.append(file);
    }

    QString WriteList() {
        const QJsonObject list{{"form", kForm},
                               {"schema", session::kSchemaVersion},
                               {"made", platform::SystemClock().Now().toString(Qt::ISODate)},
                               {"files", files_}};
        QSaveFile file(Place(kList));
        const QByteArray text = QJsonDocument(list).toJson();
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()
                   ? QString()
                   : file.fileName() + " can't be written.";
    }

    const Tree& tree_;
    QString folder_, problem_;
    QJsonArray files_;
};

BackupFile ReadEntry(const QJsonObject& entry) {
    BackupFile file{entry["name"].toString(), entry["bytes"].toInteger(-1), entry["sha256"].toString(), {}};
    const QJsonObject rows = entry["rows"].toObject();
    for (auto row = rows.begin(); row != rows.end(); ++row)
        file.rows[row.key()] = row.value().toInteger(-1);
    return file;
}

QString WrongWith(const QString& folder, const BackupFile& file) {
    const QString place = folder + "/" + file.name;
    // A list that was written by another hand mustn't lead out of the folder.
    if (file.name.isEmpty() || QDir::cleanPath(place) != place || QDir::isAbsolutePath(file.name))
        return "The backup's list names a file that can't be one of its own: " + file.name;
    if (!QFileInfo(place).isFile()) return "The backup lacks " + file.name + ".";
    if (QFileInfo(place).size() != file.bytes || HashOf(place) != file.sha256)
        return "The backup's " + file.name + " isn't as it was written.";
    store::Fault fault;
    if (file.rows.empty()) return {};
    if (!store::CheckSqliteStore(place, fault)) return QString("%1 is damaged: %2").arg(file.name, fault.description);
    return RowsOf(place) == file.rows ? QString() : "The backup's " + file.name + " has other rows than it says.";
}

}  // namespace

QString BackupTree(const Tree& tree, const QString& folder) {
    const QString place = QDir::cleanPath(folder), unfinished = place + ".unfinished";
    if (QFileInfo::exists(place) && !(QFileInfo(place).isDir() && QDir(place).isEmpty()))
        return place + " is there already; a backup takes a new folder.";
    if (LiesInTree(tree, place)) return "A backup doesn't go into the tree itself.";
    if (!QDir().mkpath(QFileInfo(place).path())) return "The folder " + place + " can't be made.";
    QLockFile lock(place + ".lock");
    lock.setStaleLockTime(0);
    if (!lock.tryLock(0)) return "Another backup to " + place + " is on its way, or the folder can't be written.";
    // What a run that was cut short left.
    QDir(unfinished).removeRecursively();
    if (!QDir().mkpath(unfinished)) return "The folder " + unfinished + " can't be made.";
    QString problem = BackupWork(tree, unfinished).Run();
    QDir().rmdir(place);
    if (problem.isEmpty() && !QDir().rename(unfinished, place)) problem = place + " can't take its name.";
    if (!problem.isEmpty()) QDir(unfinished).removeRecursively();
    return problem;
}

Backup ReadBackup(const QString& folder) {
    const QString place = QDir::cleanPath(folder);
    Backup backup;
    QFile list(place + "/" + kList);
    if (!list.open(QIODevice::ReadOnly)) {
        backup.problem = place + " is no backup: it has no " + kList + ".";
        return backup;
    }
    const QJsonObject told = QJsonDocument::fromJson(list.readAll()).object();
    const QJsonArray files = told["files"].toArray();
    if (told["form"].toInt() != kForm || files.isEmpty()) backup.problem = list.fileName() + " can't be understood.";
    if (told["schema"].toInt() > session::kSchemaVersion)
        backup.problem = "The backup is of a newer version of this program.";
    for (const QJsonValue& entry : files) {
        if (!backup.problem.isEmpty()) break;
        backup.files.push_back(ReadEntry(entry.toObject()));
        backup.problem = WrongWith(place, backup.files.back());
    }
    return backup;
}

}  // namespace setup
