#include "tests/rewriter/random_statement.h"

#include <algorithm>

namespace plain {
namespace {

class Maker {
  public:
    explicit Maker(Dice& dice) : dice_(dice) {}

    QString Statement() {
        const bool marks = dice_.OneIn(3);
        PickTables(1 + dice_.Of(4));
        QString where;
        const QString from = marks ? CommaList(where) : Joins(0, int(tables_.size()));
        if (!marks && dice_.OneIn(2)) where = Condition(2);
        if (dice_.OneIn(12))
            return "SELECT COUNT(*) AS 件数, COUNT(" + Column() + ") AS 値 FROM " + from + Where(where);
        const QString head = Head();
        return head + from + Where(where) + Orders();
    }

  private:
    struct Used {
        QString written, name;  // "M甲 AS x", "x"
    };

    void PickTables(int count) {
        QStringList names;
        for (const TableShape& table : MadeUpTables())
            names << table.name;
        for (int i = 0; i < count; ++i) {
            const QString table = names.takeAt(dice_.Of(int(names.size())));
            if (dice_.OneIn(5))
                tables_.push_back(
                    {table + (dice_.OneIn(2) ? " AS " : " ") + "x" + QString::number(i), "x" + QString::number(i)});
            else if (dice_.OneIn(12))
                tables_.push_back(
                    {"(SELECT * FROM " + table + " WHERE " + table + ".区分 > '1') AS y" + QString::number(i),
                     "y" + QString::number(i)});
            else
                tables_.push_back({dice_.OneIn(6) ? "[" + table + "]" : table, table});
        }
    }

    QString Head() {
        QStringList columns;
        if (dice_.OneIn(6)) {
            columns << "*";
        } else {
            for (int i = 0; i <= dice_.Of(4); ++i) {
                shown_ << Column(dice_.OneIn(6) ? "数" : QString());
                columns << shown_.last() + " AS z" + QString::number(i);
            }
        }
        // What is ordered by stands among the columns of a DISTINCT.
        distinct_ = !shown_.isEmpty() && dice_.OneIn(6);
        const QString top = dice_.OneIn(3) ? "TOP " + QString::number(dice_.Of(5)) + " " : QString();
        return (distinct_ ? "SELECT DISTINCT " : "SELECT ") + top + columns.join(dice_.OneIn(2) ? ", " : ",") +
               " FROM ";
    }

    QString Orders() {
        QStringList orders;
        for (int i = dice_.Of(3); i > 0; --i)
            orders << (distinct_ ? dice_.Pick(shown_) : Column(dice_.OneIn(6) ? "数" : QString())) +
                          (dice_.OneIn(3) ? " DESC" : "");
        return orders.isEmpty() ? QString() : " ORDER BY " + orders.join(",");
    }

    static QString Where(const QString& condition) { return condition.isEmpty() ? QString() : " WHERE " + condition; }

    // Joins of the tables [begin, end).
    QString Joins(int begin, int end) {
        if (end - begin == 1) return tables_[std::size_t(begin)].written;
        const int cut = begin + 1 + dice_.Of(end - begin - 1);
        const QString left = cut - begin > 1 && dice_.OneIn(2) ? "(" + Joins(begin, cut) + ")" : Joins(begin, cut);
        const QString right = end - cut > 1 ? "(" + Joins(cut, end) + ")" : Joins(cut, end);
        if (dice_.OneIn(12))
            return left + (dice_.OneIn(2) && begin == 0 && end == int(tables_.size()) ? ", " : " CROSS JOIN ") + right;
        const QString kind = dice_.Pick(QStringList{"INNER", "LEFT", "RIGHT", "RIGHT", "RIGHT OUTER"});
        return left + " " + kind + " JOIN " + right + " ON " + On({begin, cut}, {cut, end});
    }

    using Span = std::pair<int, int>;

