#include "setup/manual.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace setup {
namespace {

/// The words of a document as a reader sees them: marks gone, numbers back to characters, "|" where a cell ends.
QString Words(const QByteArray& rtf) {
    QString words;
    for (qsizetype place = 0; place < rtf.size(); ++place) {
        if (rtf[place] == '{' || rtf[place] == '}' || rtf[place] == '\n') continue;
        if (rtf[place] != '\\') {
            words += QLatin1Char(rtf[place]);
            continue;
        }
        if (!QChar(rtf[++place]).isLetter()) {
            words += QLatin1Char(rtf[place]);
            continue;
        }
        QByteArray mark;
        while (place < rtf.size() && (QChar(rtf[place]).isLetterOrNumber() || rtf[place] == '-'))
            mark += rtf[place++];
        if (mark.size() > 1 && mark[0] == 'u' && mark != "uc1")
            words += QChar(static_cast<char16_t>(mark.mid(1).toInt()));
        else if (mark == "par" || mark == "row")
            words += u'\n';
        else if (mark == "cell")
            words += u'|';
        // A character's stand-in and a mark's closing blank belong to the mark.
        if (place >= rtf.size() || (rtf[place] != ' ' && rtf[place] != '?')) --place;
    }
    return words.mid(words.lastIndexOf(u';') + 1);
}

TEST(Manual, KeepsEveryWordAndTakesEveryMark) {
    const QByteArray document = ManualDocument(
        "# 活動手帳\n\n一行目\n二行目{a}\\b\n\n## 鍵 🗝\n- **登録** F12\n- "
        "削除\n\n|鍵|意味|\n|---|:--|\n|F12|登|\n終り",
        "/");
    EXPECT_EQ(Words(document).toStdString(),
              "活動手帳\n一行目二行目{a}\\b\n鍵 🗝\n・登録 "
              "F12\n・削除\n鍵|意味|\nF12|登|\n\n終り\n");
    EXPECT_TRUE(document.contains("{\\b \\u30331?\\u-27854?}")) << document.toStdString();
    EXPECT_EQ(document.count('{') - document.count("\\{"), document.count('}') - document.count("\\}"));
    for (const char byte : document)
        ASSERT_TRUE(byte > 0) << "not ASCII";
}

TEST(Manual, HoldsItsPicturesAndLeavesOutWhatIsNone) {
    const QTemporaryDir folder;
    QFile picture(folder.filePath("a.png"));
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    picture.write(QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000004b000000258080600000000000000"));
    picture.close();
    QFile other(folder.filePath("b.png"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("no picture");
    other.close();
    const QByteArray document = ManualDocument("![a](a.png)\n![b](b.png)\n![c](c.png)\n", folder.path());
    EXPECT_EQ(document.count("\\pict"), 1);
    EXPECT_TRUE(document.contains("\\picw1200\\pich600\\picwgoal9600\\pichgoal4800\n89504e47"));
}

TEST(Manual, StandsUnderTheNameThatTheClientOpens) {
    const QTemporaryDir folder;
    EXPECT_NE(WriteManual(folder.filePath("none"), folder.path()), "");
    QFile source(folder.filePath("manual.md"));
    ASSERT_TRUE(source.open(QIODevice::WriteOnly));
    source.write("# 手引き\n");
    source.close();
    EXPECT_EQ(WriteManual(folder.path(), folder.path()), "");
    EXPECT_TRUE(QFile::exists(folder.filePath("活動手帳.doc")));
    EXPECT_NE(WriteManual(folder.path(), folder.filePath("none")), "");
}

}  // namespace
}  // namespace setup
