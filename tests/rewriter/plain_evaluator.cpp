#include "tests/rewriter/plain_evaluator.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

#include "tests/rewriter/plain_values.h"

namespace plain {
namespace {

using Kind = Expression::Kind;
// The tables that stand side by side, and one row of each; a null row has Null everywhere.
struct Binding {
    QString name;
    const Table* table;
};
using Bindings = std::vector<Binding>;
using Rows = std::vector<const Row*>;

struct Relation {
    Bindings bindings;
    std::vector<Rows> rows;
};

struct Scope {
    const Scope* outer;
    const Bindings& bindings;
    const Rows& rows;
};

struct Meaningless {};

template <typename Visit>
void ForEach(const Expression& expression, const Visit& visit) {
    visit(expression);
    for (const Expression& operand : expression.operands)
        ForEach(operand, visit);
}

bool HasMark(const Expression& expression) {
    bool mark = false;
    ForEach(expression, [&](const Expression& e) { mark = mark || e.marked; });
    return mark;
}

void Split(const Expression& condition, std::vector<const Expression*>& conjuncts) {
    if (condition.kind != Kind::And) return conjuncts.push_back(&condition);
    for (const Expression& operand : condition.operands)
        Split(operand, conjuncts);
}

class Evaluator {
  public:
    explicit Evaluator(const Data& data) : data_(data) {}

    Result Run(const Select& select, const Scope* outer) {
        Relation relation;
        std::vector<const Expression*> conditions;
        if (select.where) Split(*select.where, conditions);
        const auto marked = std::stable_partition(conditions.begin(), conditions.end(),
                                                  [](const Expression* e) { return !HasMark(*e); });
        if (marked != conditions.end())
            relation = JoinByMarks(select.from, {marked, conditions.end()}, outer);
        else
            relation = Evaluate(select.from, outer);
        conditions.erase(marked, conditions.end());
        std::erase_if(relation.rows, [&](const Rows& rows) {
            const Scope scope{outer, relation.bindings, rows};
            return !std::all_of(conditions.begin(), conditions.end(),
                                [&](const Expression* e) { return Test(*e, scope) == true; });
        });
        return Shape(select, relation, outer);
    }

  private:
    const Table& Find(const QString& name) const {
        const auto table = data_.find(name);
        if (table == data_.end()) throw std::runtime_error("no table " + name.toStdString());
        return table->second;
    }

    Relation Evaluate(const Join& join, const Scope* outer) {
        if (join.kind == Join::Kind::Table) return TableOf(join, outer);
        const Relation left = Evaluate(join.sides[0], outer), right = Evaluate(join.sides[1], outer);
        Relation joined{left.bindings, {}};
        joined.bindings.insert(joined.bindings.end(), right.bindings.begin(), right.bindings.end());
        std::vector<bool> met(right.rows.size());
        for (const Rows& l : left.rows) {
            bool found = false;
            for (std::size_t r = 0; r < right.rows.size(); ++r) {
                Rows both = l;
                both.insert(both.end(), right.rows[r].begin(), right.rows[r].end());
                if (join.on && Test(*join.on, {outer, joined.bindings, both}) != true) continue;
                joined.rows.push_back(std::move(both));
                found = met[r] = true;
            }
            if (!found && join.kind == Join::Kind::Left) {
                joined.rows.push_back(l);
                joined.rows.back().resize(joined.bindings.size());
            }
        }
        for (std::size_t r = 0; join.kind == Join::Kind::Right && r < right.rows.size(); ++r) {
            if (met[r]) continue;
            joined.rows.emplace_back(left.bindings.size());
            joined.rows.back().insert(joined.rows.back().end(), right.rows[r].begin(), right.rows[r].end());
        }
        return joined;
    }

