#include "store/outer_marks.h"

#include <QStringList>

#include <algorithm>
#include <map>

#include "store/sql_condition.h"

namespace store {
namespace {

// A table that is optional, with what joins it.
struct OptionalTable {
    QStringList on;
    std::set<QString> needs;  // the tables that must stand before it
};

bool IsCommaList(const JoinNode& node) {
    return node.kind == JoinNode::Kind::Table ||
           (node.kind == JoinNode::Kind::Comma && IsCommaList(*node.left) && IsCommaList(*node.right));
}

class MarkReader {
  public:
    MarkReader(const TokenizedSql& sql, std::vector<const JoinNode*> tables, Refusal& refusal)
        : sql_(sql), tables_(std::move(tables)), refusal_(refusal) {}

    std::optional<RewrittenJoins> Read(TokenRange where) {
        const auto conjuncts = SplitConjuncts(sql_, where);
        if (!conjuncts) {
            Refuse(QStringLiteral("(+) と OR は同時に使えません"), where);
            return std::nullopt;
        }
        RewrittenJoins joins;
        QStringList rest;
        for (const TokenRange& conjunct : *conjuncts) {
            if (!HasOuterMark(sql_, conjunct)) {
                rest.append(sql_.Slice(conjunct));
            } else if (!ReadMarked(conjunct)) {
                return std::nullopt;
            }
        }
        joins.where = rest.join(QStringLiteral(" AND "));
        return WriteFrom(joins.from, where) ? std::optional(joins) : std::nullopt;
    }

  private:
    bool ReadMarked(TokenRange conjunct) {
        const auto comparison = ReadComparison(sql_, StripBrackets(sql_, conjunct));
        if (!comparison || !Known(comparison->left) || !Known(comparison->right)) {
            return Refuse(QStringLiteral("(+) は「表.列(+) = 表.列」の形だけで使えます"), conjunct);
        }
        const auto& left = comparison->left;
        const auto& right = comparison->right;
        if (left.marked && right.marked && left.table != right.table) {
            return Refuse(QStringLiteral("(+) を条件の両側に付けられません"), conjunct);
        }
        const QString table = left.marked ? left.table : right.table;
        OptionalTable& optional = optional_[table];
        optional.on.append(sql_.Slice(left.text) + u' ' + sql_.Slice(comparison->between) + u' ' +
                           sql_.Slice(right.text));
        for (const auto& side : {left, right}) {
            if (!side.table.isEmpty() && side.table != table) {
                optional.needs.insert(side.table);
            }
        }
        return true;
    }

    // A literal, or a column of a table of the list.
    bool Known(const ComparisonSide& side) const {
        return side.table.isEmpty() || std::any_of(tables_.begin(), tables_.end(),
                                                   [&](const JoinNode* table) { return table->name == side.table; });
    }

    bool WriteFrom(QString& from, TokenRange where) {
        std::set<QString> placed;
        for (const JoinNode* table : tables_) {
            if (!optional_.contains(table->name)) {
                from += (from.isEmpty() ? QString() : QStringLiteral(", ")) + sql_.Slice(table->text);
                placed.insert(table->name);
            }
        }
        // A joined table may itself be what another one hangs on: take those whose needs are met until none is left.
        while (placed.size() < tables_.size()) {
            const auto next = std::find_if(tables_.begin(), tables_.end(), [&](const JoinNode* table) {
                return !placed.contains(table->name) && IsReady(table->name, placed);
            });
            if (next == tables_.end()) {
                return Refuse(QStringLiteral("(+) の付いた表をつなぐ元の表がありません"), where);
            }
            from += QStringLiteral(" LEFT JOIN ") + sql_.Slice((*next)->text) + QStringLiteral(" ON ") +
                    optional_[(*next)->name].on.join(QStringLiteral(" AND "));
            placed.insert((*next)->name);
        }
        return true;
    }

    bool IsReady(const QString& name, const std::set<QString>& placed) {
        const auto& needs = optional_[name].needs;
        return !needs.empty() && std::includes(placed.begin(), placed.end(), needs.begin(), needs.end());
    }

    bool Refuse(const QString& what, TokenRange where) {
        refusal_ = QStringLiteral("%1: %2").arg(what, sql_.Slice(where));
        return false;
    }

    const TokenizedSql& sql_;
    std::vector<const JoinNode*> tables_;
    Refusal& refusal_;
    std::map<QString, OptionalTable> optional_;
};

}  // namespace

bool HasOuterMark(const TokenizedSql& sql, TokenRange range) {
    for (std::size_t i = range.begin; i + 2 < range.end; ++i) {
        if (sql.IsOuterMark(i)) {
            return true;
        }
    }
    return false;
}

std::optional<RewrittenJoins> JoinByMarks(const TokenizedSql& sql, const JoinNode& tree, TokenRange where,
                                          Refusal& refusal) {
    if (!IsCommaList(tree)) {
        refusal = QStringLiteral("(+) と JOIN は同時に使えません。");
        return std::nullopt;
    }
    return MarkReader(sql, TablesOf(tree), refusal).Read(where);
}

}  // namespace store
