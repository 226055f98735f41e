#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "setup/create_tree.h"

namespace setup {

/// A small made-up company whose rows don't depend on the day.
inline DemoSizes SmallDemo() {
    DemoSizes sizes;
    sizes.staff = 14;
    sizes.parties = 120;
    sizes.documents = 40;
    sizes.today = QDate(2026, 7, 31);
    return sizes;
}

/// A tree in a folder of its own that goes with it.
struct TemporaryTree {
    QTemporaryDir folder;
    Tree tree{folder.path() + "/tree"};

    QString Create(std::optional<DemoSizes> demo) {
        CreateOrder order;
        order.tree = tree;
        order.demo = std::move(demo);
        return CreateTree(order);
    }
};

/// All rows of a query on the tree's main store (or its environment store), a text each, cells parted by "|".
inline QStringList Rows(const Tree& tree, const QString& sql, bool environment = false) {
    const OpenTree open = OpenStores(tree);
    store::Connection* connection = environment ? open.config.get() : open.main.get();
    if (connection == nullptr) return {open.problem};
    store::Fault fault;
    const auto rows = connection->Query(sql, fault);
    if (!rows) return {fault.description};
    QStringList texts;
    for (; !rows->Eof(); rows->MoveNext()) {
        QStringList cells;
        for (const QString& column : rows->Columns())
            cells << rows->Value(column).value_or("NULL");
        texts << cells.join(u'|');
    }
    return texts;
}

inline QString First(const Tree& tree, const QString& sql) {
    return Rows(tree, sql).value(0);
}

}  // namespace setup

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
