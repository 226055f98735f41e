#pragma once

#include <functional>

#include "setup/demo_world.h"
#include "setup/store_fill.h"

namespace setup {

/// Told now and then: what is being filled, and how many of how many.
using Progress = std::function<void(const QString& what, qint64 done, qint64 total)>;

/// Company, sites, departments, sections, class tables, staff and postcodes.
void FillDemoMasters(StoreFill& fill, const DemoWorld& world);

/// The five party masters and their contacts.
void FillDemoParties(StoreFill& fill, const DemoWorld& world, const Progress& progress);

/// The six kinds of document, and the number series that gave them their numbers.
void FillDemoDocuments(StoreFill& fill, const DemoWorld& world, const Progress& progress);

/// Slots up to today on workdays, with the day rows they belong to.
void FillDemoActivity(StoreFill& fill, const DemoWorld& world, const Progress& progress);

}  // namespace setup
