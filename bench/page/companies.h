#pragma once

#include <QTextStream>

#include "bench/results.h"
#include "setup/create_tree.h"

namespace bench {

/// A made-up company that is measured, and where its main database lies.
struct Company {
    bool onServer = false;
    int parties = 0;
    qint64 slotCount = 0;
    setup::Tree tree;

    /// "file-10000": names what belongs to it.
    QString Name() const;
};

/// How a company is made: with as many documents of each kind as parties, and staff for `clients` at once.
struct Making {
    int clients = 50;
    QString server, adminUser;  ///< of a company on a server
};

/// Makes the company when it isn't there, or its database isn't: then that is told in `log`, as is what is being made.
/// Its sizes and the time that it took are written to `results`. Gives the words of what went wrong; empty on success.
QString MakeCompany(const Company& company, const Making& making, const QString& results, QTextStream& log);

}  // namespace bench
