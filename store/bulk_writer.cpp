#include "store/bulk_writer.h"

#include <QFileInfo>

#include "store/sqlite_file.h"

namespace store {
BulkWriter::BulkWriter(std::unique_ptr<SqliteFile> file) : file_(std::move(file)) {}

BulkWriter::~BulkWriter() = default;

std::unique_ptr<BulkWriter> BulkWriter::Open(const QString& path, Fault& fault) {
    if (!QFileInfo(path).isFile()) {
        fault = {0, QStringLiteral("データベースファイルがありません: %1").arg(path)};
        return nullptr;
    }
    auto file = SqliteFile::Open(path, SqliteFile::Mode::Existing, fault);
    // None of these outlives the connection: the file keeps its rollback journal.
    for (const auto* pragma : {"PRAGMA journal_mode = MEMORY", "PRAGMA synchronous = OFF", "PRAGMA cache_size = -65536",
                               "PRAGMA temp_store = MEMORY"}) {
        if (!file || !file->Run(QString::fromLatin1(pragma), fault)) {
            return nullptr;
        }
    }
    return std::unique_ptr<BulkWriter>(new BulkWriter(std::move(file)));
}

bool BulkWriter::Run(const QString& sql, Fault& fault) {
    return file_->Run(sql, fault);
}

bool BulkWriter::Begin(Fault& fault) {
    return file_->Run(QStringLiteral("BEGIN IMMEDIATE"), fault);
}

bool BulkWriter::Commit(Fault& fault) {
    return file_->Run(QStringLiteral("COMMIT"), fault);
}

}  // namespace store