    QString Of(Span span, const QString& column = {}) {
        const Used& table = tables_[std::size_t(span.first + dice_.Of(span.second - span.first))];
        return table.name + "." + (column.isEmpty() ? dice_.Pick(QStringList{"コード", "区分", "Ｍコード"}) : column);
    }

    QString On(Span left, Span right) {
        const QString equal = Of(left) + " = " + Of(right);
        const Span both{left.first, right.second};
        switch (dice_.Of(10)) {
            case 0:
                return "(" + equal + " AND " + Of(both) + " < '3')";
            case 1:
                return equal + " AND " + Of(both) + " IS NULL";
            case 2:
                return equal + " OR " + Of(both) + " = '1'";
            case 3:
                return equal + " AND " + Of(both, "名称A") + " LIKE '%" + Piece() + "%'";
            case 4:
                return equal + " OR " + Of(right) + (dice_.OneIn(2) ? " IS NULL" : " <> '1'");
            case 5:
                return Of(both) + " <> '" + ValueFor("コード", dice_) + "'";
            case 6:
                return "(" + equal + ") AND " + Of(left) + " >= " + Of(right);
            default:
                return equal;
        }
    }

    // A comma list whose tables hang on others by (+), with further conditions.
    QString CommaList(QString& where) {
        QStringList written, conditions;
        for (const Used& table : tables_)
            written << table.written;
        for (std::size_t i = 1; i < tables_.size(); ++i) {
            const Span before{0, int(i)}, here{int(i), int(i) + 1};
            const bool optional = !dice_.OneIn(4);
            for (int more = dice_.OneIn(4) ? 2 : 1; more > 0; --more)
                conditions << Marked(Of(dice_.OneIn(10) ? Span{0, int(tables_.size())} : before), Of(here), optional);
            if (optional && dice_.OneIn(5)) conditions << Of(here, "名称A") + "(+) LIKE '%" + Piece() + "%'";
            if (optional && dice_.OneIn(8)) conditions << Of(here) + " (+) <> '" + ValueFor("コード", dice_) + "'";
        }
        for (int i = dice_.Of(3); i > 0; --i)
            conditions << (dice_.OneIn(3) ? "(" + Condition(2) + ")" : Test(2));
        for (auto i = conditions.size() - 1; i > 0; --i)
            conditions.swapItemsAt(i, dice_.Of(int(i) + 1));
        for (auto i = written.size() - 1; i > 0; --i)
            written.swapItemsAt(i, dice_.Of(int(i) + 1));
        where = conditions.join(" AND ");
        if (!conditions.isEmpty() && dice_.OneIn(15)) where += " OR " + Test(1);
        return written.join(dice_.OneIn(2) ? "," : ", ");
    }

    QString Marked(const QString& kept, const QString& added, bool optional) {
        const QString mark = !optional ? QString() : dice_.OneIn(6) ? " ( + )" : "(+)";
        const QString sign = dice_.OneIn(6) ? dice_.Pick(QStringList{"<", ">=", "<>"}) : "=";
        return dice_.OneIn(2) ? added + mark + " " + sign + " " + kept : kept + sign + added + mark;
    }

    // A column of any table in sight; a subquery's own come first.
    QString Column(const QString& column = {}) {
        if (column.isEmpty() && dice_.OneIn(4))
            return Of({0, int(tables_.size())}, dice_.Pick(QStringList{"名称A", "電話番号"}));
        return Of({0, int(tables_.size())}, column);
    }

    QString Condition(int depth) {
        switch (dice_.Of(6)) {
            case 0:
                return Test(depth) + " AND " + Test(depth);
            case 1:
                return Test(depth) + " OR " + Test(depth) + " AND " + Test(depth);
            case 2:
                return depth > 0 ? "NOT (" + Condition(depth - 1) + ")" : "NOT " + Test(depth);
            case 3:
                return depth > 0 ? "(" + Condition(depth - 1) + ") AND " + Test(depth) : Test(depth);
            default:
                return Test(depth);
        }
    }

