#pragma once

#include <QString>

#include "setup/dice.h"

// Made-up people and companies. No entry stands for anyone real.
namespace setup {

struct Person {
    QString name;  ///< "佐藤　健一"
    QString kana;  ///< half-width, "ｻﾄｳ ｹﾝｲﾁ"
};

struct CompanyName {
    QString shortName;  ///< at most 20 bytes of code page 932
    QString kana;       ///< half-width
    QString nameA;      ///< with its legal form: "株式会社あさひ電機"
};

Person MakePerson(Dice& dice);
CompanyName MakeCompanyName(Dice& dice);

/// A made-up telephone number in its usual form with hyphens, ten digits.
QString MakePhone(Dice& dice);

}  // namespace setup
