// The windows on sales documents and on the texts used in them, played by hand on a store.
#include <gmock/gmock.h>

#include <deque>

#include "lists/list_window.h"
#include "screen/user_input.h"
#include "screen/user_keys.h"
#include "tests/setup/setup_fixture.h"

namespace lists {

namespace {

using screen::Control;
using testing::ElementsAre;
using testing::IsEmpty;

class NoLog : public session::StatementLog {
  public:
    void WriteOutputHistory(const QString&) override {}
    void WriteErrorHistory(const QString&) override {}
};

/// A host whose user does one prepared step after the other.
class ScriptedHost : public screen::ScreenHost {
  public:
    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override {}
    void Sleep(int) override {}

    std::deque<std::function<void()>> steps;

  protected:
    void WaitUntil(const std::function<bool()>& done) override {
        while (!done()) {
            if (steps.empty()) {
                ADD_FAILURE() << "a window stays open";
                return EndProgram();
            }
            const auto step = std::move(steps.front());
            steps.pop_front();
            step();
        }
    }
};

class DocumentWindows : public testing::Test {
  protected:
    DocumentWindows() {
        EXPECT_EQ(tree.Create(std::nullopt), "");
        session.MainConnection = setup::OpenStores(tree.tree).main;
        session.DbKind = "A";
        session.SiteCode = session.OperatingSiteCode = "000";
        caller = &mainForm.Add(screen::ControlKind::EntryField, "営業見積No");
        mainForm.Add(screen::ControlKind::EntryField, "顧客注文No");
        next = &mainForm.Add(screen::ControlKind::EntryField, "営業受注No");
        for (const QString party : {"得意先", "対応先"})
            Run("INSERT INTO M" + party + " (コード, 略称) VALUES ('000012', '" + party + "の十二')");
        // Number, date, customer, whose code it is, title, amount.
        AddQuotation("00000001", "20260110", "青葉商事", "0", "空調更新", "'1234567'");
        AddQuotation("00000002", "20260228", "青葉商事", "1", "配管", "'0'");
        AddQuotation("00000003", "20260531", "若草電機", "0", "照明", "NULL");
        AddQuotation("00000004", "20260601", "みどり工業", "0", "''", "'98765432109876'");
    }

    void Run(const QString& sql) { ASSERT_TRUE(data.ExecuteMain(sql)) << sql.toStdString(); }
    void AddQuotation(const QString& number, const QString& date, const QString& name, const QString& kind,
                      const QString& title, const QString& amount) {
        Run("INSERT INTO T営業見積 (事業所コード, 番号基準日付, 営業見積No, 営業見積日付, 得意先コード,"
            " 得意先対応先区分, 得意先名称A, タイトル, 見積金額合計) VALUES ('001', '20270331', '" +
            number + "', '" + date + "', '000012', '" + kind + "', '" + name + "', " +
            (title == "''" ? title : u'\'' + title + u'\'') + ", " + amount + ")");
    }

    /// Opens the quotations as the main screen does, and lets the user do the steps.
    void Open(const QString& condition, std::deque<std::function<void()>> steps) {
        host.steps = std::move(steps);
        windows.OpenListWindow("wnd営業見積No一覧", condition, *caller, *next);
        EXPECT_THAT(host.steps, IsEmpty());
    }

    screen::Form& Front() { return *host.Front(); }
    Control& At(const QString& name) { return Front().At(name); }
    Control& List() { return Front().At(FindList(Front().Name())->list); }
    void Click(const QString& name) { screen::UserClick(At(name)); }
    void Type(const QString& name, const QString& text) {
        screen::UserFocus(At(name));
        screen::UserType(At(name), text);
    }
    void PickRow(int row) {
        screen::UserSelectRow(List(), row);
        screen::UserDoubleClick(List());
    }
    void Back() { Click("btn_戻る"); }
    /// The texts of one column.
    QStringList Column(int column) {
        QStringList texts;
        for (const screen::ListRow& row : List().Rows())
            texts << row.cells.value(column);
        return texts;
    }

