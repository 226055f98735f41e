#include "store/kana_fold.h"
#include "store/postgres_dialect.h"

namespace store {
namespace {

// "text" with every pair in it replaced.
QString Replaced(QString text) {
    for (const auto& [two, one] : VoicedPairs())
        text = QStringLiteral("replace(%1,%2,%3)").arg(text, LiteralForPostgres(two), LiteralForPostgres(one));
    return text;
}

// Translating looks at the whole of its list for every letter, and most texts have nothing to translate: each list has
// a gate before it.
QString TranslateBetween(Letter first, Letter end) {
    const FoldTexts texts = FoldedBetween(first, end);
    const auto escaped = [](Letter c) { return QStringLiteral("\\u%1").arg(c, 4, 16, QChar(u'0')); };
    return QStringLiteral("IF t ~ '[%1-%2]' THEN t := translate(t, %3, %4); END IF; ")
        .arg(escaped(first), escaped(end - 1), LiteralForPostgres(texts.from), LiteralForPostgres(texts.to));
}

QString Function(const QString& head, int cost, const QString& body) {
    return QStringLiteral(
               "CREATE OR REPLACE FUNCTION %1 IMMUTABLE STRICT PARALLEL SAFE COST %2 LANGUAGE plpgsql AS $$ %3 $$")
        .arg(head)
        .arg(cost)
        .arg(body);
}

}  // namespace

// Functions name each other with their schema: whoever restores a dump has none in sight.
QStringList FoldFunctions() {
    const QString fold =
        QStringLiteral(
            "BEGIN t := lower(t COLLATE \"C\"); "
            "IF octet_length(t) = length(t) "
            "OR t !~ '[\\u00A5\\u2010-\\u2019\\u2212\\u3000-\\u30A0\\uFF01-\\uFFEF]' THEN RETURN t; END IF; "
            // Where only letters stand that Unicode's own fold of widths takes as ours does, that one
            // is five times as fast. It knows other signs, such as ①, for more than we do.
            "IF t !~ '[^\\u0020-\\u007E\\u3000\\u3005\\u3041-\\u3096\\u30A1-\\u30FC\\u4E00-\\u9FFF"
            "\\uFF01-\\uFF5E\\uFF61-\\uFF9F]' THEN t := lower(normalize(t, NFKC) COLLATE \"C\"); "
            "IF t !~ '[\\u3041-\\u309C]' THEN RETURN t; END IF; END IF; ") +
        TranslateBetween(0xFF01, 0xFF5F) + TranslateBetween(0xFF61, 0xFFF0) + TranslateBetween(0x3000, 0x30A0) +
        TranslateBetween(0x0080, 0x3000) + QStringLiteral("IF t ~ '[\\u309B\\u309C]' THEN t := ") +
        Replaced(QStringLiteral("t")) + QStringLiteral("; END IF; RETURN t; END");
    const QString pieces = QStringLiteral(
        "DECLARE c text[] := string_to_array(public.katsudo_fold(t), NULL); n int := cardinality(c); "
        "p text[] := c; "
        "BEGIN FOR i IN 1 .. n - 1 LOOP p[n + i] := c[i] || c[i + 1]; END LOOP; RETURN p; END");
    // The full-width signs must not become wildcards, nor a backslash, or what folds to one, an escape.
    const QString pattern =
        QStringLiteral("BEGIN RETURN public.katsudo_fold(regexp_replace(t, '[\\\\＼￥¥％＿]', '\\\\\\&', 'g')); END");
    return {Function(QStringLiteral("katsudo_fold(t text) RETURNS text"), 30, fold),
            Function(QStringLiteral("katsudo_pieces(t text) RETURNS text[]"), 300, pieces),
            // The engine takes every LIKE with a pattern in its middle for rare, and would then look for the few rows
            // of one that fits nearly all; of a function it knows nothing.
            Function(QStringLiteral("katsudo_matches(t text, p text) RETURNS boolean"), 40,
                     QStringLiteral("BEGIN RETURN public.katsudo_fold(t) LIKE p; END")),
            Function(QStringLiteral("katsudo_pattern(t text) RETURNS text"), 40, pattern)};
}

bool FoldsAsHere(Connection& connection) {
    FoldTexts all = FoldedBetween(0, kBrokenByte);
    for (const auto& [two, one] : VoicedPairs())
        all.from += two, all.to += one;
    Fault fault;
    const auto row =
        connection.Query(QStringLiteral("SELECT katsudo_fold(%1) AS folded").arg(LiteralForPostgres(all.from)), fault);
    return row && row->Value(QStringLiteral("folded")) == QString::fromStdString(all.to);
}

}  // namespace store
