#pragma once

#include <QTextStream>

#include "bench/page/companies.h"

namespace bench {

/// The whole page of benchmarks.
struct PageOrder {
    QString out;                                         ///< the page's file
    QString text;                                        ///< the file of its text
    QString work;                                        ///< folder of the companies and of what was measured; absolute
    std::vector<int> sizes{10'000, 100'000, 1'000'000};  ///< in parties, rising
    qint64 slotCount = 10'000'000;                       ///< of the biggest company, the others in proportion
    Making making;                                       ///< without a server only files are measured
    int seconds = 60;                                    ///< that the clients at once work
    bool quick = false;                                  ///< only to try whether all works
};

/// Makes the companies that are missing, measures what wasn't measured yet, each in a process of its own, and writes
/// the page. What was measured stays in the work folder, a file each, until it is removed. False when something
/// couldn't be measured or written, with words in `log`; the page is written of the rest.
bool RunPage(const PageOrder& order, QTextStream& log);

}  // namespace bench
