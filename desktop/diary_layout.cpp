#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "desktop/layout_parts.h"

// The main screen: who and when and with whom on the left, in the order in which it is typed; what and about which
// documents on the right, with the memo below, which gets all the room that is left.
namespace desktop {

namespace {

void AddTitle(WidgetShelf& shelf, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow();
    row->setSpacing(10);
    AddCatcher(shelf, *row, QStringLiteral("ヘッド終了"));
    if (QWidget* title = shelf.TakeAs("title", QStringLiteral("prg_ttl"))) row->addWidget(title);
    AddNotice(shelf, *row);
    if (QWidget* manual = shelf.TakeAs("panel", QStringLiteral("manualpanel"))) row->addWidget(manual);
    whole.addLayout(row);
}

void AddCommands(WidgetShelf& shelf, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow();
    for (const char* name : {"btn_登録", "btn_削除", "btn_移動", "btn_暦編集"})
        if (QWidget* button = shelf.TakeAs("main", QString::fromUtf8(name))) row->addWidget(button);
    row->addStretch();
    for (const char* name : {"btn_控え一覧", "btn_終了"})
        if (QWidget* button = shelf.TakeAs("main", QString::fromUtf8(name))) row->addWidget(button);
    whole.addLayout(row);
}

void AddDateAndTime(WidgetShelf& shelf, QVBoxLayout& column) {
    QGridLayout* grid = NewGroup(column);
    AddRow(shelf, *grid, 0, QStringLiteral("itm_ttl_営業活動日付"),
           {"営業活動日付年", "Lab_営業活動日付年", "営業活動日付月", "Lab_営業活動日付月", "営業活動日付日",
            "lab_営業活動日付日", "営業活動曜日"});
    AddRow(
        shelf, *grid, 1, QStringLiteral("itm_ttl_開始時刻"),
        {"開始時刻時", "Lab_開始時刻時", "開始時刻分", "lab_開始時刻", "終了時刻時", "Lab_終了時刻時", "終了時刻分"});
    const QList<QStringList> steps{{"btn_前週", "btn_前日", "btn_翌日", "btn_翌週"},
                                   {"btn_一時間前", "btn_30分前", "btn_Now", "btn_30分後", "btn_一時間後"}};
    for (int line = 0; line < steps.size(); ++line) {
        QHBoxLayout* row = NewRow();
        row->addStretch();
        AddRow(shelf, *row, steps[line]);
        grid->addLayout(row, line, 2);
    }
    grid->setColumnStretch(2, 1);
}

void AddStaff(WidgetShelf& shelf, QVBoxLayout& column) {
    QGridLayout* grid = NewGroup(column);
    const QStringList kinds{"担当者", "部門", "セクション"};
    for (int line = 0; line < kinds.size(); ++line)
        AddCode(shelf, *grid, line, QStringLiteral("btn_%1コード").arg(kinds[line]), kinds[line]);
    grid->setColumnStretch(2, 1);
}

void AddCounterparty(WidgetShelf& shelf, QVBoxLayout& column) {
    QWidget* panel = shelf.TakeAs("heading", QStringLiteral("bak_相手先"), QStringLiteral("相手先"));
    QGridLayout* grid = NewGroup(column, panel);
    AddRow(shelf, *grid, 0, QStringLiteral("btn_相手先コード"),
           {"相手先区分", "相手先コード", "lab_相手先略称", "相手先略称*"});
    AddRow(shelf, *grid, 1, QStringLiteral("btn_相手先郵便番号"),
           {"相手先郵便番号", "itm_ttl_相手先電話", "相手先電話*", "itm_ttl_FAX", "相手先FAX*"});
    AddRow(shelf, *grid, 2, QStringLiteral("itm_ttl_住所"), {"相手先住所A*"});
    AddRow(shelf, *grid, 3, QString(), {"相手先住所B*"});
    AddRow(shelf, *grid, 4, QString(), {"相手先住所C*"});
    AddRow(shelf, *grid, 5, QStringLiteral("itm_ttl_名称"), {"相手先名称A*"});
    AddRow(shelf, *grid, 6, QString(), {"相手先名称B*"});
    grid->setColumnStretch(1, 1);
}

void AddContact(WidgetShelf& shelf, QVBoxLayout& column) {
    QWidget* panel = shelf.TakeAs("heading", QStringLiteral("bak_相手先御担当者"), QStringLiteral("相手先御担当者"));
    QGridLayout* grid = NewGroup(column, panel);
    AddRow(shelf, *grid, 0, QStringLiteral("btn_相手先御担当者コード"),
           {"相手先御担当者コード", "相手先御担当者名*", "itm_ttl_相手先御担当者電話", "相手先御担当者電話"});
    grid->setColumnStretch(1, 1);
}

/// The options of one group in a row behind their panel.
void AddOptions(WidgetShelf& shelf, QGridLayout& grid, int line, const QString& group, int count, QWidget* title) {
    if (title) grid.addWidget(title, line, 0);
    QHBoxLayout* row = NewRow();
    for (int index = 0; index < count; ++index)
        if (QWidget* option = shelf.Take(group, index)) row->addWidget(option);
    row->addStretch();
    grid.addLayout(row, line, 1);
}

void AddClassification(WidgetShelf& shelf, QVBoxLayout& column) {
    constexpr int kMatters = 9;
    constexpr int kMattersInColumn = 5;
    QGridLayout* grid = NewGroup(column);
    // The backing panel of the first group only stands behind its title.
    QWidget* backing = shelf.TakeAs("heading", QStringLiteral("bak_発信者"));
    QWidget* title = shelf.TakeAs("heading", QStringLiteral("itm_ttl_発信区分"), QStringLiteral("発信"));
    if (backing) grid->addWidget(backing, 0, 2);
    AddOptions(shelf, *grid, 0, QStringLiteral("opb_発信区分"), 3, title);
    AddOptions(shelf, *grid, 1, QStringLiteral("opb_応対方法"), 6,
               shelf.TakeAs("heading", QStringLiteral("bak_応対方法"), QStringLiteral("応対方法")));
    auto* matters = new QGridLayout;
    matters->setHorizontalSpacing(kGap);
    matters->setVerticalSpacing(2);
    for (int index = 0; index < kMatters; ++index) {
        const int line = index % kMattersInColumn;
        const int place = index / kMattersInColumn * 4;
        int step = 0;
        for (const char* name : {"opb_要件分類", "対応分類", "対応分類名称"}) {
            if (QWidget* widget = shelf.Take(QString::fromUtf8(name), index))
                matters->addWidget(widget, line, place + step);
            ++step;
        }
    }
    matters->setColumnMinimumWidth(3, 10);
    for (const int column : {2, 6})
        matters->setColumnStretch(column, 1);
    grid->addLayout(matters, 2, 0, 1, 3);
    grid->setColumnStretch(1, 1);
}

void AddDocuments(WidgetShelf& shelf, QVBoxLayout& column) {
    QGridLayout* grid = NewGroup(column);
    const QStringList kinds{"出金", "案件", "営業引合", "営業見積", "顧客注文", "営業受注"};
    for (int index = 0; index < kinds.size(); ++index) {
        const QString& kind = kinds[index];
        const int line = index / 2;
        const int place = index % 2 * 4;
        if (QWidget* pick = shelf.Take(QStringLiteral("btn_%1No").arg(kind))) grid->addWidget(pick, line, place);
        if (QWidget* number = shelf.Take(kind + QStringLiteral("No"))) grid->addWidget(number, line, place + 1);
        QWidget* reference = shelf.TakeAs("plain", QStringLiteral("btn_参照") + kind, QStringLiteral("参照"));
        if (reference) grid->addWidget(reference, line, place + 2);
    }
    grid->setColumnStretch(3, 1);
    grid->setColumnStretch(7, 1);
}

void AddDetail(WidgetShelf& shelf, QVBoxLayout& column) {
    auto* strip = qobject_cast<QTabWidget*>(shelf.Take(QStringLiteral("tab_詳細")));
    if (!strip) return;
    strip->setMinimumHeight(150);
    column.addWidget(strip, 1);
    if (strip->count() < 2) return;
    auto* memoPage = new QVBoxLayout(strip->widget(0));
    memoPage->setContentsMargins(kGap, kGap, kGap, kGap);
    if (QWidget* memo = shelf.Take(QStringLiteral("営業活動摘要"))) memoPage->addWidget(memo);
    auto* filePage = new QVBoxLayout(strip->widget(1));
    filePage->setContentsMargins(kGap, kGap, kGap, kGap);
    if (QWidget* list = shelf.Take(QStringLiteral("List付属書類"))) filePage->addWidget(list, 1);
    QHBoxLayout* row = NewRow();
    AddRow(shelf, *row, {"btn_付属書類追加", "btn_付属書類削除", "btn_フォルダ"});
    row->addStretch();
    filePage->addLayout(row);
}

}  // namespace

void LayOutDiary(WidgetShelf& shelf, QWidget& content) {
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
    AddDateAndTime(shelf, *left);
    AddStaff(shelf, *left);
    AddCounterparty(shelf, *left);
    AddContact(shelf, *left);
    left->addStretch();
    AddClassification(shelf, *right);
    AddDocuments(shelf, *right);
    AddDetail(shelf, *right);
    body->addLayout(left, 1);
    body->addLayout(right, 1);
    whole->addLayout(body, 1);
    AddCatcher(shelf, *whole, QStringLiteral("テイル終了"));
}

}  // namespace desktop
