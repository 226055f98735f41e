#include "setup/restore.h"

#include <QDir>
#include <QFile>

#include "platform/clock.h"
#include "setup/backup.h"
#include "setup/check_tree.h"
#include "store/sqlite_copy.h"

namespace setup {
namespace {

class RestoreWork {
  public:
    RestoreWork(const Tree& tree, QString folder)
        : tree_(tree),
          folder_(std::move(folder)),
          mark_(".replaced-" + platform::SystemClock().Now().toString("yyyyMMdd-HHmmss")) {}

    Restored Run() {
        const Backup backup = ReadBackup(folder_);
        Note(backup.problem);
        if (Good()) Note(MakeFolders(tree_, {}));
        const bool documents = QFileInfo(folder_ + "/" + Tree::DocumentFolder()).isDir();
        // All that takes long or may find the disk full comes before the first replacement.
        if (Good() && documents) StageDocuments();
        for (const BackupFile& file : backup.files)
            if (Good() && !file.rows.empty()) RestoreStore(file.name);
        if (Good() && QFile::exists(folder_ + "/conf/pin.key")) RestorePinKey();
        if (Good() && documents) RestoreDocuments();
        QDir(Staged()).removeRecursively();
        if (Good()) Note(CheckTree(tree_).wrong.join(u'\n'));
        return std::move(restored_);
    }

  private:
    bool Good() const { return restored_.problem.isEmpty(); }
    void Note(const QString& problem) {
        if (Good()) restored_.problem = problem;
    }
    QString Staged() const { return tree_.Folder(Tree::DocumentFolder() + ".restoring"); }

    void RestoreStore(const QString& name) {
        const QString from = folder_ + "/" + name, place = tree_.root + "/" + name;
        QDir().mkpath(QFileInfo(place).path());
        store::Fault fault;
        if (QFile::exists(place)) {
            if (store::ReplaceSqliteStore(from, place, place + mark_, fault)) {
                restored_.kept << place + mark_;
                return;
            }
            if (!store::IsNoStore(fault))
                return Note(QString("The store %1 can't be replaced: %2").arg(name, fault.description));
        }
        PutAside(place);
        if (Good()) PutAnew(from, place);
    }

    // Nobody can work with a file that is no store any more, so it gives its name away. What the engine left beside it
    // goes with it, or it would be taken for the new file's.
    void PutAside(const QString& place) {
        for (const QString end : {"", "-journal", "-wal", "-shm"})
            if (QFile::exists(place + end)) {
                if (!QFile::rename(place + end, place + mark_ + end)) return Note(place + end + " can't be renamed.");
                restored_.kept << place + mark_ + end;
            }
    }

    void PutAnew(const QString& from, const QString& place) {
        const QString passing = place + ".restoring";
        QFile::remove(passing);
        store::Fault fault;
        if (!store::CopySqliteStore(from, passing, fault))
            Note(QString("%1 can't be written: %2").arg(place, fault.description));
        else if (!QFile::rename(passing, place))
            Note(place + " can't take its name.");
    }

    void RestorePinKey() {
        const QString key = tree_.PinKey(), kept = key + mark_;
        if (QFile::exists(key) && !CopyPinKey(key, kept)) return Note(key + " can't be kept.");
        if (QFile::exists(kept)) restored_.kept << kept;
        if (!CopyPinKey(folder_ + "/conf/pin.key", key)) Note(key + " can't be written.");
    }

    void StageDocuments() {
        QDir(Staged()).removeRecursively();
        Note(CopyMissingDocuments(folder_ + "/" + Tree::DocumentFolder(), Staged()));
    }

    void RestoreDocuments() {
        const OpenTree open = OpenStores(tree_);
        if (!open.main) return Note(open.problem);
        const QString documents = DocumentFolderOf(tree_, *open.main);
        if (documents.isEmpty()) return;
        if (!LiesInTree(tree_, documents)) return Note(CopyMissingDocuments(Staged(), documents));
        if (QDir(documents).exists() && !QDir(documents).isEmpty()) {
            if (!QDir().rename(documents, documents + mark_)) return Note(documents + " can't be renamed.");
            restored_.kept << documents + mark_;
        }
        QDir().rmdir(documents);
        QDir().mkpath(QFileInfo(documents).path());
        if (!QDir().rename(Staged(), documents)) Note(documents + " can't take its name.");
    }

    const Tree& tree_;
    QString folder_, mark_;
    Restored restored_;
};

}  // namespace

Restored RestoreTree(const Tree& tree, const QString& backupFolder) {
    return RestoreWork(tree, QDir::cleanPath(backupFolder)).Run();
}

}  // namespace setup