    Relation TableOf(const Join& join, const Scope* outer) {
        const Table* table = join.select ? nullptr : &Find(join.table);
        if (!table) {
            const Result result = Run(*join.select, outer);
            auto made = std::make_shared<Table>();
            made->columns = result.columns;
            made->integers = result.integers;
            for (const auto& group : result.groups)
                made->rows.insert(made->rows.end(), group.begin(), group.end());
            derived_.push_back(made);
            table = made.get();
        }
        Relation relation{{{join.name, table}}, {}};
        for (const Row& row : table->rows)
            relation.rows.push_back({&row});
        return relation;
    }

    static void Tables(const Join& join, std::vector<const Join*>& tables) {
        if (join.kind == Join::Kind::Table) return tables.push_back(&join);
        if (join.kind != Join::Kind::Comma) throw Meaningless();
        for (const Join& side : join.sides)
            Tables(side, tables);
    }

    // Each optional table, once what it hangs on is there, gives the rows that meet all its marked conditions, or one
    // of Nulls.
    Relation JoinByMarks(const Join& from, const std::vector<const Expression*>& marked, const Scope* outer) {
        std::vector<const Join*> tables;
        Tables(from, tables);
        std::map<QString, std::vector<const Expression*>> conditions;
        std::map<QString, std::set<QString>> needs;
        for (const Expression* condition : marked) {
            const QString name = OptionalOf(*condition);
            conditions[name].push_back(condition);
            for (const Expression& side : condition->operands)
                if (side.kind == Kind::Column && side.table != name) needs[name].insert(side.table);
        }
        Relation relation{{}, {{}}};
        std::set<QString> placed;
        while (placed.size() < tables.size()) {
            const auto next = std::find_if(tables.begin(), tables.end(), [&](const Join* table) {
                return !placed.contains(table->name) &&
                       (!conditions.contains(table->name) || IsReady(needs[table->name], placed));
            });
            if (next == tables.end()) throw Meaningless();
            placed.insert((*next)->name);
            relation = Add(std::move(relation), TableOf(**next, outer), conditions[(*next)->name],
                           !conditions[(*next)->name].empty(), outer);
        }
        return InOrder(std::move(relation), tables);
    }

    static bool IsReady(const std::set<QString>& needs, const std::set<QString>& placed) {
        return !needs.empty() && std::includes(placed.begin(), placed.end(), needs.begin(), needs.end());
    }

    static QString OptionalOf(const Expression& condition) {
        if (condition.kind != Kind::Compare && condition.kind != Kind::Like) throw Meaningless();
        QString name;
        for (const Expression& side : condition.operands) {
            const bool plain = side.kind == Kind::Text || (side.kind == Kind::Column && !side.table.isEmpty());
            if (!plain || (side.marked && !name.isEmpty() && name != side.table)) throw Meaningless();
            if (side.marked) name = side.table;
        }
        if (condition.negated) throw Meaningless();
        return name;
    }

    Relation Add(Relation relation, const Relation& table, const std::vector<const Expression*>& conditions,
                 bool optional, const Scope* outer) {
        Relation joined{relation.bindings, {}};
        joined.bindings.push_back(table.bindings.front());
        for (const Rows& before : relation.rows) {
            bool found = false;
            for (const Rows& added : table.rows) {
                Rows both = before;
                both.push_back(added.front());
                const Scope scope{outer, joined.bindings, both};
                if (!std::all_of(conditions.begin(), conditions.end(),
                                 [&](const Expression* e) { return Test(*e, scope) == true; }))
                    continue;
                joined.rows.push_back(both);
                found = true;
            }
            if (found || !optional) continue;
            joined.rows.push_back(before);
            joined.rows.back().push_back(nullptr);
        }
        return joined;
    }

    // As the statement lists its tables, for "*".
    static Relation InOrder(Relation relation, const std::vector<const Join*>& tables) {
        Relation ordered;
        ordered.rows.resize(relation.rows.size());
        for (const Join* table : tables)
            for (std::size_t i = 0; i < relation.bindings.size(); ++i) {
                if (relation.bindings[i].name != table->name) continue;
                ordered.bindings.push_back(relation.bindings[i]);
                for (std::size_t r = 0; r < relation.rows.size(); ++r)
                    ordered.rows[r].push_back(relation.rows[r][i]);
            }
        return ordered;
    }

