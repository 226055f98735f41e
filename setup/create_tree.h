#pragma once

#include <optional>

#include "setup/demo_company.h"
#include "setup/server_store.h"
#include "setup/tree.h"

namespace setup {

/// What `CreateTree` makes.
struct CreateOrder {
    Tree tree;
    bool force = false;                 ///< replace the stores of a tree that is there already
    std::optional<DemoSizes> demo;      ///< nothing for an empty tree
    std::optional<ServerOrder> server;  ///< nothing for a main store in the tree
    QString clientFile;                 ///< the client to copy into the tree; may be missing
    QString manualSource;               ///< folder with the manual's text and pictures; may be missing
    Progress progress = [](const QString&, qint64, qint64) {};
};

/// Makes the folders, the PIN key and the two stores. The stores take their places when both are complete, so an order
/// that fails half way leaves a tree, and a database of a server, that was there as it was. Gives the words of what
/// went wrong; empty on success.
QString CreateTree(const CreateOrder& order);

}  // namespace setup
