#include "store/postgres_search.h"

#include <QVariant>
#include <algorithm>

#include "store/either_list.h"
#include "store/gathered_column.h"
#include "store/kana_fold.h"
#include "store/postgres_dialect.h"
#include "store/select_shape.h"
#include "store/sql_condition.h"
#include "store/sqlite_dialect.h"

namespace store {
namespace {

using Kind = SqlToken::Kind;

// The searched table once more, as the index along which a search walks.
const QString kWalk = QStringLiteral("katsudo_walk");

// Microseconds that the engine takes in its cache, measured; their ratios decide.
constexpr double kEntryOfIndex = 0.11;  // read and compared
constexpr double kEntryWithRow = 0.3;   // the same with a look at the row; in the order of the rows themselves
constexpr double kRowByKey = 2.5;
constexpr double kFoundByPieces = 0.15;
constexpr double kRowLookedUp = 1.2;  // and sorted
constexpr double kRowBesideIt = 0.5;  // the same where the one before it is on the same page

// Rows with a text don't lie as evenly in an order as is reckoned: the way to the last one that is shown may be longer.
constexpr double kUneven = 1.5;

// So few rows are looked up before a further question about them is answered.
constexpr double kFew = 1000;

QString Compared(QString name) {
    for (QChar& c : name)
        if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() | 0x20);
    return name;
}

LikeForm FormOf(const SearchTables& tables, Pieces pieces) {
    LikeForm form;
    form.pieces = pieces;
    for (const auto& [name, table] : tables)
        form.folded.emplace(name, table.folded);
    return form;
}

std::optional<QString> Written(const QString& shared, const LikeForm& form) {
    const auto tokens = TokenizedSql::Read(shared);
    Fault fault;
    return tokens ? WriteForPostgres(*tokens, form, fault) : std::nullopt;
}

/// Reads a search and writes its ways.
class Search {
  public:
    Search(const TokenizedSql& sql, const SearchTables& tables) : sql_(sql), tables_(tables) {}

    std::optional<SearchWays> Ways() {
        if (!ReadShape() || !ReadConditions() || !ChooseWalk()) return std::nullopt;
        SearchWays ways;
        ways.rows = known_->rows;
        ways.limit = sql_.Slice({limit_, limit_ + 1}).toDouble();
        ways.covered = covered_;
        ways.together = together_;
        bool done = Write(sql_.Text(), Pieces::Throughout, ways.lookUp);
        done = done && Write(Walking(), Pieces::Nowhere, ways.walk);
        done = done && Write(Counting(having_), Pieces::Nowhere, ways.having);
        done = done && (passing_.empty() || Write(Counting(passing_), Pieces::Nowhere, ways.passing));
        const QString text = TextOfOrder();
        done =
            done &&
            (text.isEmpty() ||
             (Write(CountingOrder(FoldedOrder(), QStringLiteral("< '%1'").arg(text)), Pieces::Nowhere, ways.before) &&
              Write(CountingOrder(Order(), QStringLiteral("LIKE '%1%'").arg(text)), Pieces::Nowhere, ways.beginning)));
        return done ? std::optional(ways) : std::nullopt;
    }

  private:
    using Texts = std::map<std::size_t, std::pair<std::size_t, QString>>;  // in place of tokens [first, second)

    // SELECT … FROM … WHERE … ORDER BY T.c LIMIT n
    bool ReadShape() {
        if (!sql_.IsWord(0, QLatin1String("SELECT")) || sql_.IsWord(1, QLatin1String("DISTINCT"))) return false;
        shape_ = ShapeOf(sql_, 0);
        const std::size_t at = shape_.tail.begin;
        const bool ordered = !shape_.compound && shape_.all.end == sql_.Size() && !shape_.where.Empty() &&
                             sql_.IsWord(at, QLatin1String("ORDER")) && sql_.IsWord(at + 1, QLatin1String("BY")) &&
                             IsColumn(at + 2) && sql_.IsWord(at + 5, QLatin1String("LIMIT"));
        limit_ = at + 6;
        if (!ordered || limit_ + 1 != sql_.Size() || sql_.At(limit_).kind != Kind::Number) return false;
        order_ = at + 2;
        table_ = sql_.Name(order_);
        const auto known = tables_.find(table_);
        known_ = known == tables_.end() ? nullptr : &known->second;
        return known_ && known_->rows > 0 && HasTable(sql_, shape_.from, table_) && NamesItsColumns();
    }

