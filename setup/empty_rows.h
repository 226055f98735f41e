#pragma once

#include <QString>

#include "setup/store_fill.h"

// The least rows with which the client starts.
namespace setup {

struct ServerOrder;

/// Where the main store lies (on the server, or in the tree when there is none), the environment row and the menu row.
void FillEnvironment(StoreFill& fill, const ServerOrder* server = nullptr);

/// Words of the company and its head office that a filled installation has and an empty one lacks.
struct CompanyWords {
    QString name, postcode, addressA, addressB, head, phone, fax;
};

/// The company, site "000" and the number series.
void FillCompany(StoreFill& fill, const CompanyWords& words = {});

/// One number series of `A番号情報`.
struct Series {
    QString id;
    QString kind;      ///< `連番種類`
    QString document;  ///< the document kind that takes its numbers from it; empty for the viewing log
};
const std::vector<Series>& NumberSeries();

}  // namespace setup
