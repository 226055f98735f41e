#pragma once

#include <map>

#include "bench/results.h"

namespace bench {

/// All results of the companies on one engine, by the number of their parties; several measurements in one.
using ResultsBySize = std::map<int, Results>;

/// What the page is written of.
struct PageMatter {
    ResultsBySize files, servers;
};

/// Puts the results into the page's text: a line {{…}} of the text stands for a table, whose words and figures come
/// from the results alone. An unknown one is told in `fault`.
QString WritePage(const QString& text, const PageMatter& matter, QString& fault);

}  // namespace bench