    // Every column with its table: the index beside the table has columns of the same names.
    bool NamesItsColumns() const {
        for (std::size_t i = shape_.columns.begin; i < shape_.columns.end; ++i) {
            if (IsColumn(i))
                i += 2;
            else if (sql_.IsWord(i, QLatin1String("AS")))
                ++i;
            else if (!sql_.IsSymbol(i, QLatin1String(",")))
                return false;
        }
        return true;
    }

    bool IsColumn(std::size_t i) const {
        return sql_.IsName(i) && sql_.IsSymbol(i + 1, QLatin1String(".")) && sql_.IsName(i + 2);
    }

    bool ReadConditions() {
        const auto conjuncts = SplitConjuncts(sql_, shape_.where);
        for (const TokenRange& conjunct : conjuncts.value_or(std::vector<TokenRange>()))
            if (!ReadCondition(conjunct)) return false;
        return !having_.empty();
    }

    bool ReadCondition(TokenRange conjunct) {
        bool own = true, has = false;
        for (std::size_t i = conjunct.begin; i < conjunct.end; ++i) {
            if (sql_.IsWord(i, QLatin1String("SELECT"))) return false;
            if (sql_.IsWord(i, QLatin1String("LIKE"))) {
                if (!ReadLike(i, has)) return false;
            } else if (IsColumn(i)) {
                own = own && sql_.Name(i) == table_;
                i += 2;
            } else if (sql_.IsName(i) && !IsOperator(i)) {
                return false;  // whose column it is isn't told
            }
        }
        if (has && !own) return false;
        if (own) (has ? having_ : passing_).push_back(conjunct);
        return true;
    }

    bool IsOperator(std::size_t i) const {
        return sql_.At(i).kind == Kind::Word && IsKeywordOfPostgres(sql_.Slice({i, i + 1}));
    }

    // Only "T.c LIKE 'text'" and "T.c NOT LIKE 'text'" with a folded c will do.
    bool ReadLike(std::size_t at, bool& has) const {
        const bool negated = at > 0 && sql_.IsWord(at - 1, QLatin1String("NOT"));
        const std::size_t column = at - (negated ? 4 : 3);
        const bool simple = at >= shape_.where.begin + 3 && IsColumn(column) && sql_.Name(column) == table_ &&
                            Folded(column + 2) && at + 1 < sql_.Size() && sql_.At(at + 1).kind == Kind::Text &&
                            !sql_.IsSymbol(at + 2, QLatin1String("||")) &&
                            !sql_.IsWord(at + 2, QLatin1String("ESCAPE"));
        const bool first =
            simple && (column == shape_.where.begin || sql_.IsSymbol(column - 1, QLatin1String("(")) ||
                       sql_.IsWord(column - 1, QLatin1String("AND")) || sql_.IsWord(column - 1, QLatin1String("OR")));
        if (!first) return false;
        has = has || !negated;
        return negated || !LikePattern(sql_.Slice({at + 1, at + 2}).mid(1).chopped(1).toStdString()).Pieces().empty();
    }

    bool Folded(std::size_t column) const { return known_->folded.contains(sql_.Name(column)); }

    // An index in this order; best one that has all that the conditions look at.
    bool ChooseWalk() {
        const QString order = sql_.Name(order_ + 2);
        bool ordered = order == Compared(known_->key);
        for (const SearchWalk& walk : known_->walks) {
            if (walk.order != order) continue;
            ordered = true;
            together_ = walk.together;
            inIndex_ = &walk.columns;
            covered_ = inIndex_->contains(Compared(known_->key)) && CoversAll(having_) && CoversAll(passing_);
            if (covered_) return true;
        }
        return ordered;
    }

