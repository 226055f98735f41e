#include <stdexcept>

#include "tests/rewriter/plain_statement.h"

namespace plain {
namespace {

using Kind = Expression::Kind;

class Reader {
  public:
    explicit Reader(QString sql) : sql_(std::move(sql)) { Next(); }

    Select ReadAll() {
        Word("SELECT");
        Select select = ReadSelect();
        if (!token_.isEmpty()) Fail();
        return select;
    }

  private:
    [[noreturn]] void Fail() const {
        throw std::runtime_error(QString("can't read at %1: %2").arg(at_).arg(sql_).toStdString());
    }

    void Next() {
        while (at_ < sql_.size() && sql_[at_].isSpace())
            ++at_;
        const auto begin = at_;
        const QChar first = at_ < sql_.size() ? sql_[at_] : QChar();
        literal_ = first == '\'';
        if (literal_ || first == '[') {
            const QChar close = literal_ ? '\'' : ']';
            token_.clear();
            for (++at_; at_ < sql_.size(); token_ += sql_[at_++]) {
                if (sql_[at_] != close) continue;
                if (!literal_ || at_ + 1 == sql_.size() || sql_[at_ + 1] != close) break;
                ++at_;
            }
            if (at_++ >= sql_.size()) Fail();
            quoted_ = true;
            return;
        }
        quoted_ = false;
        if (first.isLetterOrNumber() || first == '_') {
            while (at_ < sql_.size() && (sql_[at_].isLetterOrNumber() || sql_[at_] == '_'))
                ++at_;
        } else if (at_ < sql_.size()) {
            const QString two = sql_.mid(at_, 2);
            at_ += QStringList{"<=", ">=", "<>", "||"}.contains(two) ? 2 : 1;
        }
        token_ = sql_.mid(begin, at_ - begin);
    }

    bool Is(const char* text) const {
        return !quoted_ && token_.compare(QLatin1String(text), Qt::CaseInsensitive) == 0;
    }

    bool Take(const char* text) {
        const bool here = Is(text);
        if (here) Next();
        return here;
    }

    void Word(const char* text) {
        if (!Take(text)) Fail();
    }

    QString Name() {
        if (literal_ || token_.isEmpty() || (!quoted_ && !token_[0].isLetter())) Fail();
        const QString name = token_.toLower();
        Next();
        return name;
    }

    Select ReadSelect() {
        Select select;
        select.distinct = Take("DISTINCT");
        if (Take("TOP")) select.top = TakeNumber();
        do
            select.columns.push_back(ReadColumn());
        while (Take(","));
        Word("FROM");
        select.from = ReadFrom();
        if (Take("WHERE")) select.where = ReadOr();
        if (Take("ORDER")) {
            Word("BY");
            do {
                select.orders.push_back({ReadValue(), false});
                select.orders.back().descending = Take("DESC");
            } while (Take(","));
        }
        return select;
    }

    int TakeNumber() {
        const bool bracket = Take("(");
        bool number = false;
        const int value = token_.toInt(&number);
        if (!number) Fail();
        Next();
        if (bracket) Word(")");
        return value;
    }

    Column ReadColumn() {
        Column column;
        if (Take("*")) return column;
        column.value = ReadValue();
        if (column.value->kind == Kind::Star) {
            column.starOf = column.value->table;
            column.value.reset();
        } else {
            column.name = Take("AS") ? Name() : column.value->text;
        }
        return column;
    }

    Join ReadFrom() {
        Join list = ReadJoins();
        while (Take(","))
            list = Pair(Join::Kind::Comma, std::move(list), ReadJoins());
        return list;
    }

    static Join Pair(Join::Kind kind, Join left, Join right) {
        Join join;
        join.kind = kind;
        join.sides = {std::move(left), std::move(right)};
        return join;
    }

    Join ReadJoins() {
        Join joins = ReadTable();
        while (true) {
            auto kind = Join::Kind::Table;
            if (Take("LEFT"))
                kind = Join::Kind::Left;
            else if (Take("RIGHT"))
                kind = Join::Kind::Right;
            else if (Take("INNER") || Take("CROSS") || Is("JOIN"))
                kind = Join::Kind::Inner;
            if (kind == Join::Kind::Table) return joins;
            Take("OUTER");
            Word("JOIN");
            joins = Pair(kind, std::move(joins), ReadTable());
            if (Take("ON")) joins.on = ReadOr();
        }
    }

