// What the engines answer to the program's statements, and to made-up ones of the same forms, is what a plain reading
// of these statements gives: on random tables full of Nulls, rows that stand twice, and partners that are missing.
#include <stdexcept>

#include "diary/linked_documents.h"
#include "diary/staff_resolution.h"
#include "lists/list_families.h"
#include "move/move_statements.h"
#include "session/schema.h"
#include "tests/lists/every_search.h"
#include "tests/rewriter/engine_rows.h"
#include "tests/rewriter/random_statement.h"
#include "tests/store/store_fixture.h"

namespace plain {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kDataSets = 8;
#else
constexpr int kDataSets = 100;
#endif
// The share of statements that find a row in one of the data sets; few of them show less.
constexpr double kMadeUpFilled = kDataSets < 100 ? 0.5 : 0.7, kOwnFilled = kDataSets < 100 ? 0.3 : 0.6;
constexpr int kMadeUpStatements = 1000;

struct Statement {
    QString sql;
    Select select;
    bool faulty;                            ///< an engine has to refuse it
    bool answered = false, filled = false;  ///< not refused; found a row
};

std::vector<Statement> Read(const QStringList& texts) {
    std::vector<Statement> statements;
    for (const QString& sql : texts) {
        // The makers' negative search of addresses has never been a statement.
        const bool faulty = sql.contains("Mメーカ.NOT ");
        statements.push_back({sql, faulty ? Select() : ReadStatement(sql), faulty, false, false});
    }
    return statements;
}

class Rewriter : public store::OnEngine {
  protected:
    void SetUp() override {
        OnEngine::SetUp();
        if (!IsSkipped()) db_ = std::make_unique<store::OpenStore>(GetParam());
    }

    void Create(const std::vector<TableShape>& tables) {
        tables_ = tables;
        for (const TableShape& table : tables_)
            db_->Do(table.CreateStatement());
    }

    /// Fills the tables anew.
    void Fill(int number) {
        Dice dice(quint32(1000 + number));
        data_ = RandomData(tables_, dice);
        db_->Do("BEGIN");
        for (const TableShape& shape : tables_) {
            db_->Do("DELETE FROM [" + shape.name + "]");
            const auto insert = InsertStatement(shape, data_.at(shape.name.toLower()));
            if (insert) db_->Do(*insert);
        }
        db_->Do("COMMIT");
    }

    /// How the engine's answer differs from the plain one; empty for nothing. Counts what could be told.
    QString Compare(Statement& statement) {
        const auto plain = statement.faulty ? std::nullopt : Evaluate(statement.select, data_);
        store::Fault fault;
        const auto recordset = (*db_)->Query(statement.sql, fault);
        if (!recordset) {
            const bool refused = fault.description.startsWith("SQL 文を変換できません。");
            refused_ += refused ? 1 : 0;
            return refused || statement.faulty ? QString() : "fault: " + fault.description;
        }
        if (!plain) return "it means nothing, but has an answer";
        const std::vector<Row> rows = RowsOf(*recordset, *plain);
        ++compared_;
        statement.answered = true;
        statement.filled = statement.filled || !rows.empty();
        return Difference(AsRead(*plain), rows);
    }

    void CompareAll(std::vector<Statement>& statements) {
        int different = 0;
        for (int number = 0; number < kDataSets; ++number) {
            Fill(number);
            for (Statement& statement : statements) {
                const QString difference = Compare(statement);
                if (difference.isEmpty()) continue;
                ADD_FAILURE() << "data set " << number << ": " << statement.sql.toStdString() << "\n"
                              << difference.toStdString();
                if (++different == 10) return;
            }
        }
        RecordProperty("compared", compared_);
        RecordProperty("refused", refused_);
    }

    /// How many of the statements that were answered found a row in one of the data sets.
    static double ShareFilled(const std::vector<Statement>& statements) {
        double answered = 0, filled = 0;
        for (const Statement& statement : statements) {
            answered += statement.answered ? 1 : 0;
            filled += statement.filled ? 1 : 0;
        }
        return filled / answered;
    }

