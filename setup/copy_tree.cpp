#include "setup/copy_tree.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>

#include "setup/copy_target.h"
#include "setup/table_rows.h"
#include "setup/tree_files.h"

namespace setup {
namespace {

constexpr int kRowsOfAStatement = 100;
constexpr int kRowsOfATransaction = 20'000;

// What an empty tree has rows in.
const QStringList kFirstTables = {"Mユーザ", "M事業所", "A番号情報"};

// Where the main store is stays as it was made; run histories and messages are of the old place.
const QStringList kEnvironmentTables = {"動作環境定義", "営業支援"};

QByteArray HashOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

/// Carries one table at a time.
class TableCopy {
  public:
    TableCopy(store::Connection& source, CopyTarget& target, const Progress& progress, QString& problem)
        : source_(source), target_(target), progress_(progress), problem_(problem) {}

    /// Adds what the target's table lacks behind its last row: rows go in by their key's order, so that an interrupted
    /// table is the beginning of the whole.
    void Carry(const session::Table& table) {
        const QStringList columns = ColumnsOf(source_, table, problem_);
        const auto last = LastKey(target_.Main(), table, problem_);
        if (!problem_.isEmpty()) return;
        TableReader reader(source_, table, columns, last);
        qint64 done = 0;
        int uncommitted = 0;
        for (auto rows = reader.Next(); !rows.empty() && problem_.isEmpty(); rows = reader.Next()) {
            if (uncommitted == 0) target_.Begin(problem_);
            Insert(table, columns, rows);
            done += qint64(rows.size());
            uncommitted += int(rows.size());
            if (uncommitted >= kRowsOfATransaction && problem_.isEmpty()) {
                uncommitted = 0;
                target_.Commit(problem_);
            }
            progress_(table.name, done, -1);
        }
        if (problem_.isEmpty()) problem_ = reader.Problem();
        if (uncommitted > 0 && problem_.isEmpty()) target_.Commit(problem_);
    }

    /// True when both hold the same; false as well with words in the problem.
    bool Same(const session::Table& table) {
        const QStringList columns = ColumnsOf(source_, table, problem_);
        if (!problem_.isEmpty()) return false;
        const RowsRead told = [&](qint64 rows) { progress_("= " + table.name, rows, -1); };
        const auto from = DigestOf(source_, table, columns, problem_, told);
        const auto to = from ? DigestOf(target_.Main(), table, columns, problem_, told) : from;
        return to && *from == *to;
    }

    bool Empty(const session::Table& table) { return target_.Run("DELETE FROM \"" + table.name + "\"", problem_); }

  private:
    void Insert(const session::Table& table, const QStringList& columns,
                const std::vector<store::Recordset::Row>& rows) {
        const QString head = InsertHead(table.name, columns);
        QString sql;
        for (std::size_t row = 0; row < rows.size() && problem_.isEmpty(); ++row) {
            sql += (sql.isEmpty() ? head : QString(",")) + InsertRow(table, columns, rows[row]);
            if ((row + 1) % kRowsOfAStatement != 0 && row + 1 < rows.size()) continue;
            if (!target_.Run(sql, problem_)) problem_ = table.name + ": " + problem_;
            sql.clear();
        }
    }

    store::Connection& source_;
    CopyTarget& target_;
    const Progress& progress_;
    QString& problem_;
};

class CopyWork {
  public:
    explicit CopyWork(const CopyOrder& order) : order_(order), source_(OpenStores(order.from)) {}

    QString Run() {
        if (!source_.problem.isEmpty()) problem_ = order_.from.root + ": " + source_.problem;
        if (Good()) target_ = CopyTarget::Open(order_.to, order_.admin, problem_);
        if (!Good()) return problem_;
        Begin();
        if (Good()) target_->DropIndexes(problem_);
        if (Good()) target_->RenewFold(problem_);
        TableCopy tables(*source_.main, *target_, order_.progress, problem_);
        for (const session::Table& table : session::MainTables())
            if (Good()) tables.Carry(table);
        order_.progress("indexes", 0, 0);
        if (Good()) target_->MakeIndexes(problem_);
        for (const session::Table& table : session::MainTables())
            if (Good()) Compare(tables, table);
        for (const QString& table : kEnvironmentTables)
            if (Good()) CarryEnvironment(*session::FindTable(table));
        if (Good() && QFile::exists(order_.from.PinKey()) && !CopyPinKey(order_.from.PinKey(), order_.to.PinKey()))
            problem_ = order_.to.PinKey() + " can't be written.";
        if (Good()) CarryDocuments();
        if (Good() && !QFile::remove(UnfinishedCopy(order_.to)))
            problem_ = UnfinishedCopy(order_.to) + " can't be removed.";
        return problem_;
    }