    Result Shape(const Select& select, const Relation& relation, const Scope* outer) {
        Result result;
        result.limit = select.top;
        struct Line {
            Row row;
            std::vector<Value> keys;
        };
        std::vector<Line> lines;
        for (const Rows& rows : relation.rows) {
            const Scope scope{outer, relation.bindings, rows};
            Line line{Output(select, scope), {}};
            for (const Order& order : select.orders)
                line.keys.push_back(Evaluate(order.value, scope));
            lines.push_back(std::move(line));
        }
        result.columns = Names(select, relation.bindings);
        for (const Binding& binding : relation.bindings)
            if (select.columns.size() == 1 && IsStarOf(select.columns.front(), binding))
                result.integers.merge(std::set(binding.table->integers));
        const bool counts = std::any_of(select.columns.begin(), select.columns.end(),
                                        [](const plain::Column& c) { return c.value && c.value->kind == Kind::Count; });
        if (counts) lines = {{Counts(select, relation, outer), {}}};
        if (select.distinct) {
            std::set<Row> seen;
            std::erase_if(lines, [&](const Line& line) { return !seen.insert(line.row).second; });
        }
        const auto before = [&](const Line& a, const Line& b) { return IsBefore(select, a.keys, b.keys); };
        std::stable_sort(lines.begin(), lines.end(), before);
        const Line* last = nullptr;
        for (const Line& line : lines) {
            if (!last || before(*last, line)) result.groups.emplace_back();
            result.groups.back().push_back(line.row);
            last = &line;
        }
        return result;
    }

    static bool IsBefore(const Select& select, const std::vector<Value>& a, const std::vector<Value>& b) {
        for (std::size_t i = 0; i < a.size(); ++i) {
            int order = int(a[i].cell.has_value()) - int(b[i].cell.has_value());
            if (a[i].cell && b[i].cell) order = Ranked(a[i], b[i]);
            if (order != 0) return select.orders[i].descending ? order > 0 : order < 0;
        }
        return false;
    }

    static bool IsStarOf(const plain::Column& column, const Binding& binding) {
        return !column.value && (column.starOf.isEmpty() || column.starOf == binding.name);
    }

    static QStringList Names(const Select& select, const Bindings& bindings) {
        QStringList names;
        for (const plain::Column& column : select.columns) {
            if (column.value) names << column.name;
            for (const Binding& binding : bindings)
                if (IsStarOf(column, binding)) names << binding.table->columns;
        }
        return names;
    }

    Row Output(const Select& select, const Scope& scope) {
        Row row;
        for (const plain::Column& column : select.columns) {
            if (column.value)
                row.push_back(column.value->kind == Kind::Count ? Cell() : Evaluate(*column.value, scope).cell);
            for (std::size_t i = 0; i < scope.bindings.size(); ++i) {
                if (!IsStarOf(column, scope.bindings[i])) continue;
                const Row nulls(std::size_t(scope.bindings[i].table->columns.size()));
                const Row& values = scope.rows[i] ? *scope.rows[i] : nulls;
                row.insert(row.end(), values.begin(), values.end());
            }
        }
        return row;
    }

    Row Counts(const Select& select, const Relation& relation, const Scope* outer) {
        Row row;
        for (const plain::Column& column : select.columns) {
            const Expression& counted = column.value->operands.front();
            const auto count = std::count_if(relation.rows.begin(), relation.rows.end(), [&](const Rows& rows) {
                return counted.kind == Kind::Star || Evaluate(counted, {outer, relation.bindings, rows}).cell;
            });
            row.push_back(QString::number(count));
        }
        return row;
    }

    Value Evaluate(const Expression& expression, const Scope& scope) {
        switch (expression.kind) {
            case Kind::Text:
            case Kind::Number:
                return {expression.text, false};
            case Kind::Column:
                return Look(expression, scope);
            case Kind::Joined: {
                const Value left = Evaluate(expression.operands[0], scope),
                            right = Evaluate(expression.operands[1], scope);
                return {left.cell && right.cell ? Cell(*left.cell + *right.cell) : Cell(), false};
            }
            default:
                throw std::runtime_error("no value");
        }
    }

