#pragma once

#include <QString>

#include "platform/clock.h"
#include "session/data_access.h"

namespace numbers {

/// An entry of the suite's directory from a telephone number to a name and an address.
struct PhoneEntry {
    QString 電話;  ///< as typed; its digits are the key
    QString 名称, 郵便番号, 住所A, 住所B, 住所C;
    int 法人個人区分 = 0;
};

/// `M電話番号`. Two spellings of one number share one row; the last saver wins.
class PhoneDirectory {
  public:
    PhoneDirectory(session::SessionContext& context, session::DataAccess& data, const platform::Clock& clock)
        : context_(context), data_(data), clock_(clock) {}

    /// Enters the number or overwrites its row. A number of fewer than seven digits is never entered.
    void UpsertPhoneDirectory(const PhoneEntry& entry);

  private:
    session::SessionContext& context_;
    session::DataAccess& data_;
    const platform::Clock& clock_;
};

}  // namespace numbers
