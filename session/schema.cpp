#include "session/schema.h"

namespace session {
namespace {

// Columns, keys and indexes are written as words parted by blanks; columns of an index by "+".
QStringList Words(const QString& text) {
    return text.simplified().split(u' ', Qt::SkipEmptyParts);
}

Table Describe(const QString& name, const QString& key, const QString& columns, const QString& indexes = {}) {
    Table table;
    table.name = name;
    table.key = Words(key);
    for (const QString& column : Words(columns))
        table.columns.push_back({column});
    for (const QString& index : Words(indexes))
        table.indexes.push_back(index.split(u'+'));
    return table;
}

Table MenuTable() {
    QString columns = "プログラムID 処理分類";
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        columns += QString(" 条件項目名%1").arg(QChar(letter));
    return Describe("営業支援", "プログラムID", columns);
}

Table DetailTable() {
    QString columns =
        "担当者コード 日付 開始時刻 終了時刻 事業所コード 部門コード セクションコード 発信区分 応対方法 要件分類 "
        "対応分類 "
        "相手先区分 相手先コード 相手先略称 相手先郵便番号 相手先住所A 相手先住所B 相手先住所C 相手先名称A 相手先名称B "
        "相手先電話 相手先FAX 相手先御担当者コード 相手先御担当者名 相手先御担当者電話 相手先名称入力区分";
    QString indexes;
    for (const QString& kind : DocumentKinds()) {
        columns += QString(" %1新規区分 %1事業所コード %1番号基準日付 %1No").arg(kind);
        indexes += QString(" %1No").arg(kind);  // "is another slot linked to this document?"
    }
    columns += " 営業活動摘要 活動時間 承認日付 承認者コード 承認区分 ユーザID 登録日付 更新日付";
    // The key serves the look-ups by staff, date and start as well.
    Table table = Describe("T営業活動明細", "担当者コード 日付 開始時刻 終了時刻", columns, indexes);
    for (Column& column : table.columns)
        column.integer = column.name == "活動時間";
    return table;
}

// The key serves the fetch of one document. The lists show documents by date or by number; `used` are the texts that
// are offered as used before, each once and by date, and also orders of lists; `narrowed` are columns by which a list
// is narrowed to few of a million documents, which then come in the order of their dates. A deal's list looks for its
// party in three columns and shows what it finds by the first: the index has all of them.
Table DocumentTable(const QString& kind, const QString& further, const QString& used, const QString& narrowed) {
    QString indexes = "%1日付+%1No %1No+%1日付";
    for (const QString& column : Words(used))
        indexes += " " + column + "+%1日付";
    for (const QString& columns : Words(narrowed))
        indexes += " " + columns + "+%1日付+%1No";
    return Describe(
        "T" + kind, QString("事業所コード 番号基準日付 %1No").arg(kind),
        QString("事業所コード 番号基準日付 %1No %1日付 担当者コード 部門コード セクションコード %2").arg(kind, further),
        indexes.arg(kind));
}

// One index for each order in which a party list shows its rows, with the columns that this search and the filters of
// every search look at: a search that finds few of a million parties then reads the index alone, and none has to sort.
// The first one is for the composite search; it does without the addresses, which would make it twice as big.
const QString kPartyIndexes =
    "コード+名称A+名称B+略称+カナ+郵便番号+電話番号+担当者コード+取引状況区分 "
    "名称A+名称B+略称+担当者コード+取引状況区分 カナ+担当者コード+取引状況区分 "
    "住所A+住所B+住所C+担当者コード+取引状況区分 郵便番号+担当者コード+取引状況区分 "
    "電話+電話番号+コード+担当者コード+取引状況区分 担当者コード+コード ";

Table PartyTable(const QString& name, const QString& further = {}) {
    return Describe(
        name, "コード",
        "コード 略称 カナ 名称A 名称B 郵便番号 住所A 住所B 住所C 電話 電話番号 FAX 担当者コード 取引状況区分 "
        "名称入力区分 御担当者名 担当者電話 " +
            further,
        kPartyIndexes + further);
}

Table ContactTable(const QString& party) {
    const QString code = party.mid(1) + "コード";
    // Parties are found by the number of a contact too.
    return Describe(party + "御担当者", code + " 御担当者コード",
                    code + " 御担当者コード 氏名 カナ 電話 電話番号 EMAIL", code + "+電話番号");
}

Table CompanyTable() {
    return Describe(
        "Mユーザ", "ID",
        "ID 名称 郵便番号 住所A 住所B 住所C 代表者名 電話 FAX HOMEPAGE EMAIL 会社ロゴfile 社印file 銀行口座A "
        "銀行口座B 銀行口座C 銀行口座D 写真フォルダ ドキュメントフォルダ 総合振込ファイル 基本読込フォルダ "
        "帳票イメージフォルダ その他読込ファイル 本支店連携フォルダ テキスト出力フォルダ BACKUPフォルダ "
        "明細整理実行日 統計整理実行日 決算月 決算日 締日区分 締日 決済方法 決済月 決済日 現金決済金額 手形サイト "
        "売上金額丸め方法 仕入金額丸め方法 在庫評価方法 売上単価少数以下桁数 売上数量少数以下桁数 "
        "仕入単価少数以下桁数 仕入数量少数以下桁数 在庫単価少数以下桁数 在庫数量少数以下桁数 重量少数以下桁数 "
        "得意先単価自動更新区分 納品先単価自動更新区分 仕入先単価自動更新区分 明細保存月数 統計保存年数 "
        "整理実施可能日自 整理実施可能日至 整理実施可能時刻 伝票番号管理区分 暗証番号有無 更新実行区分 "
        "特権暗証番号 システム特権暗証番号 登録日付 更新日付");
}

Table SiteTable() {
    return Describe(
        "M事業所", "コード",
        "コード 名称 郵便番号 住所A 住所B 住所C 代表者名 電話 FAX 登録番号 HOMEPAGE EMAIL 銀行口座A 銀行口座B "
        "銀行口座C 銀行口座D 総合振込ファイル 基本読込フォルダ 帳票イメージフォルダ その他読込ファイル "
        "本支店連携フォルダ テキスト出力フォルダ BACKUPフォルダ 地区コード 暗証番号有無 特権暗証番号 "
        "更新実行区分");
}

Table LinkTable() {
    return Describe(
        "M他業務連携", "コード",
        "コード 業務名 連携有無区分 連携DB 連携DBMW 連携データソース名 連携ドライバ名 連携接続文字列 "
        "連携データベース名 連携サーバー名 連携ユーザーID 連携パスワード 連携アプリフォルダ 顧客更新有無区分 "
        "得意先更新有無区分 納品先更新有無区分 仕入先更新有無区分 メーカ更新有無区分 対応先更新有無区分 "
        "商品更新有無区分 社員更新有無区分");
}

const QString kPermits = "操作許可 入力許可 修正許可 削除許可 印刷許可 プレビュ許可 テキスト出力許可 イメージ出力許可";

Table StaffTable() {
    QString classes;
    for (int number = 0; number <= 9; ++number)
        classes += QString("処理分類%1操作許可 ").arg(number);
    return Describe("M担当者", "コード",
                    "コード 氏名 カナ 事業所コード 部門コード セクションコード 役職コード 社員区分 在籍区分 退社日付 "
                    "ログインID 暗証番号 アクセス権限 " +
                        classes + kPermits,
                    "ログインID");
}

Table AttachmentTable() {
    return Describe(
        "M付属書類", "情報名 情報識別ID SEQNo",
        "情報名 情報識別ID SEQNo 書類名 タイトル 伝票番号ID 伝票事業所コード 伝票番号基準日付 伝票No 伝票日付 "
        "対応先コード 得意先コード 納品先コード 仕入先コード 銀行コード 科目コード 社員コード 担当者コード "
        "部門コード セクションコード 商品コード メーカコード 対象金額 ユーザID 登録日付");
}

void AddDocuments(std::vector<Table>& tables) {
    const QString parties = "得意先コード 納品先コード 得意先対応先区分 得意先名称A 得意先名称B ";
    const QString codes = "得意先コード 納品先コード";
    tables.push_back(DocumentTable("出金", "実質出金金額合計", "", "担当者コード"));
    tables.push_back(DocumentTable("案件",
                                   "案件名 相手先区分 相手先コード 相手先略称 相手先郵便番号 相手先住所A 相手先住所B "
                                   "相手先住所C 相手先名称A 相手先名称B 相手先電話 相手先FAX 相手先名称入力区分 "
                                   "相手先御担当者コード 相手先御担当者名 相手先御担当者電話",
                                   "案件名 相手先御担当者名", "相手先コード+相手先区分"));
    tables.back().indexes.push_back({"相手先略称", "案件日付", "相手先名称A", "相手先名称B"});
    tables.push_back(DocumentTable("営業引合", parties + "営業引合商品名A 営業引合商品名B 営業引合納期 営業引合金額",
                                   "得意先名称A 営業引合商品名A 営業引合納期", codes));
    tables.push_back(DocumentTable("営業見積", parties + "タイトル 見積金額合計", "得意先名称A タイトル", codes));
    tables.push_back(DocumentTable("顧客注文", parties + "タイトル 注文金額合計", "得意先名称A タイトル", codes));
    tables.push_back(DocumentTable("営業受注",
                                   "得意先コード 納品先コード 得意先名称A 得意先名称B 納品先名称A 納品先名称B "
                                   "営業受注納期 受注納期 受注金額合計",
                                   "得意先名称A 納品先名称A 営業受注納期", codes));
}

void AddMasters(std::vector<Table>& tables) {
    tables.push_back(StaffTable());
    tables.push_back(Describe("担当者別操作許可プログラム", "担当者コード 業務メニュ プログラムID",
                              "担当者コード 業務メニュ プログラムID " + kPermits));
    tables.push_back(Describe("M部門", "コード", "コード 名称 稼動状況区分"));
    tables.push_back(Describe("Mセクション", "コード", "コード 名称 稼動状況区分"));
    tables.push_back(SiteTable());
    tables.push_back(CompanyTable());
    tables.push_back(LinkTable());
    const QString owners = "得意先コード 仕入先コード";
    tables.push_back(PartyTable("M得意先"));
    tables.push_back(PartyTable("M納品先", owners));
    tables.push_back(PartyTable("M仕入先"));
    tables.push_back(PartyTable("Mメーカ"));
    tables.push_back(PartyTable("M対応先", owners));
    for (const QString party : {"M得意先", "M納品先", "M仕入先", "Mメーカ", "M対応先"})
        tables.push_back(ContactTable(party));
    tables.push_back(Describe("M郵便番号", "郵便番号", "郵便番号 住所A 住所B"));
    tables.push_back(Describe("M電話番号", "電話番号",
                              "電話 名称 郵便番号 住所A 住所B 住所C 電話番号 法人個人区分 ユーザID 登録日付 更新日付"));
    tables.push_back(AttachmentTable());
}

void AddCodesAndNumbers(std::vector<Table>& tables) {
    for (const QString name :
         {"K発信区分", "K応対方法", "K要件分類", "K在籍区分", "K社員区分", "K稼動状況区分", "K取引状況区分"})
        tables.push_back(Describe(name, "区分", "区分 名称"));
    tables.push_back(Describe("K対応分類", "要件分類 区分", "要件分類 区分 名称"));
    tables.push_back(Describe("A番号情報", "番号ID", "番号ID 連番 連番種類"));
    tables.push_back(Describe("A期日別番号情報", "番号ID 期日", "番号ID 期日 連番 履歴連番"));
    tables.push_back(Describe("A事業所別番号情報", "事業所コード 番号ID", "事業所コード 番号ID 連番 履歴連番"));
    tables.push_back(
        Describe("A事業所別期日別番号情報", "事業所コード 番号ID 期日", "事業所コード 番号ID 期日 連番 履歴連番"));
}

std::vector<Table> DescribeEnvironment() {
    return {
        Describe("データベース定義", "情報種類",
                 "情報種類 db dbmw ドライバ名 データベース名 サーバー名 接続文字列 ユーザーID パスワード プロバイダ名 "
                 "データソース名"),
        Describe(
            "動作環境定義", "動作環境定義ID",
            "動作環境定義ID 運用事業所コード インストール区分 CL更新実行区分 起動担当者コード バックアップ日付 "
            "運用条件切替日付 バックアップ方法 バックアップ日指定 月曜バックアップ 火曜バックアップ 水曜バックアップ "
            "木曜バックアップ 金曜バックアップ 土曜バックアップ 日曜バックアップ バックアップ開始時刻 "
            "バックアップフォルダ"),
        // Two processes may write the same row within one second, so neither of the next two has a key.
        Describe("プログラム稼動履歴", "",
                 "実行日付 プログラムID proccounter 摘要 運用事業所コード 起動担当者コード ユーザID", "実行日付"),
        Describe(
            "プログラム連携情報", "",
            "発信日時 発信プログラムID 受信プログラムID 受信期限 連携区分 起動連携情報 終了連携情報 運用事業所コード "
            "起動担当者コード ユーザID",
            "発信日時"),
        MenuTable()};
}

std::vector<Table> DescribeMain() {
    std::vector<Table> tables;
    tables.push_back(
        Describe("T営業活動", "担当者コード 日付",
                 "担当者コード 日付 事業所コード 部門コード セクションコード 営業活動備考 伝票発行区分 承認日付 "
                 "承認者コード 承認者備考 承認区分 ユーザID 登録日付 更新日付"));
    tables.push_back(DetailTable());
    AddDocuments(tables);
    tables.push_back(
        Describe("T閲覧", "事業所コード 番号基準日付 閲覧No",
                 "事業所コード 番号基準日付 閲覧No 閲覧日付 閲覧時刻 担当者コード 担当者名 閲覧情報 "
                 "伝票事業所コード 伝票番号基準日付 伝票No キー項目 閲覧区分 閲覧メモ 承認日付 承認者コード "
                 "承認区分 ユーザID 登録日付 更新日付"));
    AddMasters(tables);
    AddCodesAndNumbers(tables);
    return tables;
}

QString Quoted(const QStringList& names) {
    return "[" + names.join("],[") + "]";
}

}  // namespace

QStringList Table::ColumnNames() const {
    QStringList names;
    for (const Column& column : columns)
        names << column.name;
    return names;
}

const std::vector<Table>& EnvironmentTables() {
    static const std::vector<Table> tables = DescribeEnvironment();
    return tables;
}

const std::vector<Table>& MainTables() {
    static const std::vector<Table> tables = DescribeMain();
    return tables;
}

const Table* FindTable(const QString& name) {
    for (const std::vector<Table>* tables : {&EnvironmentTables(), &MainTables()})
        for (const Table& table : *tables)
            if (table.name == name) return &table;
    return nullptr;
}

QString CreateTableStatement(const Table& table) {
    QStringList parts;
    for (const Column& column : table.columns)
        parts << QString("[%1] %2%3")
                     .arg(column.name, column.integer ? "INTEGER" : "TEXT",
                          table.key.contains(column.name) ? " NOT NULL" : "");
    if (!table.key.isEmpty()) parts << "PRIMARY KEY (" + Quoted(table.key) + ")";
    return QString("CREATE TABLE [%1] (%2)").arg(table.name, parts.join(", "));
}

QStringList CreateIndexStatements(const Table& table) {
    QStringList statements;
    for (const QStringList& index : table.indexes)
        statements << QString("CREATE INDEX [%1_%2] ON [%1] (%3)").arg(table.name, index.join(u'_'), Quoted(index));
    return statements;
}

const std::array<QString, kDocumentKindCount>& DocumentKinds() {
    static const std::array<QString, kDocumentKindCount> kinds = {"出金",     "案件",     "営業引合",
                                                                  "営業見積", "顧客注文", "営業受注"};
    return kinds;
}

}  // namespace session
