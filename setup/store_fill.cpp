#include "setup/store_fill.h"

#include <QFile>

#include "store/create_store.h"

namespace setup {
namespace {

constexpr int kRowsOfATransaction = 250'000;

}  // namespace

void RowSink::Add(const QStringList& values) {
    if (fill_.Failed()) return;
    if (values.size() != qsizetype(places_.size())) {
        fill_.Note(false, {0, QString("%1 values for %2 columns").arg(values.size()).arg(places_.size())});
        return;
    }
    for (qsizetype i = 0; i < values.size(); ++i)
        row_[places_[i]] = values[i];
    store::Fault fault;
    fill_.Note(table_->Append(row_, fault), fault);
    fill_.CountRow();
}

StoreFill::StoreFill(const QString& path, const std::vector<session::Table>& tables) : path_(path), tables_(tables) {
    if (QFile::exists(path) && !QFile::remove(path)) {
        problem_ = path + " can't be replaced.";
        return;
    }
    store::Fault fault;
    Note(store::CreateSqliteStore(path, fault), fault);
    if (Failed()) return;
    writer_ = store::BulkWriter::Open(path, fault);
    Note(writer_ != nullptr, fault);
    Run(QString("PRAGMA user_version = %1").arg(session::kSchemaVersion));
    if (!Failed()) Note(writer_->Begin(fault), fault);
    for (const session::Table& table : tables_)
        Run(session::CreateTableStatement(table));
}

RowSink& StoreFill::Rows(const QString& table, const QStringList& columns) {
    auto& sink = sinks_[table + "/" + columns.join(u',')];
    if (sink) return *sink;
    const session::Table* description = session::FindTable(table);
    const QStringList all = description ? description->ColumnNames() : columns;
    std::vector<int> places;
    for (const QString& column : columns) {
        places.push_back(int(all.indexOf(column)));
        if (places.back() < 0) Note(false, {0, table + " has no column " + column});
    }
    store::BulkTable* bulk = nullptr;
    if (!Failed()) {
        store::Fault fault;
        bulk = writer_->Table(table, all, fault);
        Note(bulk != nullptr, fault);
    }
    sink.reset(new RowSink(*this, bulk, QStringList(all.size(), QString("")), std::move(places)));
    return *sink;
}

QString StoreFill::Finish() {
    store::Fault fault;
    if (!Failed()) Note(writer_->Commit(fault), fault);
    for (const session::Table& table : tables_)
        for (const QString& statement : session::CreateIndexStatements(table))
            Run(statement);
    Run("ANALYZE");
    sinks_.clear();
    writer_.reset();
    return problem_;
}

void StoreFill::Note(bool done, const store::Fault& fault) {
    if (!done && !Failed()) problem_ = path_ + " can't be filled: " + fault.description;
}

void StoreFill::Run(const QString& statement) {
    store::Fault fault;
    if (!Failed()) Note(writer_->Run(statement, fault), fault);
}

void StoreFill::CountRow() {
    if (Failed() || ++uncommitted_ < kRowsOfATransaction) return;
    uncommitted_ = 0;
    store::Fault fault;
    Note(writer_->Commit(fault) && writer_->Begin(fault), fault);
}

}  // namespace setup
