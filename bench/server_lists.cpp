#include "bench/server_lists.h"

#include <QSqlRecord>
#include <QVariant>

#include "bench/stopwatch.h"
#include "lists/list_window.h"
#include "store/postgres_dialect.h"
#include "store/postgres_link.h"

namespace bench {
namespace {

constexpr int kMostRows = lists::ListWindow::kMostRows;

std::unique_ptr<store::PostgresLink> OpenBare(setup::OpenTree& open) {
    const auto value = [&open](const QString& column) {
        return setup::ReadValue(*open.config, "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'", column);
    };
    store::PostgresLogin login;
    store::TakeServer(value("サーバー名"), login);
    login.database = value("データベース名");
    login.user = value("ユーザーID");
    login.password = value("パスワード");
    store::Fault fault;
    return store::PostgresLink::Open(login, {}, fault);
}

// The number of rows, every value read; -1 on a fault.
int Step(store::PostgresLink& link, const QStringList& statements) {
    int rows = 0;
    for (const QString& sql : statements) {
        QSqlQuery query = link.NewQuery();
        query.setForwardOnly(true);
        store::Fault fault;
        if (!store::PostgresLink::Start(query, sql, fault)) return -1;
        const int width = query.record().count();
        for (; query.next(); ++rows)
            for (int i = 0; i < width; ++i)
                query.value(i).toString();
    }
    return rows;
}

int QueryAll(store::Connection& store, const QStringList& statements) {
    int count = 0;
    for (const QString& sql : statements) {
        store::Fault fault;
        const auto rows = store.Query(sql, fault, kMostRows);
        if (!rows) return -1;
        for (; !rows->Eof(); rows->MoveNext())
            ++count;
    }
    return count;
}

bool TimeCase(const ListCase& search, store::PostgresLink& link, store::Connection& store, const Fill& fill,
              QTextStream& out) {
    QStringList written;
    for (const QString& sql : search.Statements()) {
        store::Fault fault;
        written << store::LimitedTo(store::ToPostgres(sql, fault).value_or(QString()), kMostRows);
    }
    int bareRows = 0, rows = 0, filled = 0;
    const double bare = MedianMilliseconds([&] { bareRows = Step(link, written); });
    const double own = MedianMilliseconds([&] { rows = QueryAll(store, search.Statements()); });
    out << Padded(search.list->name, 28) << Padded(search.what, 30) << QString::number(rows).rightJustified(6)
        << Cell(bare) << Cell(own);
    if (fill) out << Cell(MedianMilliseconds([&] { filled = fill(search); }));
    out << '\n' << Qt::flush;
    if (rows == bareRows && rows >= 0 && (!fill || filled == std::min(rows, kMostRows))) return true;
    out << "  differs: the engine found " << bareRows << ", the program " << rows << ", the window " << filled << '\n';
    return false;
}

}  // namespace

bool RunServerLists(const setup::Tree& tree, const Fill& fill, QTextStream& out) {
    setup::OpenTree open = setup::OpenStores(tree);
    const auto link = open.config ? OpenBare(open) : nullptr;
    if (!open.main || !link) {
        out << "The main store can't be opened. " << open.problem << '\n';
        return false;
    }
    out << Padded("list", 28) << Padded("search", 30) << "  rows   engine    query" << (fill ? "   filled" : "")
        << '\n';
    bool same = true;
    const std::vector<ListCase> cases = PartyCases(*open.main);
    for (const ListCase& search : cases)
        same = TimeCase(search, *link, *open.main, fill, out) && same;
    return same && !cases.empty();
}

}  // namespace bench
