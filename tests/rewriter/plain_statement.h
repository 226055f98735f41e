#pragma once

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

// A second reading of the program's SQL, for tests of the rewriter: it shares no code with store/ and does everything
// the plain way.
namespace plain {

struct Select;

/// A condition or a value.
struct Expression {
    enum class Kind {
        Text,     ///< `text` is the literal's content
        Number,   ///< `text` is its digits
        Column,   ///< `text` of the table `table`; an empty table for a bare name
        Star,     ///< behind COUNT
        Compare,  ///< two operands; `text` is = <> < > <= >=
        Like,     ///< text, pattern, perhaps the escape character
        IsNull,
        In,       ///< a value and its list; with `select`, the value alone
        Exists,   ///< `select`
        Between,  ///< value, low, high
        And,
        Or,
        Not,
        Joined,  ///< texts put together by ||
        Count,   ///< of a Star or a column
    };
    Kind kind = Kind::Text;
    QString text;
    QString table;
    bool negated = false;  ///< NOT LIKE, NOT IN, NOT BETWEEN, IS NOT NULL
    bool marked = false;   ///< a column with (+)
    std::vector<Expression> operands;
    std::shared_ptr<Select> select;
};

/// A table, or a join of two.
struct Join {
    enum class Kind { Table, Comma, Inner, Left, Right };
    Kind kind = Kind::Table;
    QString table, name;             ///< of a table, with the name that columns know it by
    std::shared_ptr<Select> select;  ///< in place of a table
    std::vector<Join> sides;         ///< two of a join
    std::optional<Expression> on;
};

struct Column {
    std::optional<Expression> value;  ///< none for a star
    QString starOf;                   ///< "t.*"; empty for "*"
    QString name;
};

struct Order {
    Expression value;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    std::optional<int> top;
    std::vector<Column> columns;
    Join from;
    std::optional<Expression> where;
    std::vector<Order> orders;
};

/// Reads one SELECT. Throws std::runtime_error for whatever it doesn't know.
Select ReadStatement(const QString& sql);

}  // namespace plain
