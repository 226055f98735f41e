#include "store/join_chain.h"

#include <QStringList>
#include <algorithm>

#include "store/sql_condition.h"

namespace store {
namespace {

struct Step {
    bool left = false;  // LEFT JOIN; otherwise INNER JOIN (or the head of the chain)
    const JoinNode* table = nullptr;
    std::vector<TokenRange> on;
};

using Chain = std::vector<Step>;

bool Names(const Chain& chain, const QString& name) {
    return std::any_of(chain.begin(), chain.end(), [&](const Step& step) { return step.table->name == name; });
}

// The first place in the chain where the condition can stand as a filter: an inner step (or the head) with all its
// tables at or before it.
std::optional<std::size_t> PlaceOf(const ConditionScope& scope, const Chain& chain) {
    std::size_t place = 0;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (scope.unclear || scope.tables.contains(chain[i].table->name)) {
            place = i;
        }
    }
    while (place < chain.size() && place > 0 && chain[place].left) {
        ++place;
    }
    return place < chain.size() ? std::optional(place) : std::nullopt;
}

class Flattener {
  public:
    Flattener(const TokenizedSql& sql, Refusal& refusal) : sql_(sql), refusal_(refusal) {}

    // An empty chain is a refusal.
    Chain Flatten(const JoinNode& node) {
        if (node.kind == JoinNode::Kind::Table) {
            return {Step{false, &node, {}}};
        }
        Chain left = Flatten(*node.left);
        Chain right = Flatten(*node.right);
        if (left.empty() || right.empty()) {
            return {};
        }
        if (node.kind == JoinNode::Kind::Left) {
            return Optional(std::move(left), std::move(right), node.on);
        }
        if (node.kind == JoinNode::Kind::Right) {
            return Optional(std::move(right), std::move(left), node.on);
        }
        return Inner(std::move(left), std::move(right), node.on);
    }

  private:
    // kept LEFT JOIN (added) ON on
    Chain Optional(Chain kept, Chain added, TokenRange on) {
        added.front().left = true;
        added.front().on = {on};
        if (!IsPlainTail(added, on)) {
            return {};
        }
        kept.insert(kept.end(), added.begin(), added.end());
        return kept;
    }

    bool IsPlainTail(const Chain& added, TokenRange on) {
        const ConditionScope scope = ScopeOf(sql_, on);
        Chain before;
        for (const Step& step : added) {
            const bool head = before.empty();
            if (!head && (!step.left || scope.unclear || scope.tables.contains(step.table->name))) {
                return Refuse(QStringLiteral("外部結合の任意側の括弧の中の結合を展開できません"), on);
            }
            if (!head && !VanishesWithout(before, step)) {
                return Refuse(QStringLiteral("結合条件が NULL の行でも成り立つおそれがあります"), step.on.front());
            }
            before.push_back(step);
        }
        return true;
    }

    // True when the step matches nothing as soon as all tables of its own bracket before it are Null.
    bool VanishesWithout(const Chain& before, const Step& step) {
        return std::any_of(step.on.begin(), step.on.end(), [&](TokenRange on) {
            const auto nonNull = ScopeOf(sql_, on).nonNull;
            return std::any_of(nonNull.begin(), nonNull.end(),
                               [&](const QString& name) { return Names(before, name); });
        });
    }

    Chain Inner(Chain left, Chain right, TokenRange on) {
        const ConditionScope scope = on.Empty() ? ConditionScope() : ScopeOf(sql_, on);
        auto place = PlaceOf(scope, right);
        if (!place) {
            // The two sides of an inner join may change places.
            std::swap(left, right);
            place = PlaceOf(scope, right);
        }
        if (!place) {
            Refuse(QStringLiteral("内部結合の条件を置ける位置がありません"), on);
            return {};
        }
        if (!on.Empty()) {
            right[*place].on.push_back(on);
        }
        left.insert(left.end(), right.begin(), right.end());
        return left;
    }

    bool Refuse(const QString& what, TokenRange where) {
        refusal_ = QStringLiteral("%1: %2").arg(what, sql_.Slice(where));
        return false;
    }

    const TokenizedSql& sql_;
    Refusal& refusal_;
};

QString WriteOn(const TokenizedSql& sql, const std::vector<TokenRange>& on) {
    if (on.size() == 1) {
        return QStringLiteral(" ON ") + sql.Slice(on.front());
    }
    QStringList parts;
    for (const TokenRange& part : on) {
        parts.append(u'(' + sql.Slice(part) + u')');
    }
    return parts.isEmpty() ? QString() : QStringLiteral(" ON ") + parts.join(QStringLiteral(" AND "));
}

}  // namespace

std::optional<QString> FlattenJoins(const TokenizedSql& sql, const JoinNode& tree, Refusal& refusal) {
    const Chain chain = Flattener(sql, refusal).Flatten(tree);
    if (chain.empty()) {
        return std::nullopt;
    }
    QString from = sql.Slice(chain.front().table->text);
    for (auto step = chain.begin() + 1; step != chain.end(); ++step) {
        from += step->left         ? QStringLiteral(" LEFT JOIN ")
                : step->on.empty() ? QStringLiteral(" CROSS JOIN ")
                                   : QStringLiteral(" INNER JOIN ");
        from += sql.Slice(step->table->text) + WriteOn(sql, step->on);
    }
    return from;
}

std::vector<const JoinNode*> TablesOf(const JoinNode& tree) {
    if (tree.kind == JoinNode::Kind::Table) {
        return {&tree};
    }
    auto tables = TablesOf(*tree.left);
    const auto right = TablesOf(*tree.right);
    tables.insert(tables.end(), right.begin(), right.end());
    return tables;
}

}  // namespace store