    bool CoversAll(const std::vector<TokenRange>& conditions) const {
        for (const TokenRange& condition : conditions)
            for (std::size_t i = condition.begin; i < condition.end; ++i)
                if (IsColumn(i) && sql_.Name(i) == table_ && !Covers(i)) return false;
        return true;
    }

    // True for the "T.c" at `i` that an index has in short alone.
    bool IsInShort(std::size_t i) const { return known_->folded.contains(ShortOfGathered(sql_.Name(i + 2))); }

    // True when the index has what the "T.c" at `i` is compared by.
    bool Covers(std::size_t i) const {
        const QString column = IsInShort(i) ? ShortOfGathered(sql_.Name(i + 2)) : sql_.Name(i + 2);
        const bool like = sql_.IsWord(i + 3, QLatin1String("LIKE")) ||
                          (sql_.IsWord(i + 3, QLatin1String("NOT")) && sql_.IsWord(i + 4, QLatin1String("LIKE")));
        return inIndex_->contains(like ? FoldedColumn(column) : column);
    }

    // The conditions and the order speak of the index's columns where it has them.
    Texts FromIndex() const {
        Texts texts;
        for (std::size_t i = shape_.where.begin; covered_ && i < sql_.Size(); ++i)
            if (IsColumn(i) && sql_.Name(i) == table_ && (i == order_ || Covers(i)))
                texts[i] = IsInShort(i) ? std::pair(i + 5, InShort(i)) : std::pair(i + 1, kWalk);
        // Which of the long ones have the text, their rows tell.
        for (const TokenRange& condition : having_)
            for (std::size_t i = condition.begin; covered_ && i < condition.end; ++i)
                if (IsColumn(i) && IsInShort(i))
                    texts[condition.end] = {condition.end,
                                            QStringLiteral("AND %1 ").arg(Uncounted(sql_.Slice(condition)))};
        return texts;
    }

    // "T.c LIKE 'text'", of the index.
    QString InShort(std::size_t i) const {
        const QString column = ShortOfGathered(sql_.SpelledName(i + 2));
        return QStringLiteral("(%1.[%2] LIKE %3 OR %1.[%4] = '%5')")
            .arg(kWalk, column, sql_.Slice({i + 4, i + 5}), FoldedColumn(column), QString(QChar(kTooLong)));
    }

    QString Walking() const {
        Texts texts = FromIndex();
        if (covered_) {
            const QString key = QuotedForPostgres(known_->key), table = sql_.Slice({order_, order_ + 1});
            texts[shape_.from.end] = {shape_.from.end,
                                      QStringLiteral("INNER JOIN %1 %2 ON %2.%3 = %1.%3 ").arg(table, kWalk, key)};
        }
        return Replaced(sql_.All(), texts);
    }

    QString Counting(const std::vector<TokenRange>& conditions) const {
        Texts texts;
        for (const TokenRange& condition : conditions)
            for (std::size_t i = condition.begin; i < condition.end; ++i)
                if (IsColumn(i)) texts[i] = {i + 1, kWalk};
        QStringList written;
        for (const TokenRange& condition : conditions)
            written << Replaced(condition, texts);
        return QStringLiteral("SELECT 1 FROM %1 %2 WHERE %3")
            .arg(sql_.Slice({order_, order_ + 1}), kWalk, written.join(QLatin1String(" AND ")));
    }

    // What the column of the order is searched for anywhere within; empty for another pattern.
    QString TextOfOrder() const {
        const QString column = sql_.Name(order_ + 2);
        for (std::size_t i = having_.front().begin; i + 4 < having_.front().end; ++i) {
            if (!IsColumn(i) || sql_.Name(i + 2) != column || !sql_.IsWord(i + 3, QLatin1String("LIKE"))) continue;
            const QString text = sql_.Slice({i + 4, i + 5}).mid(2).chopped(2);
            const bool anywhere = sql_.Slice({i + 4, i + 5}) == QStringLiteral("'%%1%'").arg(text);
            return anywhere && !text.contains(u'%') && !text.contains(u'_') ? FoldedText(text) : QString();
        }
        return {};
    }