    setup::TemporaryTree tree;
    session::SessionContext session;
    NoLog log;
    session::DataAccess data{session, log};
    ScriptedHost host;
    PickState pick;
    screen::Form mainForm{"frm"};
    platform::FixedClock clock{QDateTime(QDate(2026, 5, 31), QTime(23, 59))};
    ListWindows windows{{session, data, host, pick, mainForm, clock}};
    Control* caller = nullptr;
    Control* next = nullptr;
};

TEST_F(DocumentWindows, ThePickLeavesTheDocumentsKeyAndBackLeavesNothing) {
    Open("T営業見積.番号基準日付 <> '' AND T営業見積.営業見積日付 >= '20260201' AND T営業見積.得意先コード = '000012'",
         {[this] {
              // What the window shows as its own is taken out of the caller's condition.
              EXPECT_EQ(pick.ListCondition, "T営業見積.番号基準日付 <> ''");
              EXPECT_EQ(At("営業見積日付").Text(), "20260201");
              EXPECT_EQ(At("得意先コード").Text(), "000012");
              EXPECT_EQ(At("得意先略称").Text(), "得意先の十二");
              EXPECT_THAT(Column(0), ElementsAre("00000004", "00000003"));
              Type("営業見積日付", "20260101");
          },
          [this] { Click("btn_複合検索"); },
          [this] {
              EXPECT_THAT(Column(0), ElementsAre("00000004", "00000003", "00000001"));
              EXPECT_THAT(Column(5), ElementsAre("98,765,432,109,876", "", "    1,234,567"));
              PickRow(2);
          }});
    EXPECT_EQ(pick.ListCondition, "C0012027033100000001");
    EXPECT_EQ(caller->Text(), "00000001");
    EXPECT_TRUE(mainForm.Enabled());
    EXPECT_EQ(mainForm.Focused(), next);

    Open("T営業見積.番号基準日付 <> ''", {[this] {
             EXPECT_EQ(At("得意先コード").Text(), "");
             EXPECT_EQ(List().Rows().size(), 4u);
             Back();
         }});
    EXPECT_EQ(pick.ListCondition, "");
    EXPECT_EQ(caller->Text(), "00000001");
}

TEST_F(DocumentWindows, TheCheckBoxSaysWhoseCodeItIs) {
    Open("T営業見積.番号基準日付 <> '' AND T営業見積.得意先対応先区分 = '1' AND T営業見積.得意先コード = '000012'",
         {[this] {
              EXPECT_EQ(At("chb_得意先対応先").Value(), 1);
              EXPECT_EQ(At("btn_得意先コード検索").Caption(), "対応先検索");
              EXPECT_EQ(At("得意先略称").Text(), "対応先の十二");
              EXPECT_THAT(Column(0), ElementsAre("00000002"));
              screen::UserFocus(At("得意先コード"));
              screen::UserKey(Front(), screen::Key::Ctrl);
              // The other parties' list stood over this one; this runs when it has closed.
              EXPECT_EQ(Front().Name(), "wnd営業見積No一覧");
          },
          [this] {
              EXPECT_EQ(Front().Name(), "wnd対応先一覧");
              Back();
          },
          [this] {
              Click("chb_得意先対応先");
              EXPECT_EQ(At("btn_得意先コード検索").Caption(), "得意先検索");
              EXPECT_EQ(At("得意先略称").Text(), "得意先の十二");
              Click("btn_得意先コード検索");
              EXPECT_THAT(Column(0), ElementsAre("00000004", "00000003", "00000001"));
              Click("chb_得意先対応先");
              Click("btn_画面クリア");
              EXPECT_EQ(At("chb_得意先対応先").Value(), 0);
              EXPECT_EQ(At("btn_得意先コード検索").Caption(), "得意先検索");
              EXPECT_EQ(At("得意先略称").Text(), "");
              Back();
          }});
}

TEST_F(DocumentWindows, AUsedNameComesIntoTheItemThatAsked) {
    Open("T営業見積.番号基準日付 <> ''", {[this] { screen::UserDoubleClick(At("得意先名")); },
                                          [this] {
                                              EXPECT_EQ(Front().Name(), "wnd見積得意先名一覧");
                                              EXPECT_EQ(pick.NestedListOpen, 0);
                                              EXPECT_EQ(pick.ListCondition, "");
                                              EXPECT_FALSE(mainForm.Enabled());
                                              // The last year; the day behind the clock's is not yet part of it.
                                              EXPECT_THAT(Column(0), ElementsAre("若草電機", "青葉商事"));
                                              PickRow(1);
                                          },
                                          [this] {
                                              EXPECT_EQ(Front().Name(), "wnd営業見積No一覧");
                                              EXPECT_EQ(At("得意先名").Text(), "青葉商事");
                                              EXPECT_EQ(Front().Focused(), &At("件名"));
                                              EXPECT_EQ(pick.ReturnFocusControl, caller);
                                              EXPECT_EQ(pick.PendingFocusControl, next);
                                              EXPECT_EQ(pick.ListCondition, "");
                                              Click("btn_得意先名検索");
                                              EXPECT_THAT(Column(0), ElementsAre("00000002", "00000001"));
                                              PickRow(0);
                                          }});
    EXPECT_EQ(caller->Text(), "00000002");
    EXPECT_EQ(pick.ListCondition, "C0012027033100000002");
    EXPECT_EQ(mainForm.Focused(), next);
}

TEST_F(DocumentWindows, ThePeriodOfUsedNamesIsCountedBackFromToday) {
    const auto period = [this](int index) { screen::UserClick(Front().At("opb_期間", index)); };
    Open({}, {[this] { screen::UserDoubleClick(At("得意先名")); },
              [&, this] {
                  EXPECT_EQ(Front().At("opb_期間", 0).Caption(), "直近３ヶ月");
                  EXPECT_EQ(Front().At("opb_期間", 1).Value(), 1);
                  Run("UPDATE T営業見積 SET 得意先名称A = 得意先名称A || 営業見積No");
                  // Three months before the 31st of May is the last of February.
                  period(0);
                  Click("btn_複合検索");
                  EXPECT_THAT(Column(0), ElementsAre("若草電機00000003", "青葉商事00000002"));
                  // Negated: any name from before, and from behind today those that lack the text.
                  Type("検索文字列", "青葉");
                  Click("btn_否定検索");
                  EXPECT_THAT(Column(0), ElementsAre("みどり工業00000004", "青葉商事00000001"));
                  period(4);
                  Click("btn_複合検索");
                  EXPECT_THAT(Column(0), ElementsAre("青葉商事00000001", "青葉商事00000002"));
                  Click("btn_画面クリア");
                  EXPECT_EQ(Column(0).size(), 4);
                  Back();
              },
              [this] { Back(); }});
}

TEST_F(DocumentWindows, AThousandNamesAreShownWithTheNotice) {
    Run("INSERT INTO T営業見積 (事業所コード, 番号基準日付, 営業見積No, 営業見積日付, 得意先名称A)"
        " WITH RECURSIVE n(i) AS (SELECT 10000 UNION ALL SELECT i + 1 FROM n WHERE i < 12003)"
        " SELECT '001', '20270331', i, '20260501', '客' || (i / 2) FROM n");
    Open({}, {[this] { screen::UserDoubleClick(At("得意先名")); },
              [this] {
                  EXPECT_EQ(Column(0).size(), 1000);
                  EXPECT_EQ(Column(0).value(0), "客5000");
                  EXPECT_EQ(Column(0).value(999), "客5999");
                  EXPECT_TRUE(At("lab_注意").Visible());
                  Type("検索文字列", "客5000");
                  Click("btn_複合検索");
                  EXPECT_THAT(Column(0), ElementsAre("客5000"));
                  EXPECT_FALSE(At("lab_注意").Visible());
                  Back();
              },
              [this] { Back(); }});
}

}  // namespace

}  // namespace lists