    Join ReadTable() {
        Join table;
        if (Take("(")) {
            if (Take("SELECT"))
                table.select = std::make_shared<Select>(ReadSelect());
            else
                table = ReadFrom();
            Word(")");
            if (!table.select) return table;
        } else {
            table.table = table.name = Name();
        }
        const bool clause = Is("LEFT") || Is("RIGHT") || Is("INNER") || Is("CROSS") || Is("JOIN") || Is("ON") ||
                            Is("WHERE") || Is("ORDER") || token_.isEmpty() || (!quoted_ && !token_[0].isLetter());
        if (Take("AS") || !clause) table.name = Name();
        return table;
    }

    static Expression Of(Kind kind, std::vector<Expression> operands) {
        Expression expression;
        expression.kind = kind;
        expression.operands = std::move(operands);
        return expression;
    }

    Expression ReadOr() {
        Expression left = ReadAnd();
        while (Take("OR"))
            left = Of(Kind::Or, {std::move(left), ReadAnd()});
        return left;
    }

    Expression ReadAnd() {
        Expression left = ReadNot();
        while (Take("AND"))
            left = Of(Kind::And, {std::move(left), ReadNot()});
        return left;
    }

    Expression ReadNot() {
        if (Take("NOT")) return Of(Kind::Not, {ReadNot()});
        if (Take("EXISTS")) {
            Expression exists;
            exists.kind = Kind::Exists;
            Word("(");
            Word("SELECT");
            exists.select = std::make_shared<Select>(ReadSelect());
            Word(")");
            return exists;
        }
        return ReadTest();
    }

    Expression ReadTest() {
        Expression left = ReadValue();
        if (Take("IS")) {
            const bool negated = Take("NOT");
            Word("NULL");
            left = Of(Kind::IsNull, {std::move(left)});
            left.negated = negated;
            return left;
        }
        for (const char* sign : {"=", "<>", "<=", ">=", "<", ">"}) {
            if (!Take(sign)) continue;
            left = Of(Kind::Compare, {std::move(left), ReadValue()});
            left.text = sign;
            return left;
        }
        const bool negated = Take("NOT");
        if (Take("LIKE")) {
            left = Of(Kind::Like, {std::move(left), ReadValue()});
            if (Take("ESCAPE")) left.operands.push_back(ReadValue());
        } else if (Take("BETWEEN")) {
            left = Of(Kind::Between, {std::move(left), ReadValue()});
            Word("AND");
            left.operands.push_back(ReadValue());
        } else if (Take("IN")) {
            left = ReadIn(std::move(left));
        } else {
            if (negated) Fail();
            return left;
        }
        left.negated = negated;
        return left;
    }

    Expression ReadIn(Expression value) {
        Expression in = Of(Kind::In, {std::move(value)});
        Word("(");
        if (Take("SELECT")) {
            in.select = std::make_shared<Select>(ReadSelect());
        } else {
            do
                in.operands.push_back(ReadValue());
            while (Take(","));
        }
        Word(")");
        return in;
    }

    Expression ReadValue() {
        Expression left = ReadPiece();
        while (Take("||"))
            left = Of(Kind::Joined, {std::move(left), ReadPiece()});
        return left;
    }

    Expression ReadPiece() {
        Expression value;
        if (Take("(")) {
            value = ReadOr();
            Word(")");
            return value;
        }
        value.text = token_;
        if (literal_) {
            Next();
        } else if (!quoted_ && !token_.isEmpty() && token_[0].isDigit()) {
            value.kind = Kind::Number;
            Next();
        } else if (Take("COUNT")) {
            Word("(");
            value = Of(Kind::Count, {Take("*") ? Of(Kind::Star, {}) : ReadValue()});
            Word(")");
        } else {
            ReadColumnName(value);
        }
        return value;
    }

    void ReadColumnName(Expression& value) {
        value.kind = Kind::Column;
        value.text = Name();
        if (Take(".")) {
            value.table = value.text;
            if (Take("*"))
                value.kind = Kind::Star;
            else
                value.text = Name();
        }
        if (!Take("(")) return;
        Word("+");
        Word(")");
        value.marked = true;
    }

    QString sql_, token_;
    qsizetype at_ = 0;
    bool quoted_ = false, literal_ = false;
};

}  // namespace

Select ReadStatement(const QString& sql) {
    return Reader(sql).ReadAll();
}

}  // namespace plain