    // What stands in a literal, as the folded column holds it; empty for what can't stand in a pattern as it is.
    static QString FoldedText(const QString& literal) {
        const QString text = QString(literal).replace(QLatin1String("''"), QLatin1String("'"));
        const auto folded = LikePattern((u'%' + text + u'%').toStdString()).Folded();
        const QString written = QString::fromStdString(folded.value_or(std::string())).mid(1).chopped(1);
        return written.contains(u'\\') ? QString() : QString(written).replace(u'\'', QLatin1String("''"));
    }

    QString CountingOrder(const QString& column, const QString& compared) const {
        return QStringLiteral("SELECT 1 FROM %1 %2 WHERE %2.%3 %4")
            .arg(sql_.Slice({order_, order_ + 1}), kWalk, column, compared);
    }

    QString Order() const { return sql_.Slice({order_ + 2, order_ + 3}); }

    // The order is that of the texts as they were typed, mostly all in one way; the folded ones lie alike.
    QString FoldedOrder() const { return u'[' + FoldedColumn(sql_.SpelledName(order_ + 2)) + u']'; }

    QString Replaced(TokenRange range, const Texts& texts) const {
        QString written;
        for (std::size_t i = range.begin; i <= range.end && i <= sql_.Size();) {
            const auto text = texts.find(i);
            if (text != texts.end() && (i < range.end || text->second.first == i)) written += text->second.second;
            if (i == range.end) break;
            const bool replaced = text != texts.end() && text->second.first > i;
            if (!replaced) written += sql_.Slice({i, i + 1});
            i = replaced ? text->second.first : i + 1;
            if (!(i < range.end && (sql_.IsSymbol(i, QLatin1String(".")) || sql_.IsSymbol(i - 1, QLatin1String(".")))))
                written += u' ';
        }
        return written;
    }

    bool Write(const QString& shared, Pieces pieces, QString& way) const {
        const auto written = Written(shared, FormOf(tables_, pieces));
        way = written.value_or(QString());
        return written.has_value();
    }

    const TokenizedSql& sql_;
    const SearchTables& tables_;
    SelectShape shape_;
    QString table_;  // the searched one, by which the rows are ordered
    const SearchTable* known_ = nullptr;
    std::size_t order_ = 0, limit_ = 0;         // where the order's column and the number of rows stand
    std::vector<TokenRange> having_, passing_;  // the conditions that look for a text; the others of this table
    const std::set<QString>* inIndex_ = nullptr;
    bool covered_ = false;
    double together_ = 0;
};

// Nothing for a statement without a LIKE, or one that can't be read.
std::optional<TokenizedSql> ReadSearch(const QString& sql, const SearchTables& tables) {
    if (!sql.contains(QLatin1String("LIKE"), Qt::CaseInsensitive)) return std::nullopt;
    Fault fault;
    const auto shared = ToSqlite(sql, fault);
    auto tokens = shared ? TokenizedSql::Read(*shared) : std::nullopt;
    if (!tokens || !shared->contains(QLatin1String(" IN (SELECT "))) return tokens;
    return TokenizedSql::Read(AskGathered(*tokens, [&tables](const QString& table, const QString& column) {
        const auto known = tables.find(table);
        return known != tables.end() && known->second.folded.contains(Compared(column));
    }));
}

}  // namespace

QString AskForSearchTables() {
    return QStringLiteral(
        "SELECT t.relname, t.reltuples, "
        "(SELECT a.attname FROM pg_index k JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = k.indkey[0] "
        "WHERE k.indrelid = t.oid AND k.indisunique AND k.indnatts = 1 AND k.indpred IS NULL LIMIT 1), "
        "(SELECT string_agg(substr(a.attname, 9), E'\\n') FROM pg_attribute a WHERE a.attrelid = t.oid "
        "AND a.attgenerated = 's' AND a.attname LIKE 'katsudo\\_%' AND NOT a.attisdropped), "
        "(SELECT string_agg(a.attname, E'\\n' ORDER BY i.n) FROM unnest(w.indkey) WITH ORDINALITY i(k, n) "
        "JOIN pg_attribute a ON a.attrelid = t.oid AND a.attnum = i.k), "
        "(SELECT abs(s.correlation) FROM pg_stats s JOIN pg_attribute a ON a.attname = s.attname "
        "WHERE a.attrelid = t.oid AND a.attnum = w.indkey[0] AND s.schemaname = 'public' AND s.tablename = t.relname) "
        "FROM pg_class t JOIN pg_index w ON w.indrelid = t.oid AND w.indisvalid "
        "JOIN pg_class x ON x.oid = w.indexrelid AND x.relname LIKE '%\\_walk_' "
        "WHERE t.relnamespace = 'public'::regnamespace ORDER BY x.relname");
}

