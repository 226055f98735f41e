#pragma once

#include <QString>
#include <array>

#include "session/schema.h"

namespace diary {

/// A link of the slot to a sales document: its site (3), numbering base date ("yyyymmdd") and number (8).
struct DocumentLink {
    int 新規区分 = 0;  ///< 1 when no other slot referred to the document
    QString 事業所コード, 番号基準日付, No;
};

/// The record behind the main screen: every value of one slot beside its key, which SessionContext holds. Fields bear
/// the names of their items and columns. Numbers are 0 when unset.
struct ActivitySlot {
    QString 営業活動曜日;
    QString 担当者名, 部門コード, 部門名, セクションコード, セクション名;
    int 発信区分 = 0, 応対方法 = 0, 要件分類 = 0;  ///< places in their option groups, from 1
    int 対応分類 = 0;                              ///< index in the list beside the matter
    int 相手先区分 = 0;                            ///< 1 customer to 5 other party
    int 相手先名称入力区分 = 1;                    ///< 1 free typing, 0 name from the master
    QString 相手先コード, 相手先略称, 相手先郵便番号, 相手先住所A, 相手先住所B, 相手先住所C, 相手先名称A, 相手先名称B,
        相手先電話, 相手先FAX;
    QString 相手先御担当者コード, 相手先御担当者名, 相手先御担当者電話;
    std::array<DocumentLink, session::kDocumentKindCount> documents;  ///< in the order of session::DocumentKinds()
    QString 営業活動摘要;
    QString 承認日付, 承認者コード;
    int 承認区分 = 0;
    QString 登録日付, 更新日付;
};

/// A text of the record under the name that its field, item and column share.
struct SlotText {
    const char* name;
    QString ActivitySlot::*field;
};

/// Counterparty and contact texts in the order of their columns.
inline constexpr std::array<SlotText, 13> kPartyTexts{{
    {"相手先コード", &ActivitySlot::相手先コード},
    {"相手先略称", &ActivitySlot::相手先略称},
    {"相手先郵便番号", &ActivitySlot::相手先郵便番号},
    {"相手先住所A", &ActivitySlot::相手先住所A},
    {"相手先住所B", &ActivitySlot::相手先住所B},
    {"相手先住所C", &ActivitySlot::相手先住所C},
    {"相手先名称A", &ActivitySlot::相手先名称A},
    {"相手先名称B", &ActivitySlot::相手先名称B},
    {"相手先電話", &ActivitySlot::相手先電話},
    {"相手先FAX", &ActivitySlot::相手先FAX},
    {"相手先御担当者コード", &ActivitySlot::相手先御担当者コード},
    {"相手先御担当者名", &ActivitySlot::相手先御担当者名},
    {"相手先御担当者電話", &ActivitySlot::相手先御担当者電話},
}};

/// The staff group's texts beside the staff code itself.
inline constexpr std::array<SlotText, 5> kStaffTexts{{
    {"担当者名", &ActivitySlot::担当者名},
    {"部門コード", &ActivitySlot::部門コード},
    {"部門名", &ActivitySlot::部門名},
    {"セクションコード", &ActivitySlot::セクションコード},
    {"セクション名", &ActivitySlot::セクション名},
}};

}  // namespace diary
