#include "setup/create_tree.h"

#include <QFile>

#include "identity/stored_pin.h"
#include "setup/empty_rows.h"
#include "setup/manual.h"

namespace setup {
namespace {

const QString kUnfinished = ".new";

QString FillConfigStore(const CreateOrder& order) {
    StoreFill fill(order.tree.ConfigStore() + kUnfinished, session::EnvironmentTables());
    FillEnvironment(fill, order.server ? &*order.server : nullptr);
    return fill.Finish();
}

void FillMain(StoreFill& fill, const CreateOrder& order) {
    if (order.demo) {
        const DemoWorld world(*order.demo);
        FillDemoMasters(fill, world);
        FillDemoParties(fill, world, order.progress);
        FillDemoDocuments(fill, world, order.progress);
        FillDemoActivity(fill, world, order.progress);
        order.progress("indexes", 0, 0);
    } else {
        FillCompany(fill);
    }
}

QString MakeMainStore(const CreateOrder& order) {
    if (order.server) {
        ServerOrder server = *order.server;
        server.authority = store::ServerAuthority(order.tree.root);
        return MakeServerStore(server, [&](StoreFill& fill) { FillMain(fill, order); });
    }
    StoreFill fill(order.tree.MainStore() + kUnfinished, session::MainTables());
    FillMain(fill, order);
    return fill.Finish();
}

// Stores of the other file kind would go on being found, so they go.
bool TakePlace(const QString& file) {
    QString other = file;
    other.replace(".accdb", ".mdb");
    for (const QString& old : {file, other})
        if (QFile::exists(old) && !QFile::remove(old)) return false;
    return QFile::rename(file + kUnfinished, file);
}

QString MakePinKeyOf(const Tree& tree) {
    if (QFile::exists(tree.PinKey()) && !identity::IsPinKey(tree.PinKey())) QFile::remove(tree.PinKey());
    return identity::MakePinKey(tree.PinKey()) ? QString() : tree.PinKey() + " can't be written.";
}

}  // namespace

QString CreateTree(const CreateOrder& order) {
    const Tree& tree = order.tree;
    if (tree.Exists() && !order.force)
        return tree.root + " already holds an installation; --force replaces its databases.";
    QString problem = MakeFolders(tree, order.clientFile);
    if (problem.isEmpty() && QFile::exists(order.manualSource + "/manual.md"))
        problem = WriteManual(order.manualSource, tree.Folder("manual"));
    if (problem.isEmpty()) problem = MakePinKeyOf(tree);
    if (problem.isEmpty()) problem = FillConfigStore(order);
    if (problem.isEmpty()) problem = MakeMainStore(order);
    const bool inTree = !order.server;
    if (problem.isEmpty() && !((!inTree || TakePlace(tree.MainStore())) && TakePlace(tree.ConfigStore())))
        problem = "The databases can't take their places in " + tree.root + ".";
    for (const QString& file : {tree.ConfigStore(), tree.MainStore()})
        QFile::remove(file + kUnfinished);
    return problem;
}

}  // namespace setup
