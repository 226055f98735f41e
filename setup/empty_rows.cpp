#include "setup/empty_rows.h"

#include "setup/server_store.h"

#include "setup/tree.h"

namespace setup {

const std::vector<Series>& NumberSeries() {
    // By day for the viewing log, by fiscal year for the documents.
    static const std::vector<Series> series = {
        {"01110", "3", ""},         {"16110", "1", "案件"},     {"16130", "1", "営業引合"}, {"16140", "1", "営業受注"},
        {"16210", "1", "営業見積"}, {"16220", "1", "顧客注文"}, {"16810", "1", "出金"}};
    return series;
}

void FillEnvironment(StoreFill& fill, const ServerOrder* server) {
    if (server)
        fill.AddRow(
            "データベース定義",
            {"情報種類", "db", "dbmw", "プロバイダ名", "サーバー名", "データベース名", "ユーザーID", "パスワード"},
            {"GNR", "S", "", "PostgreSQL", server->server, server->database, server->user, server->password});
    else  // The path is relative, so that a tree can be moved.
        fill.AddRow("データベース定義", {"情報種類", "db", "dbmw", "プロバイダ名", "データソース名"},
                    {"GNR", "A", "", "SQLite", "data/gnrdb.accdb"});
    fill.AddRow("動作環境定義",
                {"動作環境定義ID", "運用事業所コード", "インストール区分", "CL更新実行区分", "バックアップ方法",
                 "バックアップ日指定", "月曜バックアップ", "火曜バックアップ", "水曜バックアップ", "木曜バックアップ",
                 "金曜バックアップ", "土曜バックアップ", "日曜バックアップ"},
                {"001", "000", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"});
    // The move screen asks for its right under a name of its own.
    for (const char* program : {"活動手帳", "営業日程移動"})
        fill.AddRow("営業支援", {"プログラムID", "処理分類"}, {program, "1"});
}

void FillCompany(StoreFill& fill, const CompanyWords& words) {
    fill.AddRow("Mユーザ",
                {"ID", "暗証番号有無", "決算月", "決算日", "伝票番号管理区分", "ドキュメントフォルダ", "名称",
                 "郵便番号", "住所A", "住所B", "代表者名", "電話", "FAX"},
                {"0001", "0", "3", "31", "0", Tree::DocumentFolder(), words.name, words.postcode, words.addressA,
                 words.addressB, words.head, words.phone, words.fax});
    fill.AddRow(
        "M事業所", {"コード", "名称", "暗証番号有無", "郵便番号", "住所A", "住所B", "代表者名", "電話", "FAX"},
        {"000", "本社", "0", words.postcode, words.addressA, words.addressB, words.head, words.phone, words.fax});
    for (const Series& series : NumberSeries())
        fill.AddRow("A番号情報", {"番号ID", "連番", "連番種類"}, {series.id, "00000000", series.kind});
}

}  // namespace setup
