#include "setup/copy_target.h"

#include "session/server_schema.h"
#include "setup/tree_files.h"
#include "store/postgres_dialect.h"
#include "store/postgres_link.h"

namespace setup {
namespace {

const QString kDefinition = "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'";

store::PostgresLogin ServerLogin(const Tree& tree, store::Connection& config, const std::optional<ServerAdmin>& admin) {
    const auto value = [&config](const QString& column) { return ReadValue(config, kDefinition, column).trimmed(); };
    store::PostgresLogin login;
    store::TakeServer(value("サーバー名"), login);
    login.database = value("データベース名");
    login.user = admin ? admin->user : value("ユーザーID");
    login.password = admin ? admin->password : value("パスワード");
    login.authority = store::ServerAuthority(tree.root);
    return login;
}

QString IndexName(const QString& createIndex) {
    const QString head = "CREATE INDEX ";
    return createIndex.mid(head.size(), createIndex.indexOf(" ON ") - head.size());
}

}  // namespace

std::unique_ptr<CopyTarget> CopyTarget::Open(const Tree& tree, const std::optional<ServerAdmin>& admin,
                                             QString& problem) {
    auto target = std::make_unique<CopyTarget>();
    target->open_ = OpenStores(tree, admin);
    if (!target->open_.problem.isEmpty()) {
        problem = tree.root + ": " + target->open_.problem;
        return nullptr;
    }
    const QString file = MainStoreFile(tree, target->Config());
    const QString provider = ReadValue(target->Config(), kDefinition, "プロバイダ名").trimmed();
    store::Fault fault;
    if (!file.isEmpty()) {
        target->writer_ = store::BulkWriter::Open(file, fault, store::BulkWriter::CutShort::Committed);
        target->indexes_ = session::CreateIndexStatements;
        target->last_ = {"ANALYZE"};
    } else if (provider.compare("PostgreSQL", Qt::CaseInsensitive) == 0) {
        target->writer_ = store::BulkWriter::Open(ServerLogin(tree, target->Config(), admin), fault);
        target->indexes_ = session::ServerIndexStatements;
        target->gather_ = session::ServerGatherStatements;
        target->stopGathering_ = session::ServerStopGatherStatements;
        target->last_ = session::ServerStatisticsStatements();
    } else {
        return target;
    }
    if (!target->writer_) problem = "The main store of " + tree.root + " can't be filled: " + fault.description;
    return target->writer_ ? std::move(target) : nullptr;
}

bool CopyTarget::Run(const QString& sql, QString& problem) {
    store::Fault fault;
    if (writer_ ? writer_->Run(sql, fault) : open_.main->Execute(sql, fault)) return true;
    problem = "The target's main store can't be filled: " + fault.description;
    return false;
}

bool CopyTarget::Begin(QString& problem) {
    store::Fault fault;
    if (!writer_) return Run("BEGIN", problem);
    if (writer_->Begin(fault)) return true;
    problem = "The target's main store can't be written: " + fault.description;
    return false;
}

bool CopyTarget::DropIndexes(QString& problem) {
    if (!indexes_) return true;
    if (!Begin(problem)) return false;
    for (const session::Table& table : session::MainTables()) {
        QStringList statements = stopGathering_ ? stopGathering_(table) : QStringList();
        for (const QString& statement : indexes_(table))
            statements << "DROP INDEX IF EXISTS " + IndexName(statement);
        for (const QString& statement : statements)
            if (!Run(statement, problem)) return false;
    }
    return Commit(problem);
}

bool CopyTarget::RenewFold(QString& problem) {
    if (!gather_ || store::FoldsAsHere(Main())) return true;
    QStringList statements = store::FoldFunctions();
    // What arrived before an interruption.
    for (const session::Table& table : session::MainTables())
        statements << session::ServerRefoldStatements(table);
    if (!Begin(problem)) return false;
    for (const QString& statement : statements)
        if (!Run(statement, problem)) return false;
    return Commit(problem);
}

bool CopyTarget::MakeIndexes(QString& problem) {
    if (!indexes_) return true;
    for (const session::Table& table : session::MainTables())
        for (const QString& statement : gather_ ? gather_(table) : QStringList())
            if (!Run(statement, problem)) return false;
    if (!Begin(problem)) return false;
    for (const session::Table& table : session::MainTables())
        for (const QString& statement : indexes_(table))
            if (!Run(QString(statement).replace(0, 12, "CREATE INDEX IF NOT EXISTS"), problem)) return false;
    bool done = Commit(problem);
    for (const QString& statement : last_)
        done = done && Run(statement, problem);
    return done;
}

}  // namespace setup
