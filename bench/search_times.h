#pragma once

#include <QTextStream>
#include <functional>

#include "bench/bare_engine.h"
#include "bench/list_cases.h"
#include "bench/recording_connection.h"

namespace bench {

/// Does what a press of the search button does, up to the filled list, and gives the number of rows. Empty where there
/// is no window; its column is then left out.
using Fill = std::function<int(const ListCase&)>;

/// Prints a line for each search with the median times of the bare engine, of the program's connection and of `fill`.
/// False when two ways found different numbers of rows.
bool TimeSearches(const std::vector<ListCase>& cases, BareEngine& engine, store::Connection& store, const Fill& fill,
                  QTextStream& out);

/// Steps statements of the program one after the other in the engine's own SQL. The number of all rows; -1 on a fault.
int StepAll(BareEngine& engine, const std::vector<Recorded>& statements);

/// A time for a table, in milliseconds with a tenth.
QString Cell(double time);

/// A text that fills `width` places of a terminal, where texts in Japanese are twice as wide.
QString Padded(const QString& text, int width);

}  // namespace bench