    // Where a column was found the first time: how many scopes further out, which table, which column.
    struct Place {
        int scopes;
        std::size_t table;
        qsizetype column;
    };

    Value Look(const Expression& column, const Scope& scope) {
        auto found = places_.find(&column);
        if (found == places_.end()) found = places_.emplace(&column, PlaceOf(column, scope)).first;
        const Scope* at = &scope;
        for (int i = 0; i < found->second.scopes; ++i)
            at = at->outer;
        const auto& [scopes, table, index] = found->second;
        const bool integer = at->bindings[table].table->integers.contains(column.text);
        return {at->rows[table] ? (*at->rows[table])[std::size_t(index)] : Cell(), integer};
    }

    static Place PlaceOf(const Expression& column, const Scope& scope) {
        int scopes = 0;
        for (const Scope* at = &scope; at; at = at->outer, ++scopes)
            for (std::size_t i = 0; i < at->bindings.size(); ++i) {
                const auto index = at->bindings[i].table->columns.indexOf(column.text);
                if (index >= 0 && (column.table.isEmpty() || column.table == at->bindings[i].name))
                    return {scopes, i, index};
            }
        throw std::runtime_error(("no column " + column.table + "." + column.text).toStdString());
    }

    Truth Test(const Expression& e, const Scope& scope) {
        const Truth truth = Plain(e, scope);
        return e.negated ? Not(truth) : truth;
    }

    Truth Plain(const Expression& e, const Scope& scope) {
        const auto value = [&](std::size_t i) { return Evaluate(e.operands[i], scope); };
        switch (e.kind) {
            case Kind::And:
                return And(Test(e.operands[0], scope), Test(e.operands[1], scope));
            case Kind::Or:
                return Or(Test(e.operands[0], scope), Test(e.operands[1], scope));
            case Kind::Not:
                return Not(Test(e.operands[0], scope));
            case Kind::Compare:
                return Compare(e.text, value(0), value(1));
            case Kind::Between:
                return And(Compare(">=", value(0), value(1)), Compare("<=", value(0), value(2)));
            case Kind::IsNull:
                return !value(0).cell;
            case Kind::Exists:
                return Run(*e.select, &scope).RowCount() > 0;
            case Kind::Like:
                return Like(e, scope);
            case Kind::In:
                return IsIn(e, scope);
            default:
                throw std::runtime_error("no condition");
        }
    }

    Truth Like(const Expression& e, const Scope& scope) {
        const Value text = Evaluate(e.operands[0], scope), pattern = Evaluate(e.operands[1], scope);
        const QChar escape = e.operands.size() > 2 ? e.operands[2].text[0] : QChar();
        if (!text.cell || !pattern.cell) return {};
        return IsLike(*text.cell, *pattern.cell, escape);
    }

    Truth IsIn(const Expression& e, const Scope& scope) {
        const Value left = Evaluate(e.operands[0], scope);
        Truth in = false;
        for (std::size_t i = 1; i < e.operands.size(); ++i)
            in = Or(in, Compare("=", left, Evaluate(e.operands[i], scope)));
        if (!e.select) return in;
        for (const auto& group : Run(*e.select, &scope).groups)
            for (const Row& row : group)
                in = Or(in, Compare("=", left, {row.front(), false}));
        return in;
    }

    const Data& data_;
    std::vector<std::shared_ptr<Table>> derived_;
    std::unordered_map<const Expression*, Place> places_;
};

}  // namespace

std::size_t Result::RowCount() const {
    std::size_t count = 0;
    for (const auto& group : groups)
        count += group.size();
    return limit ? std::min(count, std::size_t(*limit)) : count;
}

std::optional<Result> Evaluate(const Select& select, const Data& data) {
    try {
        return Evaluator(data).Run(select, nullptr);
    } catch (const Meaningless&) {
        return std::nullopt;
    }
}

}  // namespace plain
