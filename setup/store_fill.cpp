#include "setup/store_fill.h"

#include <QFile>

#include "session/server_schema.h"
#include "store/create_store.h"
#include "store/postgres_dialect.h"

namespace setup {
namespace {

constexpr int kRowsOfATransaction = 250'000;
constexpr int kRowsOfAStatement = 100;

void AppendQuoted(QString& sql, const QString& value) {
    sql += u'\'';
    if (value.contains(u'\''))
        sql += QString(value).replace("'", "''");
    else
        sql += value;
    sql += u'\'';
}

}  // namespace

RowSink::RowSink(StoreFill& fill, const QString& table, const QStringList& columns)
    : fill_(fill), width_(columns.size()) {
    QStringList all = columns;
    const session::Table* description = session::FindTable(table);
    for (const session::Column& column : description ? description->columns : std::vector<session::Column>())
        if (!columns.contains(column.name)) {
            all << column.name;
            blanks_ += column.integer ? ",NULL" : ",''";
        }
    head_ = QString("INSERT INTO \"%1\" (\"%2\") VALUES ").arg(table, all.join("\",\""));
}

// Binding dozens of values a row costs the driver several times what the engine needs to read them as text, so the rows
// go in as text, many to a statement.
void RowSink::Add(const QStringList& values) {
    if (fill_.Failed()) return;
    if (values.size() != width_) {
        fill_.Note(false, {0, QString("%1 values for %2 columns").arg(values.size()).arg(width_)});
        return;
    }
    pending_ += pendingRows_ == 0 ? head_ : QString(",");
    QChar before = u'(';
    for (const QString& value : values) {
        pending_ += before;
        AppendQuoted(pending_, value);
        before = u',';
    }
    pending_ += blanks_ + u')';
    if (++pendingRows_ >= kRowsOfAStatement) Flush();
}

void RowSink::Flush() {
    if (pendingRows_ == 0) return;
    fill_.Run(pending_);
    fill_.CountRows(std::exchange(pendingRows_, 0));
    pending_.resize(0);
}

StoreFill::StoreFill(const QString& path, const std::vector<session::Table>& tables)
    : path_(path),
      tables_(tables),
      tableStatements_([](const session::Table& table) { return QStringList(session::CreateTableStatement(table)); }),
      gatherStatements_([](const session::Table&) { return QStringList(); }),
      indexStatements_(session::CreateIndexStatements),
      lastStatements_("ANALYZE") {
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
    MakeTables();
}

StoreFill::StoreFill(std::unique_ptr<store::BulkWriter> server, const QString& name,
                     const std::vector<session::Table>& tables)
    : path_(name),
      tables_(tables),
      tableStatements_(session::ServerTableStatements),
      gatherStatements_(session::ServerGatherStatements),
      indexStatements_(session::ServerIndexStatements),
      lastStatements_(session::ServerStatisticsStatements()),
      writer_(std::move(server)) {
    Run(QString("COMMENT ON SCHEMA public IS 'katsudo-techo %1'").arg(session::kSchemaVersion));
    for (const QString& function : store::FoldFunctions())
        Run(function);
    MakeTables();
}

void StoreFill::MakeTables() {
    store::Fault fault;
    if (!Failed()) Note(writer_->Begin(fault), fault);
    for (const session::Table& table : tables_)
        for (const QString& statement : tableStatements_(table))
            Run(statement);
}

RowSink& StoreFill::Rows(const QString& table, const QStringList& columns) {
    auto& sink = sinks_[table + "/" + columns.join(u',')];
    if (!sink) sink.reset(new RowSink(*this, table, columns));
    return *sink;
}

QString StoreFill::Finish() {
    for (const auto& [key, sink] : sinks_)
        sink->Flush();
    store::Fault fault;
    if (!Failed()) Note(writer_->Commit(fault), fault);
    for (const auto& statements : {gatherStatements_, indexStatements_})
        for (const session::Table& table : tables_)
            for (const QString& statement : statements(table))
                Run(statement);
    for (const QString& statement : lastStatements_)
        Run(statement);
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

void StoreFill::CountRows(int rows) {
    uncommitted_ += rows;
    if (Failed() || uncommitted_ < kRowsOfATransaction) return;
    uncommitted_ = 0;
    store::Fault fault;
    Note(writer_->Commit(fault) && writer_->Begin(fault), fault);
}

}  // namespace setup
