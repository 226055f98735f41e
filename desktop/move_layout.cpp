#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "desktop/layout_parts.h"

// The move screen: what is moved on the left, where to on the right, line beside line, so that the eye compares them;
// the content on the left and the steps on the right below.
namespace desktop {

namespace {

constexpr int kLines = 5;

void AddTitle(WidgetShelf& shelf, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow();
    row->setSpacing(10);
    AddCatcher(shelf, *row, QStringLiteral("ヘッド終了"));
    if (QWidget* title = shelf.TakeAs("title", QStringLiteral("prg_ttl"))) row->addWidget(title);
    AddNotice(shelf, *row);
    whole.addLayout(row);
}

void AddCommands(WidgetShelf& shelf, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow();
    for (const char* name : {"btn_移動", "btn_追加"})
        if (QWidget* button = shelf.TakeAs("main", QString::fromUtf8(name))) row->addWidget(button);
    row->addStretch();
    if (QWidget* button = shelf.TakeAs("main", QStringLiteral("btn_終了"))) row->addWidget(button);
    whole.addLayout(row);
}

/// Gives the lines of both sides one height.
void Level(QGridLayout& grid, int height) {
    for (int line = 0; line < kLines; ++line)
        grid.setRowMinimumHeight(line, height);
}

void AddSource(WidgetShelf& shelf, QVBoxLayout& column, int height) {
    QGridLayout* grid = NewGroup(column, shelf.TakeAs("heading", QStringLiteral("bak_移動元")));
    AddRow(shelf, *grid, 0, QStringLiteral("itm_ttl_表示日付"), {"表示日付*", "曜日"});
    AddRow(shelf, *grid, 1, QStringLiteral("itm_ttl_開始時刻"), {"開始時刻", "lab_開始時刻", "終了時刻"});
    AddRow(shelf, *grid, 2, QStringLiteral("itm_ttl_担当者コード"), {"担当者コード", "担当者名*"});
    AddRow(shelf, *grid, 3, QStringLiteral("itm_ttl_部門名"), {"部門名*"});
    AddRow(shelf, *grid, 4, QStringLiteral("itm_ttl_セクション名"), {"セクション名*"});
    grid->setColumnStretch(1, 1);
    Level(*grid, height);
}

void AddContent(WidgetShelf& shelf, QVBoxLayout& column) {
    QGridLayout* grid = NewGroup(column, nullptr, 1);
    int line = 0;
    for (const char* item : {"発信状況", "要件内容", "相手先略称", "相手先御担当者名"}) {
        const QString name = QString::fromUtf8(item);
        AddRow(shelf, *grid, line++, "itm_ttl_" + name, {name + u'*'});
    }
    if (QWidget* title = shelf.Take(QStringLiteral("itm_ttl_営業活動摘要")))
        grid->addWidget(title, line, 0, Qt::AlignTop);
    if (QWidget* memo = shelf.Take(QStringLiteral("営業活動摘要"))) {
        memo->setMinimumHeight(70);
        memo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
        grid->addWidget(memo, line, 1);
    }
    grid->setRowStretch(line, 1);
    grid->setColumnStretch(1, 1);
}

void AddTarget(WidgetShelf& shelf, QVBoxLayout& column, int height) {
    QGridLayout* grid = NewGroup(column, shelf.TakeAs("heading", QStringLiteral("bak_移動先")));
    const auto wide = [&](int line, const QString& title, const QStringList& names) {
        if (QWidget* heading = shelf.Take(title)) grid->addWidget(heading, line, 0);
        QHBoxLayout* row = NewRow();
        AddRow(shelf, *row, names);
        row->addStretch();
        grid->addLayout(row, line, 1, 1, 2);
    };
    wide(0, QStringLiteral("itm_ttl_移動日付"),
         {"移動日付年", "lab_移動日付年", "移動日付月", "lab_移動日付月", "移動日付日", "lab_移動日付日", "移動曜日"});
    wide(1, QStringLiteral("itm_ttl_移動開始時刻"),
         {"移動開始時刻時", "lab_移動開始時刻時", "移動開始時刻分", "lab_移動開始時刻", "移動終了時刻時",
          "lab_移動終了時刻時", "移動終了時刻分"});
    int line = 2;
    for (const char* kind : {"担当者", "部門", "セクション"}) {
        const QString name = QString::fromUtf8(kind);
        AddCode(shelf, *grid, line++, QStringLiteral("btn_%1コード").arg(name), QStringLiteral("移動") + name);
    }
    grid->setColumnStretch(2, 1);
    Level(*grid, height);
}

void AddSteps(WidgetShelf& shelf, QVBoxLayout& column) {
    QGridLayout* grid = NewGroup(column);
    // Back on the left, ahead on the right; what leads to the present stands in the middle.
    const QList<QStringList> steps{{"btn_前週", "btn_前日", QString(), "btn_翌日", "btn_翌週"},
                                   {"btn_30分前", "btn_15分前", "btn_Now", "btn_15分後", "btn_30分後"}};
    for (int line = 0; line < steps.size(); ++line)
        for (int place = 0; place < steps[line].size(); ++place) {
            if (QWidget* button = shelf.Take(steps[line][place])) grid->addWidget(button, line, place);
            grid->setColumnStretch(place, 1);
        }
    column.addStretch(1);
}

}  // namespace

void LayOutMove(WidgetShelf& shelf, QWidget& content) {
    auto* whole = new QVBoxLayout(&content);
    whole->setContentsMargins(10, 6, 10, 6);
    whole->setSpacing(6);
    AddTitle(shelf, *whole);
    AddCommands(shelf, *whole);
    auto* body = new QHBoxLayout;
    body->setSpacing(8);
    auto* left = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    left->setSpacing(6);
    right->setSpacing(6);
    const int height = content.fontMetrics().height() + 10;
    AddSource(shelf, *left, height);
    AddContent(shelf, *left);
    AddTarget(shelf, *right, height);
    AddSteps(shelf, *right);
    body->addLayout(left, 1);
    body->addLayout(right, 1);
    whole->addLayout(body, 1);
    AddCatcher(shelf, *whole, QStringLiteral("テイル終了"));
}

}  // namespace desktop
