#pragma once

#include <vector>

#include "lists/list_description.h"

// The list windows family by family. list_catalogue.cpp gathers them.
namespace lists {

/// wnd担当者一覧.
ListDescription StaffList();

/// wnd部門一覧, wndセクション一覧 and wnd郵便番号一覧.
std::vector<ListDescription> SmallLists();

/// The five lists of one party master each, wnd得意先一覧 to wnd対応先一覧.
std::vector<ListDescription> PartyLists();

/// wnd相手先一覧, which searches all five party masters.
ListDescription CombinedPartyList();

/// The five lists of a party's contacts, wnd得意先御担当者一覧 to wnd対応先御担当者一覧.
std::vector<ListDescription> ContactLists();

/// The six lists of sales documents by number, wnd営業見積No一覧 to wnd出金No一覧.
std::vector<ListDescription> NumberLists();

/// The eleven lists of texts used before in a document table, wnd案件名一覧 to wnd受注納品先名一覧.
std::vector<ListDescription> NameLists();

// What the party lists and the combined list have in common:

/// The party kinds 得意先, 納品先, 仕入先, メーカ, 対応先 in the order of their numbers 1 to 5. A master is "M" and the
/// kind, its contacts' table "M", the kind and "御担当者", the key there the kind and "コード".
const QStringList& PartyKinds();

/// Search items of a party list; `staffOpening` is where its staff item starts.
std::vector<SearchItem> PartyItems(Opening staffOpening);

/// The modes of a party list.
std::vector<SearchMode> PartyModes();

/// The trading state, which a party list opens on 1.
Classification TradingState();

/// The columns of a party list behind its code and before it: 略称 to 住所B.
std::vector<ListColumn> PartyColumns();

/// The statement of one party kind.
ListStatement PartyStatement(const QString& kind);

}  // namespace lists
