#include "store/bulk_writer.h"

#include <QFileInfo>
#include <vector>

#include "store/postgres_link.h"
#include "store/sqlite_file.h"

namespace store {
namespace {

class SqliteBulkWriter : public BulkWriter {
  public:
    explicit SqliteBulkWriter(std::unique_ptr<SqliteFile> file) : file_(std::move(file)) {}

    bool Run(const QString& sql, Fault& fault) override { return file_->Run(sql, fault); }
    bool Begin(Fault& fault) override { return Run(QStringLiteral("BEGIN IMMEDIATE"), fault); }

  private:
    std::unique_ptr<SqliteFile> file_;
};

class PostgresBulkWriter : public BulkWriter {
  public:
    explicit PostgresBulkWriter(std::unique_ptr<PostgresLink> link) : link_(std::move(link)) {}

    bool Run(const QString& sql, Fault& fault) override { return link_->Run(sql, fault); }
    bool Begin(Fault& fault) override { return Run(QStringLiteral("BEGIN"), fault); }

  private:
    std::unique_ptr<PostgresLink> link_;
};

}  // namespace

std::unique_ptr<BulkWriter> BulkWriter::Open(const QString& path, Fault& fault, CutShort leaves) {
    if (!QFileInfo(path).isFile()) {
        fault = {0, QStringLiteral("データベースファイルがありません: %1").arg(path)};
        return nullptr;
    }
    auto file = SqliteFile::Open(path, SqliteFile::Mode::Existing, fault);
    // None of these outlives the connection: the file keeps its rollback journal.
    std::vector<const char*> pragmas = {"PRAGMA cache_size = -65536", "PRAGMA temp_store = MEMORY"};
    if (leaves == CutShort::Rubbish)
        pragmas.insert(pragmas.end(), {"PRAGMA journal_mode = MEMORY", "PRAGMA synchronous = OFF"});
    for (const auto* pragma : pragmas) {
        if (!file || !file->Run(QString::fromLatin1(pragma), fault)) {
            return nullptr;
        }
    }
    return std::make_unique<SqliteBulkWriter>(std::move(file));
}

std::unique_ptr<BulkWriter> BulkWriter::Open(const PostgresLogin& login, Fault& fault) {
    auto link = PostgresLink::Open(login, {}, fault);
    const QString haste = QStringLiteral("SET synchronous_commit = off; SET maintenance_work_mem = '256MB'");
    if (!link || !link->Run(haste, fault)) return nullptr;
    return std::make_unique<PostgresBulkWriter>(std::move(link));
}

}  // namespace store
