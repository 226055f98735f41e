#pragma once

#include "diary/diary_context.h"
#include "diary/list_gestures.h"

// The sales documents that a slot points at. All six kinds work alike; what differs is in one table.
namespace diary {

/// Places of the kinds in ActivitySlot::documents.
enum DocumentPlace : std::size_t { k出金, k案件, k営業引合, k営業見積, k顧客注文, k営業受注 };

/// The statement that fetches a document, with the names of its staff member, department and section.
QString DocumentStatement(std::size_t kind, const QString& site, const QString& baseDate, const QString& number);

/// Finds a document by its whole reference, and notes the look in the viewing log. Null when there is none.
std::unique_ptr<store::Recordset> FetchDocument(DiaryContext& diary, std::size_t kind, const QString& site,
                                                const QString& baseDate, const QString& number);

/// Copies a document into the slot: its reference, the mark of a first reference, and for payments and deals what an
/// empty screen lacks. A staff member that comes by it brings the slot on file at that time, below the document.
void TakeDocument(DiaryContext& diary, std::size_t kind, const store::Recordset& row);

/// Takes the document off the slot.
void ForgetDocument(DiaryContext& diary, std::size_t kind);

/// What leaving a number item does.
void DocumentNumberLeft(DiaryContext& diary, std::size_t kind);

/// Opens the list of a kind over its number item.
void OpenDocumentList(DiaryContext& diary, std::size_t kind, Gesture gesture);

}  // namespace diary
