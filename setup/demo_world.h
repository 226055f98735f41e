#pragma once

#include <QDate>
#include <QString>
#include <array>
#include <cstdint>
#include <vector>

#include "setup/postcodes.h"

namespace setup {

/// How big a demo company is, and which of the many.
struct DemoSizes {
    int staff = 40;
    int parties = 2000;      ///< over all five kinds
    qint64 activities = -1;  ///< -1 for three months of ordinary days
    int documents = 300;     ///< of each of the six kinds
    std::uint64_t seed = 1;
    QDate today;
};

struct Staff {
    QString code, name, kana, site, department, section;
    bool left = false;
};

/// A party of one of the five masters, with what a slot copies of it.
struct Party {
    int kind = 0;  ///< 1 customer to 5 other party
    QString code, shortName, kana, nameA, nameB, postcode, addressA, addressB, addressC, phone, fax;
    QString staffCode, status, customerCode, supplierCode;
    QString contactCode, contactName, contactKana, contactPhone;  ///< empty when it has no contact
};

struct Document {
    QString site, baseDate, number, date;
    int staff = 0;  ///< index of the staff member
    Party customer, destination;
    QString title, amount, deliveryDate;
};

/// The made-up company. Every thing of it is worked out from the seed and its place whenever it is asked for, so that a
/// slot can copy one of a million parties that are kept nowhere, and the same seed makes the same rows.
class DemoWorld {
  public:
    explicit DemoWorld(DemoSizes sizes);

    const DemoSizes& Sizes() const { return sizes_; }
    const std::vector<Postcode>& AllPostcodes() const { return postcodes_; }

    Staff StaffAt(int index) const;
    /// Indexes of the staff members who haven't left.
    const std::vector<int>& ActiveStaff() const { return active_; }

    /// How many parties a kind (1 to 5) has.
    int PartyCount(int kind) const { return partyCounts_[kind - 1]; }
    Party PartyAt(int kind, int index) const;
    /// One of the parties that a staff member looks after; `pick` chooses which. The kind must have parties.
    Party PartyOf(int kind, int staff, int pick) const;

    /// Documents are counted by date, so that numbers rise with the days; `kind` is a place in DocumentKinds().
    Document DocumentAt(int kind, int index) const;
    /// Index of a document that the staff member made not long before that day; -1 when there is none.
    int RecentDocument(int staff, QDate day, int pick) const;
    /// The last number of each fiscal year: pairs of its last day and the count of documents.
    const std::vector<std::pair<QString, int>>& DocumentYears() const { return years_; }

  private:
    QDate DocumentDay(int index) const;
    std::vector<std::pair<QString, int>> CountYears() const;
    void PlaceParty(class Dice& dice, Party& party) const;

    DemoSizes sizes_;
    std::vector<Postcode> postcodes_;
    std::vector<Postcode> towns_;
    std::array<int, 5> partyCounts_{};
    std::vector<int> active_;
    std::vector<std::pair<QString, int>> years_;
};

/// Places of the five party masters: "得意先" is the first.
const std::array<QString, 5>& PartyKinds();

/// A count as a code of that many digits, from 1.
QString Code(int index, int width);

/// "yyyymmdd".
QString DayText(QDate day);

}  // namespace setup
