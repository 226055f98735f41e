#pragma once

#include <QJsonArray>
#include <QString>
#include <functional>

namespace scenario {

/// The folder of the test server's socket; empty when none was started (scripts/test_server.sh).
QString TestServer();

/// Makes the tree of the small office that the scenarios play in: an empty tree and the rows of office.sql. With a
/// `database` its main store is that of the test server. Empty when it worked, otherwise what went wrong.
QString MakeOffice(const QString& root, const QString& database = QString());

/// Copies a tree whole, and a main store on the server under the name `database`. False when a file couldn't be copied.
bool CopyTree(const QString& from, const QString& to, const QString& database = QString());

/// Takes the database of a tree away again; none is no fault.
void DropServerStore(const QString& root);

/// Lets the server turn the clients of a tree away, and breaks their connections; or lets them in again. Empty when it
/// worked.
QString LetIn(const QString& root, bool in);

/// Runs a statement on a store of a tree; `store` is "data" or a folder with an environment store, such as "conf".
/// CREATE TRIGGER is written as SQLite takes it, ALTER ROLE is the server's own; {client} stands for the clients' login
/// to the server. Empty when it worked.
QString Execute(const QString& root, const QString& store, const QString& sql);

/// The rows of a SELECT as a list of lists of text, a Null as JSON null.
QJsonArray Select(const QString& root, const QString& store, const QString& sql, QString& problem);

/// Holds a store's lock against all writers for that long, as a program with a long transaction does. Tells `held` when
/// it has it: empty, or why it couldn't.
void HoldStore(const QString& root, const QString& store, int milliseconds,
               const std::function<void(const QString& problem)>& held);

}  // namespace scenario
