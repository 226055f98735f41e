#include "store/recordset.h"

namespace store {

Recordset::Recordset(QStringList columns, std::vector<Row> rows)
    : columns_(std::move(columns)), rows_(std::move(rows)) {
    for (int i = 0; i < columns_.size(); ++i) {
        if (!positions_.contains(columns_[i])) {
            positions_.insert(columns_[i], i);
        }
    }
}

bool Recordset::Eof() const {
    return current_ >= rows_.size();
}

void Recordset::MoveNext() {
    if (!Eof()) {
        ++current_;
    }
}

std::optional<QString> Recordset::Value(const QString& column) const {
    const auto position = positions_.constFind(column);
    if (Eof() || position == positions_.constEnd()) {
        return std::nullopt;
    }
    return rows_[current_][static_cast<std::size_t>(*position)];
}

}  // namespace store