  private:
    bool Good() const { return problem_.isEmpty(); }

    void Begin() {
        QFile mark(UnfinishedCopy(order_.to));
        if (mark.open(QIODevice::ReadOnly)) {
            const QString earlier = QString::fromUtf8(mark.readAll()).trimmed();
            if (earlier != order_.from.root)
                problem_ = order_.to.root + " holds an unfinished copy of " + earlier + ", and takes no other.";
            return;
        }
        for (const session::Table& table : session::MainTables())
            if (Good()) CheckTable(table);
        if (Good()) WriteMark();
        for (const QString& table : kFirstTables)
            if (Good()) target_->Run("DELETE FROM \"" + table + "\"", problem_);
    }

    // A suite's tables may have more columns than this program knows; none of them may get lost.
    void CheckTable(const session::Table& table) {
        const QStringList known = ColumnsOf(target_->Main(), table, problem_);
        for (const QString& column : ColumnsOf(*source_.main, table, problem_))
            if (Good() && !known.contains(column))
                problem_ = QString("The target's table %1 has no column %2.").arg(table.name, column);
        if (!Good() || kFirstTables.contains(table.name)) return;
        if (LastKey(target_->Main(), table, problem_) && Good())
            problem_ = order_.to.root + " holds a company already; a copy takes a tree that was made empty.";
    }

    void WriteMark() {
        QSaveFile mark(UnfinishedCopy(order_.to));
        const QByteArray text = order_.from.root.toUtf8() + '\n';
        if (!mark.open(QIODevice::WriteOnly) || mark.write(text) != text.size() || !mark.commit())
            problem_ = mark.fileName() + " can't be written.";
    }

    // What differs after an interruption: the source was written in meanwhile, or the target.
    void Compare(TableCopy& tables, const session::Table& table) {
        if (tables.Same(table) || !Good()) return;
        if (tables.Empty(table)) tables.Carry(table);
        if (Good() && !tables.Same(table) && Good())
            problem_ = "The table " + table.name + " differs in the two trees: something writes into one of them.";
    }

    void CarryEnvironment(const session::Table& table) {
        const QStringList columns = ColumnsOf(*source_.config, table, problem_);
        TableReader reader(*source_.config, table, columns);
        const auto rows = reader.Next();
        if (Good()) problem_ = reader.Problem();
        QStringList statements = {"BEGIN IMMEDIATE", "DELETE FROM \"" + table.name + "\""};
        for (const store::Recordset::Row& row : rows)
            statements << InsertHead(table.name, columns) + InsertRow(table, columns, row);
        statements << "COMMIT";
        store::Fault fault;
        for (const QString& statement : statements)
            if (Good() && !target_->Config().Execute(statement, fault))
                problem_ = table.name + " can't be written: " + fault.description;
        if (!Good()) return;
        const auto from = DigestOf(*source_.config, table, columns, problem_);
        if (from != DigestOf(target_->Config(), table, columns, problem_) && Good())
            problem_ = "The table " + table.name + " differs in the two trees.";
    }

    void CarryDocuments() {
        const QString from = DocumentFolderOf(order_.from, *source_.main);
        if (!LiesInTree(order_.from, from) || !QFileInfo(from).isDir()) return;
        const QString to = DocumentFolderOf(order_.to, target_->Main());
        problem_ = CopyMissingDocuments(from, to);
        QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (Good() && files.hasNext()) {
            const QString name = QDir(from).relativeFilePath(files.next());
            if (!name.startsWith(".katsudo-") && HashOf(from + "/" + name) != HashOf(to + "/" + name))
                problem_ = "The document " + name + " differs in the two trees.";
        }
    }

    const CopyOrder& order_;
    OpenTree source_;
    std::unique_ptr<CopyTarget> target_;
    QString problem_;
};

}  // namespace

QString UnfinishedCopy(const Tree& tree) {
    return tree.Folder("conf") + "/copy.unfinished";
}

QString CopyTree(const CopyOrder& order) {
    if (QFileInfo(order.from.root).canonicalFilePath() == QFileInfo(order.to.root).canonicalFilePath())
        return "A tree can't be copied into itself.";
    if (!order.to.Exists()) return order.to.root + " holds no installation; katsudo-setup create makes an empty one.";
    QLockFile lock(order.to.Folder("conf") + "/copy.lock");
    lock.setStaleLockTime(0);
    if (!lock.tryLock(0)) return "Another copy into " + order.to.root + " runs, or its folder conf can't be written.";
    return CopyWork(order).Run();
}

}  // namespace setup
