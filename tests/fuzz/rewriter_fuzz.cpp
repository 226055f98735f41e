// A fuzzer's bytes as statements: as text, as choices of a made-up statement, and as damage done to one. Any text may
// come in; what the dialect makes of a whole statement must answer as a plain reading does.
#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdlib>
#include <iostream>

#include "store/create_store.h"
#include "store/gathered_column.h"
#include "store/postgres_dialect.h"
#include "store/postgres_search.h"
#include "store/sqlite_dialect.h"
#include "tests/rewriter/engine_rows.h"
#include "tests/rewriter/random_statement.h"

namespace {

[[noreturn]] void Fail(const QString& what, const QString& sql) {
    std::cerr << what.toStdString() << "\n" << sql.toStdString() << std::endl;
    std::abort();
}

class Bytes {
  public:
    Bytes(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    /// The next one; 0 behind the last.
    quint32 Next() { return at_ < size_ ? data_[at_++] : 0; }
    bool Done() const { return at_ >= size_; }
    QString Rest() const {
        return QString::fromUtf8(reinterpret_cast<const char*>(data_) + at_, qsizetype(size_ - at_));
    }

  private:
    const uint8_t* data_;
    std::size_t size_, at_ = 0;
};

/// Three stores with the tables of made-up statements, each filled in another way.
class Stores {
  public:
    Stores() {
        for (quint32 number = 0; number < 3; ++number) {
            const QString path = folder_.filePath(QString::number(number));
            store::Fault fault;
            Filled& filled = stores_.emplace_back();
            if (store::CreateSqliteStore(path, fault))
                filled.store =
                    store::OpenConnection("Provider=SQLite;Data Source=" + path + ";", folder_.path(), fault);
            if (!filled.store) Fail(fault.description, path);
            plain::Dice dice(number);
            filled.data = plain::RandomData(plain::MadeUpTables(), dice);
            for (const plain::TableShape& table : plain::MadeUpTables()) {
                Do(*filled.store, table.CreateStatement());
                const auto insert = plain::InsertStatement(table, filled.data.at(table.name.toLower()));
                if (insert) Do(*filled.store, *insert);
            }
        }
    }

    void Compare(const QString& sql) const {
        const plain::Select select = plain::ReadStatement(sql);
        for (const Filled& filled : stores_) {
            const auto expected = plain::Evaluate(select, filled.data);
            store::Fault fault;
            const auto rows = filled.store->Query(sql, fault);
            if (!rows && fault.description.startsWith("SQL 文を変換できません。")) return;
            if (!rows) Fail(fault.description, sql);
            if (!expected) Fail("It means nothing, but has an answer.", sql);
            const QString difference = plain::Difference(plain::AsRead(*expected), plain::RowsOf(*rows, *expected));
            if (!difference.isEmpty()) Fail(difference, sql);
        }
    }

  private:
    struct Filled {
        std::unique_ptr<store::Connection> store;
        plain::Data data;
    };

    static void Do(store::Connection& store, const QString& sql) {
        store::Fault fault;
        if (!store.Execute(sql, fault)) Fail(fault.description, sql);
    }

    QTemporaryDir folder_;
    std::vector<Filled> stores_;
};

/// A server's tables as it describes them to its searches.
store::SearchTables Searched() {
    store::SearchTables tables;
    std::set<QString> folded = {"名称a", "電話番号"}, all = {"名称a", "電話番号", "コード", "区分", "ｍコード"};
    for (const plain::TableShape& other : plain::MadeUpTables())
        for (const QString& column : other.columns) {
            const QString gathered = store::NameOfGathered(other.name, column).toLower();
            folded.insert({gathered, store::ShortOfGathered(gathered)});
            all.insert(store::FoldedColumn(store::ShortOfGathered(gathered)));
        }
    for (const plain::TableShape& shape : plain::MadeUpTables())
        tables[shape.name.toLower()] = {
            "コード", 1000, folded, {{all, "名称a", 0.5}, {{"電話番号", "コード"}, "電話番号", 0}}};
    return tables;
}

/// Each dialect gives a statement or a fault, never both or neither.
void Rewrite(const QString& sql) {
    static const store::SearchTables searched = Searched();
    if (const auto ways = store::WaysOf(sql, searched))
        for (const double rows : {0.0, 10.0, 900.0})
            store::Quickest(*ways, [rows](const QString&) { return std::optional(rows); });
    store::Fault unused;
    store::ToPostgres(sql, searched, unused);
    using Dialect = std::optional<QString> (*)(const QString&, store::Fault&);
    for (const Dialect dialect : {Dialect(store::ToSqlite), Dialect(store::ToPostgres)}) {
        store::Fault fault;
        const auto written = dialect(sql, fault);
        if (written.has_value() != fault.description.isEmpty()) Fail("Neither a statement nor a fault, or both.", sql);
        if (written) store::LimitedTo(*written, 10);
    }
}

/// Takes out, doubles and puts in pieces of the text where the bytes say.
QString Damaged(QString sql, Bytes& bytes) {
    static const QStringList kPieces = {"(",       ")",        "(+)", "'",  ",",  " OR ", " RIGHT JOIN ",
                                        " TOP 1 ", " SELECT ", "[",   "--", "/*", " ON ", " AND ",
                                        "."};
    while (!bytes.Done() && !sql.isEmpty()) {
        const auto at = qsizetype(bytes.Next() * 256 + bytes.Next()) % sql.size();
        const auto length = qsizetype(bytes.Next() % 16);
        switch (bytes.Next() % 3) {
            case 0:
                sql.remove(at, length);
                break;
            case 1:
                sql.insert(at, sql.mid(at, length));
                break;
            default:
                sql.insert(at, kPieces[length % kPieces.size()]);
        }
    }
    return sql;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static int noArguments = 0;
    static QCoreApplication application(noArguments, nullptr);
    static const Stores stores;
    Bytes bytes(data, size);
    const quint32 way = bytes.Next() % 3;
    if (way == 0) {
        Rewrite(bytes.Rest());
        return 0;
    }
    plain::Dice dice(way == 1 ? plain::Dice([&bytes] { return bytes.Next(); })
                              : plain::Dice(bytes.Next() * 256 + bytes.Next()));
    const QString sql = plain::RandomStatement(dice);
    Rewrite(way == 1 ? sql : Damaged(sql, bytes));
    if (way == 1) stores.Compare(sql);
    return 0;
}
