#include "store/bulk_writer.h"

#include <QFileInfo>
#include <QSqlError>

#include "store/sqlite_file.h"

namespace store {
namespace {

// In brackets: a misspelled column in double quotes would be taken for a text.
QString Name(const QString& name) {
    return u'[' + name + u']';
}

QString Literal(QString text) {
    return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

QString InsertStatement(const QString& table, const QStringList& columns, const FixedTexts& fixed) {
    QStringList names;
    QStringList values;
    for (const QString& column : columns) {
        names.append(Name(column));
        values.append(QStringLiteral("?"));
    }
    for (const auto& [column, text] : fixed) {
        names.append(Name(column));
        values.append(Literal(text));
    }
    return QStringLiteral("INSERT INTO %1 (").arg(Name(table)) + names.join(u',') + QStringLiteral(") VALUES (") +
           values.join(u',') + u')';
}

}  // namespace

BulkTable::BulkTable(QSqlQuery query, qsizetype width) : query_(std::move(query)), width_(width) {}

bool BulkTable::WidthFits(qsizetype given, Fault& fault) const {
    if (given != width_) {
        fault = {0, QStringLiteral("値の数 %1 が列の数 %2 と違います。").arg(given).arg(width_)};
    }
    return given == width_;
}

bool BulkTable::Insert(Fault& fault) {
    if (!query_.exec()) {
        fault = FaultOf(query_.lastError());
        return false;
    }
    return true;
}

bool BulkTable::Append(const QVariantList& row, Fault& fault) {
    if (!WidthFits(row.size(), fault)) {
        return false;
    }
    for (int i = 0; i < row.size(); ++i) {
        query_.bindValue(i, row[i]);
    }
    return Insert(fault);
}

bool BulkTable::Append(const QStringList& row, Fault& fault) {
    if (!WidthFits(row.size(), fault)) {
        return false;
    }
    for (int i = 0; i < row.size(); ++i) {
        query_.bindValue(i, row[i].isNull() ? QStringLiteral("") : row[i]);
    }
    return Insert(fault);
}

BulkWriter::BulkWriter(std::unique_ptr<SqliteFile> file) : file_(std::move(file)) {}

BulkWriter::~BulkWriter() {
    tables_.clear();
}

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

BulkTable* BulkWriter::Table(const QString& table, const QStringList& columns, Fault& fault, const FixedTexts& fixed) {
    QSqlQuery query = file_->NewQuery();
    query.setForwardOnly(true);
    if (!query.prepare(InsertStatement(table, columns, fixed))) {
        fault = FaultOf(query.lastError());
        return nullptr;
    }
    tables_.push_back(std::unique_ptr<BulkTable>(new BulkTable(std::move(query), columns.size())));
    return tables_.back().get();
}

}  // namespace store
