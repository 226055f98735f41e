// How the engine goes about the statements on documents: on the tables as set-up makes them, with the engine's
// statistics set to what they are for a million documents.
#include <gmock/gmock.h>

#include "bench/recording_connection.h"
#include "diary/linked_documents.h"
#include "lists/list_families.h"
#include "session/run/modules.h"
#include "session/schema.h"
#include "tests/setup/setup_fixture.h"

namespace {

using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class NoHost : public screen::ScreenHost {
  public:
    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override {}
    void Sleep(int) override {}

  protected:
    void WaitUntil(const std::function<bool()>&) override { EndProgram(); }
};

class IndexPlans : public testing::Test {
  protected:
    IndexPlans() {
        EXPECT_EQ(tree_.Create(setup::SmallDemo()), "");
        ActAsIfAMillion();
        auto recording = std::make_unique<bench::RecordingConnection>(setup::OpenStores(tree_.tree).main);
        connection_ = recording.get();
        store_ = std::move(recording);
    }

    // By the start of an index: how many rows share its first column, and its first two.
    void ActAsIfAMillion() {
        store::Fault fault;
        const auto main = setup::OpenStores(tree_.tree).main;
        for (const QString& kind : session::DocumentKinds()) {
            const auto set = [&](const QString& index, const QString& shared) {
                const QString sql =
                    QString("UPDATE sqlite_stat1 SET stat = '1000000 %3' WHERE tbl = 'T%1' AND idx LIKE '%2'");
                ASSERT_TRUE(main->Execute(sql.arg(kind, index, shared), fault)) << fault.description.toStdString();
            };
            set("%", "100 5 1 1");
            set("sqlite_autoindex%", "333333 200000 1");
            set("T" + kind + "_" + kind + "日付%", "2740 1");
            set("T" + kind + "_" + kind + "No%", "3 1");
            // Each of the staff has a share of the payments.
            set("T" + kind + "_担当者コード%", QString::number(1'000'000 / setup::SmallDemo().staff) + " 200 1");
        }
    }

    /// The steps of the engine's plan for a statement.
    std::vector<std::string> PlanOf(const QString& sql) {
        store::Fault fault;
        const auto rows = connection_->Query("EXPLAIN QUERY PLAN " + sql, fault, store::kAllRows);
        std::vector<std::string> steps;
        for (; rows && !rows->Eof(); rows->MoveNext())
            steps.push_back(rows->Value("detail").value_or("").toStdString());
        return steps.empty() ? std::vector{fault.description.toStdString()} : steps;
    }

    setup::TemporaryTree tree_;
    std::unique_ptr<store::Connection> store_;
    bench::RecordingConnection* connection_ = nullptr;
};

TEST_F(IndexPlans, ALinkedDocumentAndItsReferencesAreLookedUp) {
    NoHost host;
    const platform::FixedClock clock{QDateTime(QDate(2026, 7, 31), QTime(10, 0))};
    platform::ProcessStarter starter;
    platform::RecordingOpener opener;
    const session::Outside outside{host, clock, starter, opener, {}, QString(), tree_.folder.path(), QString()};
    session::Modules modules(outside, [] {});
    modules.context.MainConnection = std::move(store_);
    modules.context.DbKind = "A";
    modules.context.SiteCode = modules.context.OperatingSiteCode = "000";
    diary::DiaryContext& diary = modules.diary;
    ASSERT_TRUE(modules.company.LoadCompanyInformation());
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        const QString table = "T" + session::DocumentKinds()[kind];
        const QString number = table.mid(1) + "No";
        const QStringList key =
            setup::First(tree_.tree, QString("SELECT 事業所コード, 番号基準日付, %1 FROM %2").arg(number, table))
                .split('|');
        connection_->recorded.clear();
        connection_->recording = true;
        const auto row = diary::FetchDocument(diary, kind, key[0], key[1], key[2]);
        ASSERT_TRUE(row);
        diary::TakeDocument(diary, kind, *row);
        connection_->recording = false;
        QStringList asked;
        for (const bench::Recorded& statement : connection_->recorded) {
            if (!statement.sql.startsWith("INSERT")) {
                EXPECT_THAT(PlanOf(statement.sql), Each(StartsWith("SEARCH"))) << statement.sql.toStdString();
            }
            asked << statement.sql.section(" FROM ", 1);
        }
        EXPECT_THAT(asked.join('\n').toStdString(),
                    AllOf(HasSubstr("WHERE " + table.toStdString() + ".事業所コード"),
                          HasSubstr("WHERE T営業活動明細." + table.mid(1).toStdString())));
    }
}

/// The step of a plan that walks an index in the order of the list.
auto Walks(const QString& how, const QString& table, const QStringList& columns) {
    const std::string index = QString("USING %1 %2_%3").arg(how, table, columns.join('_')).toStdString();
    return AllOf(testing::Contains(HasSubstr(index)), Each(Not(HasSubstr("TEMP B-TREE"))));
}

TEST_F(IndexPlans, ANumberListOpensInTheOrderOfAnIndex) {
    const QHash<QString, QStringList> narrowedBy = {{"出金", {"担当者コード"}},
                                                    {"案件", {"相手先コード", "相手先区分"}}};
    for (const QString& kind : session::DocumentKinds()) {
        const QString table = "T" + kind, date = kind + "日付", number = kind + "No";
        const lists::ListDescription& list = *lists::FindList("wnd" + number + "一覧");
        const QStringList narrowed = narrowedBy.value(kind, {"得意先コード"});
        for (const QString site : {"000", "001"}) {
            lists::SearchValues values;
            values.dbKind = "A";
            values.siteCode = values.operatingSiteCode = site;
            values.condition = QString("%1.番号基準日付 <> '' AND %1.%2 >= '20250731'").arg(table, date);
            EXPECT_THAT(PlanOf(lists::BuildSearchSql(list, list.statements.front(), 0, values)),
                        Walks("INDEX", table, {date, number}));
            for (const QString& column : narrowed)
                values.condition += QString(" AND %1.%2 = '000012'").arg(table, column);
            EXPECT_THAT(PlanOf(lists::BuildSearchSql(list, list.statements.front(), 0, values)),
                        Walks("INDEX", table, narrowed + QStringList{date, number}));
        }
    }
}

TEST_F(IndexPlans, UsedNamesAreReadFromAnIndexAlone) {
    for (const lists::ListDescription& family : lists::NameLists()) {
        const lists::ListDescription& list = *lists::FindList(family.name);
        const lists::ListStatement& statement = list.statements.front();
        const QString table = statement.head.section(" FROM ", 1), column = list.columns.front().source;
        for (const QString text : {"", "山"})
            for (const QString firstDay : {"20260430", "20160731", ""})
                for (const int mode : {0, -1}) {
                    lists::SearchValues values;
                    values.dbKind = "A";
                    values.firstDay = firstDay;
                    values.lastDay = firstDay.isEmpty() ? "" : "20260731";
                    values.items.insert(list.items.front().name, text);
                    const QString sql = lists::BuildSearchSql(list, statement, mode, values);
                    EXPECT_THAT(PlanOf(sql), Walks("COVERING INDEX", table, {column, table.mid(1) + "日付"}))
                        << sql.toStdString();
                }
    }
}

}  // namespace
