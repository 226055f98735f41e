#pragma once

#include <QString>
#include <vector>

namespace setup {

/// One row of `M郵便番号`.
struct Postcode {
    QString code;  ///< "ddd-dddd"
    QString city;  ///< prefecture and municipality
    QString town;  ///< empty where the code stands for the municipality as a whole
};

/// The postcodes of a dictionary file of lines "0600001 /北海道札幌市中央区北一条西/…" in EUC, ordered by code, each
/// code once. Empty when there is no such file.
std::vector<Postcode> ReadPostcodes(const QString& file);

/// The country's postcodes when their dictionary is installed on this machine, otherwise a few dozen well-known ones.
std::vector<Postcode> Postcodes();

/// Splits "東京都千代田区丸の内" behind the municipality; `town` takes the rest.
Postcode SplitAddress(const QString& digits, const QString& address);

}  // namespace setup
