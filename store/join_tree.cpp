#include "store/join_tree.h"

namespace store {
namespace {

using Node = std::unique_ptr<JoinNode>;

constexpr int kDeepest = 100;
constexpr int kMostPrimaries = 200;  // tables and brackets; the engine joins 64 tables at most

bool IsJoinWord(const TokenizedSql& sql, std::size_t index) {
    // LEFT(…) and RIGHT(…) are functions.
    return sql.IsAnyWord(index, {"JOIN", "ON", "USING"}) ||
           (sql.IsAnyWord(index, {"INNER", "LEFT", "RIGHT", "FULL", "CROSS", "NATURAL"}) &&
            !sql.IsSymbol(index + 1, QLatin1String("(")));
}

// A recursive descent over the clause; any member returns null for a clause it can't read.
class Parser {
  public:
    Parser(const TokenizedSql& sql, TokenRange from) : sql_(sql), at_(from.begin), end_(from.end) {}

    Node ReadAll() {
        Node list = ReadList(end_, 0);
        return list && at_ == end_ ? std::move(list) : nullptr;
    }

  private:
    bool Symbol(const char* symbol, std::size_t end) const {
        return at_ < end && sql_.IsSymbol(at_, QLatin1String(symbol));
    }

    bool TakeWord(const char* word, std::size_t end) {
        const bool here = at_ < end && sql_.IsWord(at_, QLatin1String(word));
        at_ += here ? 1 : 0;
        return here;
    }

    static Node Join(JoinNode::Kind kind, Node left, Node right, TokenRange on) {
        auto node = std::make_unique<JoinNode>();
        node->kind = kind;
        node->left = std::move(left);
        node->right = std::move(right);
        node->on = on;
        return node;
    }

    Node ReadList(std::size_t end, int depth) {
        Node list = ReadJoins(end, depth);
        while (list && Symbol(",", end)) {
            ++at_;
            Node next = ReadJoins(end, depth);
            if (!next) {
                return nullptr;
            }
            list = Join(JoinNode::Kind::Comma, std::move(list), std::move(next), {});
        }
        return list;
    }

    Node ReadJoins(std::size_t end, int depth) {
        Node joins = ReadPrimary(end, depth);
        while (joins && at_ < end && IsJoinWord(sql_, at_)) {
            const auto kind = ReadJoinKind(end);
            Node right = kind ? ReadPrimary(end, depth) : nullptr;
            if (!right) {
                return nullptr;
            }
            const TokenRange on = ReadOn(end);
            if (on.Empty() && *kind != JoinNode::Kind::Inner) {
                return nullptr;
            }
            joins = Join(*kind, std::move(joins), std::move(right), on);
        }
        return joins;
    }

    std::optional<JoinNode::Kind> ReadJoinKind(std::size_t end) {
        auto kind = JoinNode::Kind::Inner;
        if (TakeWord("LEFT", end)) {
            kind = JoinNode::Kind::Left;
        } else if (TakeWord("RIGHT", end)) {
            kind = JoinNode::Kind::Right;
        } else if (!TakeWord("INNER", end)) {
            TakeWord("CROSS", end);
        }
        if (kind != JoinNode::Kind::Inner) {
            TakeWord("OUTER", end);
        }
        return TakeWord("JOIN", end) ? std::optional(kind) : std::nullopt;
    }

    TokenRange ReadOn(std::size_t end) {
        if (!TakeWord("ON", end)) {
            return {};
        }
        const std::size_t begin = at_;
        while (at_ < end && !Symbol(",", end) && !IsJoinWord(sql_, at_)) {
            at_ = Symbol("(", end) ? sql_.Closing(at_) + 1 : at_ + 1;
        }
        return {begin, at_};
    }

    Node ReadPrimary(std::size_t end, int depth) {
        if (depth > kDeepest || ++primaries_ > kMostPrimaries) {
            return nullptr;
        }
        if (!Symbol("(", end)) {
            return ReadTable(end);
        }
        if (sql_.IsWord(at_ + 1, QLatin1String("SELECT"))) {
            return ReadSubquery(end);
        }
        const std::size_t close = sql_.Closing(at_);
        ++at_;
        Node inner = ReadList(close, depth + 1);
        if (!inner || at_ != close) {
            return nullptr;
        }
        ++at_;
        return inner;
    }

    Node ReadTable(std::size_t end) {
        auto table = std::make_unique<JoinNode>();
        table->text.begin = at_;
        while (at_ < end && sql_.IsName(at_) && !IsJoinWord(sql_, at_)) {
            table->nameText = {at_, at_ + 1};
            ++at_;
            if (!Symbol(".", end)) {
                return ReadAlias(std::move(table), end);
            }
            ++at_;
        }
        return nullptr;
    }

    Node ReadSubquery(std::size_t end) {
        auto table = std::make_unique<JoinNode>();
        table->text.begin = at_;
        at_ = sql_.Closing(at_) + 1;
        return ReadAlias(std::move(table), end);
    }

    Node ReadAlias(Node table, std::size_t end) {
        const bool as = TakeWord("AS", end);
        if (at_ < end && sql_.IsName(at_) && !IsJoinWord(sql_, at_)) {
            table->nameText = {at_, at_ + 1};
            ++at_;
        } else if (as) {
            return nullptr;
        }
        table->text.end = at_;
        if (!table->nameText.Empty()) {
            table->name = sql_.Name(table->nameText.begin);
        }
        return table;
    }

    const TokenizedSql& sql_;
    std::size_t at_;
    std::size_t end_;
    int primaries_ = 0;
};

}  // namespace

Node ReadJoinTree(const TokenizedSql& sql, TokenRange from) {
    return Parser(sql, from).ReadAll();
}

bool HasRightJoin(const TokenizedSql& sql, TokenRange range) {
    for (std::size_t i = range.begin; i < range.end; ++i) {
        if (sql.IsWord(i, QLatin1String("RIGHT")) &&
            (sql.IsWord(i + 1, QLatin1String("JOIN")) || sql.IsWord(i + 1, QLatin1String("OUTER")))) {
            return true;
        }
    }
    return false;
}

}  // namespace store
