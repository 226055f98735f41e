#include "setup/demo_company.h"
#include "setup/empty_rows.h"

namespace setup {
namespace {

struct Class {
    const char* table;
    std::initializer_list<const char*> names;
    int first;  ///< code of the first name
};

// The lists of employment, staff class, use and trading state are told by their place and so begin at 0.
const Class kClasses[] = {
    {"K発信区分", {"当社から", "相手先から", "社内"}, 1},
    {"K応対方法", {"訪問", "来社", "電話", "メール", "Web会議"}, 1},
    {"K要件分類", {"商談", "見積", "受注", "納品", "アフター", "クレーム", "集金", "情報収集", "その他"}, 1},
    {"K在籍区分", {"在籍", "退職"}, 0},
    {"K社員区分", {"正社員", "契約社員", "パート"}, 0},
    {"K稼動状況区分", {"稼動中", "休止"}, 0},
    {"K取引状況区分", {"見込", "取引中", "取引停止"}, 0},
};

// Handling within each of the nine matters. The first of each stands for "none", which can't be registered.
const std::initializer_list<const char*> kHandling[] = {
    {"なし", "初回", "継続", "提案", "成約", "失注"},
    {"なし", "作成", "提出", "再提出"},
    {"なし", "内示", "確定", "変更", "取消"},
    {"なし", "手配", "完了", "遅延"},
    {"なし", "点検", "修理", "問合せ"},
    {"なし", "受付", "対応中", "解決"},
    {"なし", "請求", "入金", "督促"},
    {"なし", "業界", "競合", "顧客"},
    {"なし", "挨拶", "会議", "移動", "事務"},
};

void FillClasses(StoreFill& fill) {
    for (const Class& table : kClasses) {
        int code = table.first;
        for (const char* name : table.names)
            fill.AddRow(table.table, {"区分", "名称"}, {QString::number(code++), name});
    }
    int matter = 1;
    for (const auto& names : kHandling) {
        int code = 0;
        for (const char* name : names)
            fill.AddRow("K対応分類", {"要件分類", "区分", "名称"},
                        {QString::number(matter), QString::number(code++), name});
        ++matter;
    }
}

void FillSites(StoreFill& fill) {
    FillCompany(fill, {"ひかり商会株式会社", "100-0005", "東京都千代田区", "丸の内9-9-9", "春日　一郎", "03-9999-0000",
                       "03-9999-0001"});
    const QStringList columns = {"コード", "名称", "暗証番号有無", "郵便番号", "住所A", "住所B", "電話", "FAX"};
    fill.AddRow(
        "M事業所", columns,
        {"001", "名古屋支店", "0", "450-0002", "愛知県名古屋市中村区", "名駅9-9-9", "052-999-0000", "052-999-0001"});
    fill.AddRow("M事業所", columns,
                {"002", "大阪支店", "0", "530-0001", "大阪府大阪市北区", "梅田9-9-9", "06-9999-0000", "06-9999-0001"});
    const QStringList named = {"コード", "名称", "稼動状況区分"};
    const char* departments[] = {"営業一部", "営業二部", "営業推進部", "旧特販部"};
    for (int i = 0; i < 4; ++i)
        fill.AddRow("M部門", named, {Code(i, 3), departments[i], i == 3 ? "1" : "0"});
    const char* sections[] = {"第一課", "第二課", "第三課", "産業課", "官公庁課",
                              "流通課", "企画課", "販促課", "業務課"};
    for (int i = 0; i < 9; ++i)
        fill.AddRow("Mセクション", named, {Code(i, 3), sections[i], "0"});
}

void FillStaff(StoreFill& fill, const DemoWorld& world) {
    QStringList columns = {"コード",           "氏名",         "カナ",         "事業所コード",     "部門コード",
                           "セクションコード", "役職コード",   "社員区分",     "在籍区分",         "退社日付",
                           "ログインID",       "アクセス権限", "操作許可",     "入力許可",         "修正許可",
                           "削除許可",         "印刷許可",     "プレビュ許可", "テキスト出力許可", "イメージ出力許可"};
    for (int number = 0; number <= 9; ++number)
        columns << QString("処理分類%1操作許可").arg(number);
    RowSink& rows = fill.Rows("M担当者", columns);
    for (int i = 0; i < world.Sizes().staff; ++i) {
        const Staff staff = world.StaffAt(i);
        const bool head = i % 10 == 0;
        QStringList row = {staff.code,
                           staff.name,
                           staff.kana,
                           staff.site,
                           staff.department,
                           staff.section,
                           head ? "1" : "0",
                           i % 8 == 7 ? "1" : "0",
                           staff.left ? "1" : "0",
                           staff.left ? DayText(world.Sizes().today.addMonths(-4)) : "",
                           i % 5 < 3 ? "eigyo" + staff.code : "",
                           head ? "6" : "0"};
        while (row.size() < columns.size())
            row << "0";
        rows.Add(row);
    }
}

}  // namespace

void FillDemoMasters(StoreFill& fill, const DemoWorld& world) {
    FillSites(fill);
    FillClasses(fill);
    FillStaff(fill, world);
    RowSink& rows = fill.Rows("M郵便番号", {"郵便番号", "住所A", "住所B"});
    for (const Postcode& postcode : world.AllPostcodes())
        rows.Add({postcode.code, postcode.city, postcode.town});
}

}  // namespace setup