SearchTables TakeSearchTables(QSqlQuery& query) {
    const auto names = [&query](int column) { return Compared(query.value(column).toString()).split(u'\n'); };
    SearchTables tables;
    while (query.next()) {
        SearchTable& table = tables[Compared(query.value(0).toString())];
        table.rows = query.value(1).toDouble();
        table.key = query.value(2).toString();
        const QStringList folded = names(3), walk = names(4);
        table.folded = {folded.begin(), folded.end()};
        table.walks.push_back({{walk.begin(), walk.end()}, walk.front(), query.value(5).toDouble()});
    }
    return tables;
}

std::optional<SearchWays> WaysOf(const QString& sql, const SearchTables& tables) {
    const auto tokens = ReadSearch(sql, tables);
    return tokens ? Search(*tokens, tables).Ways() : std::nullopt;
}

namespace {

using RowsOf = std::function<std::optional<double>(QString)>;

// How many entries a walk passes. Rows that begin with the text lie together in its order, perhaps far away; the others
// lie anywhere.
std::optional<double> EntriesUntilEnough(const SearchWays& ways, double found, double having, const RowsOf& rowsOf) {
    const auto among = [&](double rows) { return ways.rows * std::min(1.0, ways.limit / std::max(rows, 1.0)); };
    if (ways.before.isEmpty()) return std::min(kUneven * among(found), ways.rows);
    const auto before = rowsOf(ways.before), beginning = rowsOf(ways.beginning);
    if (!before || !beginning) return std::nullopt;
    const double anywhere = found * (1 - std::min(1.0, *beginning / std::max(having, 1.0)));
    return std::min(
        {kUneven * among(anywhere), *before + among(std::min(*beginning, found)) * *beginning / ways.rows, ways.rows});
}

}  // namespace

std::optional<QString> Quickest(const SearchWays& ways, const std::function<std::optional<double>(QString)>& rowsOf) {
    const auto having = rowsOf(ways.having);
    if (!having) return std::nullopt;
    if (*having < kFew) return ways.lookUp;
    const auto passing = ways.passing.isEmpty() ? std::optional(ways.rows) : rowsOf(ways.passing);
    if (!passing) return std::nullopt;

    const double found = std::min(ways.rows, *having) * std::min(1.0, *passing / ways.rows);
    const auto entries = EntriesUntilEnough(ways, found, *having, rowsOf);
    if (!entries) return std::nullopt;
    const double rowsByKey = ways.covered ? std::min(ways.limit, found) * kRowByKey : 0;
    const double walk = *entries * (ways.covered ? kEntryOfIndex : kEntryWithRow) + rowsByKey;
    // What another index tells of the conditions spares the rows themselves.
    const double row = kRowLookedUp + ways.together * (kRowBesideIt - kRowLookedUp);
    const double lookUp = *having * kFoundByPieces + found * row;
    return lookUp <= walk ? ways.lookUp : ways.walk;
}

std::optional<QString> ToPostgres(const QString& sql, const SearchTables& tables, Fault& fault) {
    const auto tokens = tables.empty() ? std::nullopt : ReadSearch(sql, tables);
    if (!tokens) return ToPostgres(sql, fault);
    const auto listed = TokenizedSql::Read(ListEitherFirst(*tokens));
    return WriteForPostgres(listed ? *listed : *tokens, FormOf(tables, Pieces::Asked), fault);
}

}  // namespace store
