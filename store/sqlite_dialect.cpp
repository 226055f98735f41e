#include "store/sqlite_dialect.h"

#include <set>

#include "store/exists_list.h"
#include "store/join_chain.h"
#include "store/outer_marks.h"
#include "store/select_shape.h"

namespace store {
namespace {

// One SELECT on its way. The members write its parts; a text in refusal_ ends the work.
class SelectRewriter {
  public:
    SelectRewriter(const TokenizedSql& sql, const SelectShape& shape) : sql_(sql), shape_(shape) {}

    // The SELECT written anew; null text when it stays as it is.
    QString Rewrite() {
        const bool marks = HasOuterMark(sql_, shape_.all);
        const bool joins = HasRightJoin(sql_, shape_.from);
        if (!shape_.limit && !marks && !joins) {
            return {};
        }
        CheckTop();
        Replace(shape_.top, QString());
        if (refusal_.isEmpty() && (marks || joins)) {
            RewriteFrom(marks, joins);
        }
        return refusal_.isEmpty() ? Assemble() : QString();
    }

    const Refusal& Refused() const { return refusal_; }

  private:
    void CheckTop() {
        if (shape_.unusualTop) {
            refusal_ = QStringLiteral("TOP に PERCENT や WITH TIES は使えません。");
        } else if (shape_.limit && shape_.compound) {
            refusal_ = QStringLiteral("TOP は UNION などと同時に使えません。");
        }
    }

    void RewriteFrom(bool marks, bool joins) {
        if (marks && (joins || HasOuterMark(sql_, shape_.columns) || HasOuterMark(sql_, shape_.from) ||
                      HasOuterMark(sql_, shape_.tail))) {
            refusal_ = QStringLiteral("(+) は WHERE の結合条件だけで使えます。");
            return;
        }
        const auto tree = ReadJoinTree(sql_, shape_.from);
        if (!tree) {
            refusal_ = QStringLiteral("表の結合を読み取れません: %1").arg(sql_.Slice(shape_.from));
            return;
        }
        const auto tables = TablesOf(*tree);
        if (!NamesDiffer(tables)) {
            return;
        }
        WriteOutStars(tables);
        if (marks) {
            ReplaceByMarks(*tree);
        } else {
            Replace(shape_.from, FlattenJoins(sql_, *tree, refusal_).value_or(QString()));
        }
    }

    void ReplaceByMarks(const JoinNode& tree) {
        const auto written = JoinByMarks(sql_, tree, shape_.where, refusal_);
        if (!written) {
            return;
        }
        Replace(shape_.from, written->from);
        if (written->where.isEmpty()) {
            Replace({shape_.where.begin - 1, shape_.where.end}, QString());
        } else {
            Replace(shape_.where, written->where);
        }
    }

    bool NamesDiffer(const std::vector<const JoinNode*>& tables) {
        std::set<QString> names;
        for (const JoinNode* table : tables) {
            if (!names.insert(table->name).second) {
                refusal_ = QStringLiteral("結合する表の名前が重なっています: %1").arg(sql_.Slice(shape_.from));
            }
        }
        return refusal_.isEmpty();
    }

    void WriteOutStars(const std::vector<const JoinNode*>& tables) {
        QStringList stars;
        bool nameless = false;
        for (const JoinNode* table : tables) {
            stars.append(sql_.Slice(table->nameText) + QStringLiteral(".*"));
            nameless = nameless || table->name.isEmpty();
        }
        for (std::size_t i = shape_.columns.begin; i < shape_.columns.end; ++i) {
            if (sql_.IsSymbol(i, QLatin1String("("))) {
                i = sql_.Closing(i);
            } else if (IsBareStar(i)) {
                Replace({i, i + 1}, stars.join(QStringLiteral(", ")));
                if (nameless) {
                    refusal_ =
                        QStringLiteral("名前のない表を含む結合では * を使えません: %1").arg(sql_.Slice(shape_.from));
                }
            }
        }
    }

    bool IsBareStar(std::size_t i) const {
        const bool first = i == shape_.columns.begin || sql_.IsSymbol(i - 1, QLatin1String(","));
        const bool last = i + 1 == shape_.columns.end || sql_.IsSymbol(i + 1, QLatin1String(","));
        return first && last && sql_.IsSymbol(i, QLatin1String("*"));
    }

    // Notes what to write in place of some tokens; called in the order of the text.
    void Replace(TokenRange tokens, const QString& text) {
        if (!tokens.Empty()) {
            edits_.push_back({tokens, text});
        }
    }

    QString Assemble() const {
        QString written;
        qsizetype at = sql_.At(shape_.all.begin).start;
        for (const auto& [tokens, text] : edits_) {
            const auto from = sql_.At(tokens.begin).start;
            // A bracket or star may have stood right beside a word: blanks, lest the words grow together.
            written += sql_.Text().mid(at, from - at) + u' ' + text + u' ';
            at = sql_.At(tokens.end - 1).End();
        }
        written += sql_.Text().mid(at, sql_.At(shape_.all.end - 1).End() - at);
        if (shape_.limit) {
            written += QStringLiteral(" LIMIT ") + sql_.Slice({*shape_.limit, *shape_.limit + 1});
        }
        return written;
    }

    const TokenizedSql& sql_;
    const SelectShape& shape_;
    Refusal refusal_;
    std::vector<std::pair<TokenRange, QString>> edits_;
};

bool MayNeedRewriting(const QString& sql) {
    return sql.contains(QLatin1String("TOP"), Qt::CaseInsensitive) ||
           sql.contains(QLatin1String("RIGHT"), Qt::CaseInsensitive) ||
           sql.contains(QLatin1String("EXISTS"), Qt::CaseInsensitive) || sql.contains(u'+');
}

// The SELECT at or before `from`, or nothing.
std::optional<std::size_t> LastSelect(const TokenizedSql& sql, std::size_t from) {
    for (std::size_t i = std::min(from, sql.Size()); i-- > 0;) {
        if (sql.IsWord(i, QLatin1String("SELECT"))) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<TokenizedSql> ReadStatement(const QString& sql, Fault& fault) {
    auto tokens = TokenizedSql::Read(sql);
    if (!tokens) fault = {0, QStringLiteral("SQL 文の引用符や括弧が閉じていません。")};
    return tokens;
}

std::optional<QString> ToSqlite(const QString& sql, Fault& fault) {
    auto tokens = ReadStatement(sql, fault);
    if (!tokens || !MayNeedRewriting(sql)) {
        return tokens ? std::optional(sql) : std::nullopt;
    }
    // From the back, so that a subquery is finished before the SELECT around it is read.
    for (auto select = LastSelect(*tokens, tokens->Size()); select; select = LastSelect(*tokens, *select)) {
        const SelectShape shape = ShapeOf(*tokens, *select);
        SelectRewriter rewriter(*tokens, shape);
        const QString written = rewriter.Rewrite();
        if (!rewriter.Refused().isEmpty()) {
            fault = {0, QStringLiteral("SQL 文を変換できません。") + rewriter.Refused()};
            return std::nullopt;
        }
        if (written.isNull()) {
            continue;
        }
        const auto start = tokens->At(shape.all.begin).start;
        const auto end = tokens->At(shape.all.end - 1).End();
        tokens = ReadStatement(tokens->Text().left(start) + written + tokens->Text().mid(end), fault);
        if (!tokens) {
            return std::nullopt;
        }
    }
    return ListKeysOnce(*tokens);
}

}  // namespace store
