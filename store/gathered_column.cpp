#include "store/gathered_column.h"

#include "store/either_list.h"
#include "store/postgres_dialect.h"

namespace store {
namespace {

// Of the 2,704 that a row of an index may have.
constexpr int kBytesInIndex = 1000;

// Whoever writes the other table needs no right to the one that gathers.
QString Trigger(const QString& function, const QString& body) {
    return QStringLiteral(
               "CREATE OR REPLACE FUNCTION public.%1() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER "
               "SET search_path = public, pg_temp AS $$ %2 $$")
        .arg(function, body);
}

/// The names of one column in the server's quotes, and what is written with them.
class Gathering {
  public:
    explicit Gathering(const GatheredColumn& column)
        : table_(QuotedForPostgres(column.table)),
          key_(QuotedForPostgres(column.key)),
          from_(QuotedForPostgres(column.from)),
          link_(QuotedForPostgres(column.link)),
          gathered_(QuotedForPostgres(column.gathered)),
          name_(QuotedForPostgres(column.Name())),
          ofTable_(QuotedForPostgres("katsudo_gather_" + column.table)),
          ofFrom_(QuotedForPostgres("katsudo_gather_" + column.from)) {}

    QStringList Functions() const {
        const QString own = QStringLiteral("BEGIN NEW.%1 := %2; RETURN NEW; END").arg(name_, TextsOf("NEW." + key_));
        // Two that write rows of one key wait for each other before they read: the second one sees the first one's.
        const QString others =
            QStringLiteral(
                "DECLARE k text; BEGIN FOR k IN SELECT DISTINCT v FROM unnest(ARRAY["
                "CASE WHEN TG_OP <> 'DELETE' THEN NEW.%1 END, CASE WHEN TG_OP <> 'INSERT' THEN OLD.%1 END]) v "
                "WHERE v IS NOT NULL ORDER BY v LOOP PERFORM 1 FROM %2 WHERE %3 = k FOR NO KEY UPDATE; "
                "UPDATE %2 SET %4 = %5 WHERE %3 = k AND %4 IS DISTINCT FROM %5; END LOOP; RETURN NULL; END")
                .arg(link_, table_, key_, name_, TextsOf(QStringLiteral("k")));
        return {Trigger(ofTable_, own), Trigger(ofFrom_, others)};
    }

    QStringList Triggers() const {
        return {QStringLiteral("CREATE TRIGGER katsudo_gather BEFORE INSERT OR UPDATE OF %1 ON %2 "
                               "FOR EACH ROW EXECUTE FUNCTION public.%3()")
                    .arg(key_, table_, ofTable_),
                QStringLiteral("CREATE TRIGGER katsudo_gather AFTER INSERT OR DELETE OR UPDATE OF %1, %2 ON %3 "
                               "FOR EACH ROW EXECUTE FUNCTION public.%4()")
                    .arg(link_, gathered_, from_, ofFrom_)};
    }

    QStringList NoTriggers() const {
        const QString drop = QStringLiteral("DROP TRIGGER IF EXISTS katsudo_gather ON ");
        return {drop + table_, drop + from_};
    }

    QString Fill() const {
        return QStringLiteral(
                   "UPDATE %1 SET %2 = t.v FROM %1 p LEFT JOIN (SELECT %3 AS k, %4 AS v FROM %5 GROUP BY %3) "
                   "t ON t.k = p.%6 WHERE p.%6 = %1.%6 AND %1.%2 IS DISTINCT FROM t.v")
            .arg(table_, name_, link_, Texts(), from_, key_);
    }

  private:
    // In an order of their own, so that the same texts are the same value.
    QString Texts() const { return QStringLiteral("string_agg(%1, E'\\n' ORDER BY %1)").arg(gathered_); }
    QString TextsOf(const QString& key) const {
        return QStringLiteral("(SELECT %1 FROM %2 WHERE %3 = %4)").arg(Texts(), from_, link_, key);
    }

    QString table_, key_, from_, link_, gathered_, name_, ofTable_, ofFrom_;
};

// "'%text%'" without anything that may stand for a line's end.
bool StaysInALine(const QString& literal) {
    const QString text = literal.mid(2).chopped(2);
    return literal.size() >= 4 && literal.startsWith(QLatin1String("'%")) && literal.endsWith(QLatin1String("%'")) &&
           !text.contains(u'%') && !text.contains(u'_') && !text.contains(u'\n');
}

// The names in "k IN ( SELECT x FROM U WHERE x IS NOT NULL AND a LIKE 'text' )", and the text.
struct ListOf {
    QString from, gathered, text;
};

std::optional<ListOf> ReadList(const TokenizedSql& sql, TokenRange list) {
    // The words and signs between the names, which are k, x, U, x, a, and the text.
    static constexpr const char* kForm[] = {"",   "IN",  "(",    "SELECT", "", "FROM", "",     "WHERE", "",
                                            "IS", "NOT", "NULL", "AND",    "", "LIKE", "text", ")"};
    constexpr std::size_t kFrom = 6, kGathered = 13, kText = 15;
    if (list.Size() != std::size(kForm) || sql.At(list.begin + kText).kind != SqlToken::Kind::Text) return std::nullopt;
    for (std::size_t at = 0; at < std::size(kForm); ++at) {
        const std::size_t i = list.begin + at;
        const QLatin1String part(kForm[at]);
        const bool fits = part.isEmpty() ? sql.IsName(i) : sql.IsWord(i, part) || sql.IsSymbol(i, part);
        if (!fits && at != kText) return std::nullopt;
    }
    return ListOf{sql.SpelledName(list.begin + kFrom), sql.SpelledName(list.begin + kGathered),
                  sql.Slice({list.begin + kText, list.begin + kText + 1})};
}

}  // namespace

QString NameOfGathered(const QString& from, const QString& gathered) {
    return FoldedColumn(from + u'_' + gathered);
}

QString ShortOfGathered(const QString& name) {
    return name + QLatin1String("_short");
}

QString GatheredColumn::ShortColumn() const {
    return QStringLiteral(
               "%1 text GENERATED ALWAYS AS (CASE WHEN octet_length(%2) > %3 THEN '%4' ELSE katsudo_fold(%2) END) "
               "STORED")
        .arg(QuotedForPostgres(FoldedColumn(ShortOfGathered(Name()))), QuotedForPostgres(Name()))
        .arg(kBytesInIndex)
        .arg(QChar(kTooLong));
}

QString GatheredColumn::Name() const {
    return NameOfGathered(from, gathered);
}

QStringList GatherStatements(const GatheredColumn& column) {
    const Gathering gathering(column);
    return gathering.Functions() + gathering.NoTriggers() + gathering.Triggers() + QStringList(gathering.Fill());
}

QStringList StopGatherStatements(const GatheredColumn& column) {
    return Gathering(column).NoTriggers();
}

QString AskGathered(const TokenizedSql& sql, const std::function<bool(const QString&, const QString&)>& isThere) {
    return ReplaceEithers(sql, [&](const EitherOf& either) -> QString {
        const auto list = ReadList(sql, either.list);
        if (!list || !StaysInALine(list->text)) return {};
        const QString name = NameOfGathered(list->from, list->gathered);
        if (!isThere(sql.Name(either.table.begin), name)) return {};
        const QString table = sql.Slice(either.table);
        return QStringLiteral("(%1.%2 OR %1.[%3] LIKE %4)").arg(table, sql.Slice(either.like), name, list->text);
    });
}

}  // namespace store
