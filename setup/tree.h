#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "identity/stored_pin.h"
#include "store/connection.h"

namespace setup {

/// The folders and files of one installation.
struct Tree {
    QString root;  ///< absolute

    QString Folder(const QString& name) const { return root + "/" + name; }
    /// The environment store and the main store as set-up makes them.
    QString ConfigStore() const { return root + "/conf/usrcnfg.accdb"; }
    QString MainStore() const { return root + "/data/gnrdb.accdb"; }
    QString PinKey() const { return identity::PinKeyFile(root); }

    /// True when the folder holds an environment or a main store already, of either file kind.
    bool Exists() const;

    static const QStringList& FolderNames();
    /// The folder of attached documents, within the root.
    static const QString& DocumentFolder();
};

/// Makes every folder of the tree and, unless `clientFile` is empty or missing, copies the client into it. An older
/// copy is replaced. Gives the words of what went wrong; empty on success.
QString MakeFolders(const Tree& tree, const QString& clientFile);

/// Who may change everything on a server.
struct ServerAdmin {
    QString user, password;
};

/// The stores of an existing tree as its own tables name them.
struct OpenTree {
    std::unique_ptr<store::Connection> config;
    std::unique_ptr<store::Connection> main;
    QString dbKind;
    QString problem;  ///< why `config` or `main` is null, in words
};
/// With an `admin`, a main store on a server is opened by that login in place of the client's own.
OpenTree OpenStores(const Tree& tree, const std::optional<ServerAdmin>& admin = {});

/// The first row's value of a column; the empty text when there is no row, no such column, a Null or a fault.
QString ReadValue(store::Connection& connection, const QString& sql, const QString& column);

}  // namespace setup