    std::unique_ptr<store::OpenStore> db_;
    std::vector<TableShape> tables_;
    Data data_;
    int compared_ = 0, refused_ = 0;
};

TEST_P(Rewriter, AnswersMadeUpStatementsPlainly) {
    QStringList texts;
    for (int i = 0; i < kMadeUpStatements; ++i) {
        Dice dice{quint32(i)};
        texts << RandomStatement(dice);
    }
    Create(MadeUpTables());
    auto statements = Read(texts);
    CompareAll(statements);
    EXPECT_GT(compared_, 0.7 * kMadeUpStatements * kDataSets) << "too many are refused";
    EXPECT_GT(ShareFilled(statements), kMadeUpFilled) << "too few find a row to tell";
    EXPECT_GT(refused_, 0.05 * kMadeUpStatements * kDataSets) << "too few that can't be proven";
}

/// The searches of the lists; of each kind of database for the same values.
std::vector<lists::NamedSearch> Searches(const QString& kind, quint32 seed = 1) {
    Dice dice(seed);
    return lists::EverySearch(kind, [&dice](const QString& item) { return ValueFor(item, dice); });
}

QStringList OwnStatements() {
    QStringList texts;
    for (const QString kind : {"A", "O"})
        for (const auto& [window, sql] : Searches(kind))
            texts << sql;
    for (const QString code : {"1", "2", "001"}) {
        texts << diary::StaffStatement("000", code) << diary::StaffStatement("1", code)
              << diary::DepartmentStatement(code) << diary::SectionStatement(code)
              << move::SourceStatement({code, "20260315", code, code})
              << move::CopiedRowStatement({code, "20260315", code, code});
        for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind)
            texts << diary::DocumentStatement(kind, code, "20260315", code);
    }
    texts.removeDuplicates();
    return texts;
}

/// The tables of the main store that the texts name.
std::vector<TableShape> OwnTables(const QString& texts) {
    std::vector<TableShape> tables;
    for (const session::Table& table : session::MainTables()) {
        TableShape shape{table.name, table.ColumnNames()};
        for (const session::Column& column : table.columns)
            if (column.integer) shape.integers << column.name;
        if (texts.contains(table.name)) tables.push_back(shape);
    }
    return tables;
}

TEST_P(Rewriter, AnswersTheProgramsStatementsPlainly) {
    const QStringList texts = OwnStatements();
    Create(OwnTables(texts.join('\n')));
    auto statements = Read(texts);
    CompareAll(statements);
    EXPECT_GT(texts.size(), 300);
    EXPECT_EQ(refused_, 0);
    EXPECT_GT(ShareFilled(statements), kOwnFilled) << "too few find a row to tell";
}

std::vector<std::multiset<Row>> Unordered(const Result& result) {
    std::vector<std::multiset<Row>> groups;
    for (const auto& group : result.groups)
        groups.emplace_back(group.begin(), group.end());
    return groups;
}

// The contacts have no search for "O".
TEST(JoinForms, MeanTheSameForEveryListButTheContacts) {
    std::vector<lists::NamedSearch> joined = Searches("A"), marked = Searches("O");
    for (auto* searches : {&joined, &marked})
        std::erase_if(*searches, [](const lists::NamedSearch& search) {
            return search.sql.contains("Mメーカ.NOT ") || search.sql.contains("御担当者 ORDER BY");
        });
    ASSERT_EQ(joined.size(), marked.size());
    std::vector<Data> dataSets;
    for (quint32 number = 0; number < 20; ++number) {
        Dice dice(number);
        dataSets.push_back(RandomData(OwnTables(OwnStatements().join('\n')), dice));
    }
    std::set<QString> windows;
    for (std::size_t i = 0; i < joined.size(); ++i) {
        ASSERT_EQ(joined[i].window, marked[i].window);
        windows.insert(joined[i].window);
        const Select a = ReadStatement(joined[i].sql), o = ReadStatement(marked[i].sql);
        for (const Data& data : dataSets)
            EXPECT_EQ(Unordered(*Evaluate(a, data)), Unordered(*Evaluate(o, data)))
                << joined[i].sql.toStdString() << "\n"
                << marked[i].sql.toStdString();
    }
    EXPECT_EQ(windows.size(), lists::EveryList().size() - lists::ContactLists().size());
}

INSTANTIATE_TEST_SUITE_P(Engines, Rewriter, testing::Values(store::kSqlite, store::kPostgres),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace plain