    QString Literal(const QString& column) { return "'" + ValueFor(column, dice_) + "'"; }

    // A part of a text that is looked for, in any width.
    QString Piece() {
        return dice_.Pick(QStringList{"カブ", "ｶ", "ぶ", "株", "株式", "会社", "A", "ａ", "1", "_", "-1", "カ_", ""});
    }

    QString Pattern() {
        switch (dice_.Of(6)) {
            case 0:
                return "'" + Piece() + "%'";
            case 1:
                return "'%" + Piece() + "%" + Piece() + "%'";
            case 2:
                return "'%" + Piece() + "'";
            default:
                return "'%" + Piece() + "%'";
        }
    }

    QString Like() {
        const QString column = Column(dice_.OneIn(3) ? "電話番号" : "名称A");
        if (dice_.OneIn(10)) return column + " LIKE '%\\" + dice_.Pick(QStringList{"%", "_"}) + "%' ESCAPE '\\'";
        if (dice_.OneIn(10)) return column + " LIKE '%' || " + Column() + " || '%'";
        return column + (dice_.OneIn(3) ? " NOT LIKE " : " LIKE ") + Pattern();
    }

    QString Number() {
        const QString number = QString::number(dice_.Of(12));
        const QString sign = dice_.Pick(QStringList{"=", "<>", "<", ">="});
        return dice_.OneIn(2) ? Column("数") + " " + sign + " " + number : number + sign + Column("数");
    }

    QString Test(int depth) {
        const QString sign = dice_.Pick(QStringList{"=", "<>", "<", "<=", ">", ">="});
        switch (dice_.Of(depth > 0 ? 12 : 9)) {
            case 0:
                return Column() + " " + sign + " " + Column();
            case 1:
                return Column() + (dice_.OneIn(2) ? " IS NULL" : " IS NOT NULL");
            case 2:
                return Column() + (dice_.OneIn(3) ? " NOT IN (" : " IN (") + Literal("コード") + ", " +
                       Literal("コード") + ")";
            case 3:
                return Column() + " BETWEEN " + Literal("コード") + " AND " + Literal("コード");
            case 4:
                return Number();
            case 5:
            case 6:
                return Like();
            case 9:
                return Column() + (dice_.OneIn(3) ? " NOT IN (" : " IN (") + Subquery(true, depth - 1) + ")";
            case 10:
            case 11:
                return (dice_.OneIn(3) ? "NOT EXISTS (" : "EXISTS (") + Subquery(false, depth - 1) + ")";
            default:
                return Column() + " " + sign + " " + Literal("コード");
        }
    }

    // On another table, under a name of its own or beside a table of the same name outside.
    QString Subquery(bool values, int depth) {
        const QString table = dice_.Pick(MadeUpTables()).name;
        const QString key = dice_.Pick(QStringList{"コード", "Ｍコード"});
        const bool named =
            std::any_of(tables_.begin(), tables_.end(), [&](const Used& used) { return used.name == table; });
        const QString name = named || dice_.OneIn(4) ? "s" + QString::number(depth) : table;
        const QString from = " FROM " + table + (name == table ? QString() : " " + name) + " WHERE ";
        const QString tie = (dice_.OneIn(2) && name == table ? key : name + "." + key) + " = " + Column();
        tables_.push_back({table, name});
        QString further = dice_.OneIn(2) ? Test(depth) : Like();
        if (dice_.OneIn(4)) further = "(" + further + " OR " + Like() + ")";
        tables_.pop_back();
        const QString head = values ? "SELECT " + name + "." + key : dice_.OneIn(4) ? "SELECT TOP 1 *" : "SELECT *";
        return head + from + (values && dice_.OneIn(2) ? further : tie + " AND " + further);
    }

    Dice& dice_;
    std::vector<Used> tables_;
    QStringList shown_;
    bool distinct_ = false;
};

}  // namespace

QString RandomStatement(Dice& dice) {
    return Maker(dice).Statement();
}

}  // namespace plain
