#include "diary/slot_row.h"

#include "diary/text_items.h"
#include "session/data_access.h"

namespace diary {

using session::TakeColumn;

namespace {

void TakeDocument(const store::Recordset& row, const QString& kind, DocumentLink& link) {
    TakeColumn(row, kind + "新規区分", link.新規区分);
    TakeColumn(row, kind + "事業所コード", link.事業所コード);
    TakeColumn(row, kind + "番号基準日付", link.番号基準日付);
    TakeColumn(row, kind + "No", link.No);
}

}  // namespace

void TakeRow(const store::Recordset& row, ActivitySlot& slot, Skipped skipped) {
    TakeColumn(row, QStringLiteral("発信区分"), slot.発信区分);
    TakeColumn(row, QStringLiteral("応対方法"), slot.応対方法);
    TakeColumn(row, QStringLiteral("要件分類"), slot.要件分類);
    TakeColumn(row, QStringLiteral("対応分類"), slot.対応分類);
    TakeColumn(row, QStringLiteral("相手先区分"), slot.相手先区分);
    for (const SlotText& text : kPartyTexts)
        TakeText(row, text, slot);
    TakeColumn(row, QStringLiteral("相手先名称入力区分"), slot.相手先名称入力区分);
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        const QString name = session::DocumentKinds()[kind];
        if ((name == QStringLiteral("出金") && skipped.payment) || (name == QStringLiteral("案件") && skipped.deal))
            continue;
        TakeDocument(row, name, slot.documents[kind]);
    }
    TakeColumn(row, QStringLiteral("営業活動摘要"), slot.営業活動摘要);
    TakeColumn(row, QStringLiteral("承認日付"), slot.承認日付);
    TakeColumn(row, QStringLiteral("承認者コード"), slot.承認者コード);
    TakeColumn(row, QStringLiteral("承認区分"), slot.承認区分);
    TakeColumn(row, QStringLiteral("登録日付"), slot.登録日付);
    TakeColumn(row, QStringLiteral("更新日付"), slot.更新日付);
}

ActivitySlot SlotOfRow(const store::Recordset& row) {
    ActivitySlot slot;
    TakeRow(row, slot, {false, false});
    return slot;
}

}  // namespace diary
