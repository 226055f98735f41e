#pragma once

#include <memory>

#include "diary/diary_context.h"

// Whom a slot concerns. The data is copied into the slot, so that it keeps what was true at the time.
namespace diary {

/// Highest kind of counterparty; 1 customer, 2 delivery destination, 3 supplier, 4 maker, 5 other party.
inline constexpr int kLastCounterpartyKind = 5;

/// Table of the party masters of a kind 1 to 5; empty for others.
QString PartyTable(int kind);

/// Table of the contacts of a kind 1 to 5, and its column with the party's code; empty for others.
QString ContactTable(int kind);
QString ContactKeyColumn(int kind);

/// Kind and code of the slot's counterparty as one text.
QString PartyKey(const ActivitySlot& slot);

/// Looks a code up in the master of the slot's kind. Null when there is none.
std::unique_ptr<store::Recordset> ResolveCounterparty(DiaryContext& diary, const QString& code);

/// Copies a party's row into the slot: a Null is skipped, an empty master text keeps what was typed.
void TakeCounterparty(DiaryContext& diary, const store::Recordset& row);

/// Takes off the slot what TakeCounterparty fills; the kind stays.
void ForgetCounterparty(DiaryContext& diary);

/// Looks a contact up under the slot's counterparty. Null when there is none.
std::unique_ptr<store::Recordset> ResolveContact(DiaryContext& diary, const QString& code);
void TakeContact(DiaryContext& diary, const store::Recordset& row);
void ForgetContact(DiaryContext& diary);

/// What leaving the items does.
void CounterpartyCodeLeft(DiaryContext& diary);
void PostcodeLeft(DiaryContext& diary);
void ContactCodeLeft(DiaryContext& diary);

}  // namespace diary
