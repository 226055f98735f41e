#include "identity/stored_pin.h"
#include "setup/command_line.h"
#include "setup/pin_store.h"
#include "setup_fixture.h"

namespace setup {
namespace {

using identity::DecodeStoredPin;
using identity::EncodePin;

TEST(StoredPin, OpensWithItsOwnKeyAndUnchangedOnly) {
    QTemporaryDir folder;
    const QString key = folder.path() + "/a";
    const QString otherKey = folder.path() + "/b";
    ASSERT_TRUE(identity::MakePinKey(key) && identity::MakePinKey(otherKey));
    for (const QString pin : {"1234", "ＡＢ暗証", "a'b", ""}) {
        const auto stored = EncodePin(pin, key);
        ASSERT_TRUE(stored);
        EXPECT_EQ(DecodeStoredPin(*stored, key), pin);
        EXPECT_NE(EncodePin(pin, key), stored) << "equal PINs must not look equal";
        EXPECT_EQ(DecodeStoredPin(*stored, otherKey), std::nullopt);
        EXPECT_EQ(DecodeStoredPin(*stored, folder.path() + "/none"), std::nullopt);
        for (qsizetype i = 0; i < stored->size(); ++i) {
            QString tampered = *stored;
            tampered[i] = tampered[i] == u'A' ? u'B' : u'A';
            EXPECT_EQ(DecodeStoredPin(tampered, key), std::nullopt) << i;
        }
    }
    for (const QString& text : {QString(), QString("1234"), QString("暗証番号"), QString(56, u'A')})
        EXPECT_EQ(DecodeStoredPin(text, key), std::nullopt);
    EXPECT_EQ(EncodePin("1234", folder.path() + "/none"), std::nullopt);
}

TEST(StoredPin, AKeyIsNeverMadeAnew) {
    QTemporaryDir folder;
    const QString key = folder.path() + "/key";
    ASSERT_TRUE(identity::MakePinKey(key));
    const auto stored = EncodePin("1234", key);
    ASSERT_TRUE(identity::MakePinKey(key));
    EXPECT_EQ(DecodeStoredPin(stored.value_or(""), key), "1234");
}

// The PINs of the staff members 00001 and 00002, of the company and of the three sites, in plain form.
QStringList Pins(const Tree& tree) {
    QStringList pins;
    for (const QString sql : {"SELECT 暗証番号 FROM M担当者 WHERE コード < '00003' ORDER BY コード",
                              "SELECT 特権暗証番号 FROM Mユーザ", "SELECT 特権暗証番号 FROM M事業所 ORDER BY コード"})
        for (const QString& stored : Rows(tree, sql))
            pins << DecodeStoredPin(stored, tree.PinKey()).value_or("-");
    return pins;
}

TEST(PinCommand, SetsWhatWasNamedAndNothingElse) {
    TemporaryTree made;
    ASSERT_EQ(made.Create(SmallDemo()), "");
    ASSERT_EQ(Pins(made.tree), (QStringList{"-", "-", "-", "-", "-", "-"}));
    const QString root = made.tree.root;
    const struct {
        QStringList options;
        int code;
        QStringList pins;
    } steps[] = {{{"--staff", "00002", "--pin", "Ab12"}, 0, {"-", "Ab12", "-", "-", "-", "-"}},
                 {{"--staff", "90000", "--pin", "1234"}, 1, {"-", "Ab12", "-", "-", "-", "-"}},
                 {{"--staff", "x' OR 'a'='a", "--pin", "1234"}, 1, {"-", "Ab12", "-", "-", "-", "-"}},
                 {{"--privilege", "--site", "001", "--pin", "ONE1"}, 0, {"-", "Ab12", "-", "-", "ONE1", "-"}},
                 {{"--privilege", "--site", "777", "--pin", "ONE1"}, 1, {"-", "Ab12", "-", "-", "ONE1", "-"}},
                 {{"--privilege", "--pin", "ALL9"}, 0, {"-", "Ab12", "ALL9", "ALL9", "ALL9", "ALL9"}},
                 {{"--staff", "00001", "--privilege", "--pin", "1"}, 2, {"-", "Ab12", "ALL9", "ALL9", "ALL9", "ALL9"}},
                 {{"--staff", "00001"}, 2, {"-", "Ab12", "ALL9", "ALL9", "ALL9", "ALL9"}}};
    for (const auto& step : steps) {
        EXPECT_EQ(RunSetup(QStringList{"pin", "--root", root} + step.options, {}), step.code)
            << step.options.join(u' ').toStdString();
        EXPECT_EQ(Pins(made.tree), step.pins) << step.options.join(u' ').toStdString();
    }
}

TEST(CommandLine, RefusesWhatItCanNotUnderstandAndMakesNothing) {
    QTemporaryDir folder;
    const QString root = folder.path() + "/t";
    const QStringList lines[] = {{},
                                 {"make"},
                                 {"create", "--empty"},
                                 {"create", "--root", root},
                                 {"create", "--root", root, "--empty", "--demo"},
                                 {"create", "--root", root, "--demo", "--slots"},
                                 {"create", "--root", root, "--demo", "--slots", "many"},
                                 {"create", "--root", root, "--demo", "--staff", "0"},
                                 {"create", "--root", root, "--demo", "--today", "20260231"},
                                 {"create", "--root", root, "--empty", "--colour"},
                                 {"check", "--root", root, "--empty"}};
    for (const QStringList& line : lines)
        EXPECT_EQ(RunSetup(line, {}), 2) << line.join(u' ').toStdString();
    EXPECT_FALSE(QFileInfo::exists(root));
    EXPECT_EQ(RunSetup({"--help"}, {}), 0);
    EXPECT_EQ(RunSetup({"check", "--root", root}, {}), 1);
    EXPECT_EQ(RunSetup({"create", "--root", root, "--demo", "--staff", "2", "--parties", "0", "--slots", "30",
                        "--documents", "0", "--today", "20260731"},
                       {}),
              0);
    EXPECT_EQ(RunSetup({"check", "--root", root}, {}), 0);
}

}  // namespace
}  // namespace setup
