#include "setup/demo_company.h"
#include "setup/empty_rows.h"

namespace setup {
namespace {

constexpr int kRowsBetweenReports = 5000;

QStringList OwnColumns(const QString& kind) {
    if (kind == "出金") return {"実質出金金額合計"};
    if (kind == "案件")
        return {"案件名",
                "相手先区分",
                "相手先コード",
                "相手先略称",
                "相手先郵便番号",
                "相手先住所A",
                "相手先住所B",
                "相手先住所C",
                "相手先名称A",
                "相手先名称B",
                "相手先電話",
                "相手先FAX",
                "相手先名称入力区分",
                "相手先御担当者コード",
                "相手先御担当者名",
                "相手先御担当者電話"};
    QStringList columns = {"得意先コード", "納品先コード", "得意先名称A", "得意先名称B"};
    if (kind == "営業受注")
        return columns << "納品先名称A"
                       << "納品先名称B"
                       << "営業受注納期"
                       << "受注納期"
                       << "受注金額合計";
    columns << "得意先対応先区分";
    if (kind == "営業引合")
        return columns << "営業引合商品名A"
                       << "営業引合納期"
                       << "営業引合金額";
    return columns << "タイトル" << (kind == "営業見積" ? "見積金額合計" : "注文金額合計");
}

QStringList OwnValues(const QString& kind, const Document& document) {
    const Party& party = document.customer;
    if (kind == "出金") return {document.amount};
    if (kind == "案件")
        return {document.title,
                "1",
                party.code,
                party.shortName,
                party.postcode,
                party.addressA,
                party.addressB,
                party.addressC,
                party.nameA,
                party.nameB,
                party.phone,
                party.fax,
                "1",
                party.contactCode,
                party.contactName,
                party.contactPhone};
    QStringList values = {party.code, document.destination.code, party.nameA, party.nameB};
    if (kind == "営業受注")
        return values << document.destination.nameA << document.destination.nameB << document.deliveryDate
                      << document.deliveryDate << document.amount;
    values << "0";
    if (kind == "営業引合") return values << document.title << document.deliveryDate << document.amount;
    return values << document.title << document.amount;
}

void FillKind(StoreFill& fill, const DemoWorld& world, int place, const Progress& progress) {
    const QString kind = session::DocumentKinds()[place];
    const qint64 total = qint64(world.Sizes().documents) * session::kDocumentKindCount;
    const qint64 before = qint64(world.Sizes().documents) * place;
    RowSink& rows = fill.Rows("T" + kind, QStringList{"事業所コード", "番号基準日付", kind + "No", kind + "日付",
                                                      "担当者コード", "部門コード", "セクションコード"} +
                                              OwnColumns(kind));
    for (int i = 0; i < world.Sizes().documents && !fill.Failed(); ++i) {
        const Document document = world.DocumentAt(place, i);
        const Staff staff = world.StaffAt(document.staff);
        rows.Add(QStringList{document.site, document.baseDate, document.number, document.date, staff.code,
                             staff.department, staff.section} +
                 OwnValues(kind, document));
        if ((i + 1) % kRowsBetweenReports == 0) progress("documents", before + i + 1, total);
    }
    progress("documents", before + world.Sizes().documents, total);
}

}  // namespace

void FillDemoDocuments(StoreFill& fill, const DemoWorld& world, const Progress& progress) {
    for (int place = 0; place < session::kDocumentKindCount; ++place)
        FillKind(fill, world, place, progress);
    RowSink& series = fill.Rows("A期日別番号情報", {"番号ID", "期日", "連番", "履歴連番"});
    for (const Series& each : NumberSeries())
        if (!each.document.isEmpty())
            for (const auto& [year, count] : world.DocumentYears())
                series.Add({each.id, year, Code(count - 1, 8), "00000000"});
}

}  // namespace setup
