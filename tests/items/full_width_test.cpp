#include "items/full_width.h"

#include <gtest/gtest.h>

namespace {

TEST(ToFullWidth, ConvertsEachCharacterThatHasAForm) {
    const struct {
        const char16_t* half;
        const char16_t* full;
    } cases[] = {
        {u"", u""},
        {u"0189AZaz", u"０１８９ＡＺａｚ"},
        {u"!#$%&()=~|-+*[]@:;.,/?<>{}_", u"！＃＄％＆（）＝～｜－＋＊［］＠：；．，／？＜＞｛｝＿"},
        {u"'\\-", u"\u2019\uFFE5\uFF0D"},
        {u" \"^`｡｢｣､･", u" \"^`｡｢｣､･"},
        {u"ｦｧｨｩｪｫｬｭｮｯｰｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜﾝ",
         u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロ"
         u"ワン"},
        {u"ｳﾞｶﾞｷﾞｸﾞｹﾞｺﾞｻﾞｼﾞｽﾞｾﾞｿﾞﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ", u"ヴガギグゲゴザジズゼゾダヂヅデドバビブベボ"},
        {u"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", u"パピプペポ"},
        // A mark that belongs to no letter stays, and so does a second one.
        {u"ｱﾞﾅﾞﾏﾞﾜﾞｦﾞﾝﾞｰﾞｯﾞ", u"アﾞナﾞマﾞワﾞヲﾞンﾞーﾞッﾞ"},
        {u"ｶﾟｳﾟﾞﾟ1ﾞカﾞｶﾞﾞﾊﾟﾟ", u"カﾟウﾟﾞﾟ１ﾞカﾞガﾞパﾟ"},
        {u"ｶ", u"カ"},
        {u"ﾊ", u"ハ"},
        {u"活動手帳ＡガーＡ🗒é", u"活動手帳ＡガーＡ🗒é"},
    };
    for (const auto& c : cases) {
        const QString full = items::ToFullWidth(QString::fromUtf16(c.half));
        EXPECT_EQ(full.toStdString(), QString::fromUtf16(c.full).toStdString());
        EXPECT_EQ(items::ToFullWidth(full), full);
    }
}

TEST(ToFullWidth, RefusesATextLongerThanItCounts) {
    EXPECT_EQ(items::ToFullWidth(QString(32'767, u'a')), QString(32'767, u'ａ'));
    EXPECT_TRUE(items::ToFullWidth(QString(32'768, u'a')).isNull());
    EXPECT_FALSE(items::ToFullWidth(QString()).isNull());
}

}  // namespace
