#pragma once

#include <gtest/gtest.h>

#include "lists/list_description.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lists {

/// What a statement is built of. A classification that isn't named stands on "all".
struct Given {
    QString kind = "A";
    QString condition = {};
    QString site = "000", operatingSite = "000";
    QHash<QString, QString> items = {};
    QHash<QString, int> classes = {};
    QHash<QString, int> checks = {};
    QString firstDay = {}, lastDay = {};
    int statement = 0;  ///< which of the window's statements
};

struct StatementCase {
    int line;
    int mode;
    Given given;
    QString sql;
};

/// Index that means all, by classification.
inline const QHash<QString, int> kAll = {{"在籍区分", 2}, {"社員区分", 3}, {"取引状況区分", 4}, {"稼動状況区分", 2}};

inline QString SqlOf(const QString& window, int mode, const Given& given) {
    const ListDescription* list = FindList(window);
    if (!list) return "no such list";
    SearchValues values;
    values.dbKind = given.kind;
    values.condition = given.condition;
    values.siteCode = given.site;
    values.operatingSiteCode = given.operatingSite;
    values.items = given.items;
    values.classAll = values.classIndex = kAll;
    values.classIndex.insert(given.classes);
    values.checks = given.checks;
    values.firstDay = given.firstDay;
    values.lastDay = given.lastDay;
    return BuildSearchSql(*list, list->statements.at(static_cast<std::size_t>(given.statement)), mode, values);
}

inline void ExpectStatements(const QString& window, const std::vector<StatementCase>& cases) {
    for (const StatementCase& c : cases)
        EXPECT_EQ(SqlOf(window, c.mode, c.given), c.sql) << window.toStdString() << ", case at line " << c.line;
}

}  // namespace lists
