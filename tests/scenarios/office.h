#pragma once

#include <QJsonArray>
#include <QString>
#include <functional>

namespace scenario {

/// Makes the tree of the small office that the scenarios play in: an empty tree and the rows of office.sql. Empty when
/// it worked, otherwise what went wrong.
QString MakeOffice(const QString& root);

/// Copies a tree whole. False when a file couldn't be copied.
bool CopyTree(const QString& from, const QString& to);

/// Runs a statement on a store of a tree; `store` is "data" or a folder with an environment store, such as "conf".
/// Empty when it worked.
QString Execute(const QString& root, const QString& store, const QString& sql);

/// The rows of a SELECT as a list of lists of text, a Null as JSON null.
QJsonArray Select(const QString& root, const QString& store, const QString& sql, QString& problem);

/// Holds a store's lock against all writers for that long, as a program with a long transaction does. Tells `held` when
/// it has it: empty, or why it couldn't.
void HoldStore(const QString& root, const QString& store, int milliseconds,
               const std::function<void(const QString& problem)>& held);

}  // namespace scenario
