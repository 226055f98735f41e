#include "identity/company_loader.h"

#include "items/text_rules.h"

namespace identity {

using session::TakeColumn;

namespace {

QString SiteSql(const QString& code) {
    return "SELECT * FROM M事業所 WHERE コード = '" + code + "'";
}

/// The folders and files that a site may set otherwise than the company.
struct Override {
    const char* column;
    QString session::CompanyInformation::*field;
};
const Override kOverrides[] = {{"総合振込ファイル", &session::CompanyInformation::総合振込ファイル},
                               {"基本読込フォルダ", &session::CompanyInformation::基本読込フォルダ},
                               {"帳票イメージフォルダ", &session::CompanyInformation::帳票イメージフォルダ},
                               {"その他読込ファイル", &session::CompanyInformation::その他読込ファイル},
                               {"本支店連携フォルダ", &session::CompanyInformation::本支店連携フォルダ},
                               {"テキスト出力フォルダ", &session::CompanyInformation::テキスト出力フォルダ},
                               {"BACKUPフォルダ", &session::CompanyInformation::BACKUPフォルダ}};

}  // namespace

bool CompanyLoader::LoadCompanyInformation() {
    const bool found = LoadCompanyRow();
    LoadSite();
    std::unique_ptr<store::Recordset> row;
    context_.SiteCount = 0;
    if (data_.OpenMainRecordset(row,
                                QStringLiteral("SELECT COUNT(*) AS 事業所件数 FROM M事業所 WHERE コード <> '000'")))
        TakeColumn(*row, QStringLiteral("事業所件数"), context_.SiteCount);
    return found;
}

bool CompanyLoader::LoadCompanyRow() {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenMainRecordset(row, QStringLiteral("SELECT * FROM Mユーザ WHERE ID = '0001'"))) return false;
    session::CompanyInformation& company = context_.Company;
    TakeColumn(*row, QStringLiteral("名称"), company.名称);
    TakeColumn(*row, QStringLiteral("ドキュメントフォルダ"), company.ドキュメントフォルダ);
    TakeColumn(*row, QStringLiteral("決算月"), company.決算月);
    TakeColumn(*row, QStringLiteral("決算日"), company.決算日);
    TakeColumn(*row, QStringLiteral("伝票番号管理区分"), company.伝票番号管理区分);
    TakeColumn(*row, QStringLiteral("更新実行区分"), company.更新実行区分);
    for (const Override& item : kOverrides)
        TakeColumn(*row, item.column, company.*item.field);
    TakeColumn(*row, QStringLiteral("暗証番号有無"), context_.PinRequired);
    return true;
}

bool CompanyLoader::ReadSite(std::unique_ptr<store::Recordset>& row) {
    if (data_.OpenMainRecordset(row, SiteSql(context_.OperatingSiteCode))) return true;
    const QString headOffice = items::ZeroMask(3);
    // Only a store that can be read moves the installation: a failed read says nothing of the site, and a store without
    // any site is a damaged one.
    if (data_.MainReadFailed()) return false;
    if (!data_.OpenMainRecordset(row, SiteSql(headOffice))) return false;
    ResetOperatingSite(headOffice);
    return true;
}

void CompanyLoader::ResetOperatingSite(const QString& code) {
    context_.OperatingSiteCode = code;
    context_.SiteCode = code;
    data_.ExecuteConfigLogged("UPDATE 動作環境定義 SET  運用事業所コード = '" + code +
                              "' WHERE 動作環境定義ID = '001'");
}

void CompanyLoader::LoadSite() {
    std::unique_ptr<store::Recordset> row;
    if (!ReadSite(row)) return;
    TakeColumn(*row, QStringLiteral("コード"), context_.OperatingSiteCode);
    TakeColumn(*row, QStringLiteral("名称"), context_.OperatingSiteName);
    context_.SitePrivilegePin = row->Value(QStringLiteral("特権暗証番号")).value_or(QString());
    if (context_.OperatingSiteCode == items::ZeroMask(3)) return;
    TakeColumn(*row, QStringLiteral("暗証番号有無"), context_.PinRequired);
    TakeColumn(*row, QStringLiteral("更新実行区分"), context_.Company.更新実行区分);
    for (const Override& item : kOverrides) {
        const QString own = row->Value(item.column).value_or(QString());
        if (!own.isEmpty()) context_.Company.*item.field = own;
    }
}

QString CompanyLoader::ProgramTitle() {
    std::unique_ptr<store::Recordset> row;
    QString siteName;
    if (data_.OpenMainRecordset(row, SiteSql(context_.OperatingSiteCode)))
        TakeColumn(*row, QStringLiteral("名称"), siteName);
    QString title = session::kProgramId;
    if (context_.OperatingSiteCode != items::ZeroMask(3)) {
        if (!siteName.trimmed().isEmpty()) title += "(" + siteName + ")";
    } else if (context_.SiteCount > 0) {
        title += QStringLiteral("(全社)");
    }
    if (!context_.RunningStaffCode.isEmpty()) title += "「" + context_.RunningStaffName + "」";
    return title;
}

}  // namespace identity
