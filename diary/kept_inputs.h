#pragma once

#include <QJsonArray>

#include "diary/diary_context.h"

// 控え: what was typed and left the screen without being stored, and the rows that a save replaced or a delete removed.
// Fifty of them for fourteen days, of each login and database its own; they can be brought back onto the screen.
namespace diary {

/// Puts a slot on the list, with why it stands there; one of the same content that stands there goes. Gives its id,
/// empty when it couldn't be written, which user and run history are told.
QString KeepInput(DiaryContext& diary, const QJsonObject& input, const QString& reason);

/// Something else is about to take the place of what stands on the screen: keeps it when anything beyond key and
/// classes was typed or chosen since it came there, under the key that it had last, and tells the user. False when it
/// couldn't be written.
bool KeepWhatLeaves(DiaryContext& diary, const QString& reason);

/// Puts stored rows on the list. Gives their ids.
QStringList KeepRows(DiaryContext& diary, const QJsonArray& rows, const QString& reason);

/// Takes off the list what is too old or too much.
void PruneKept(DiaryContext& diary);

/// What is being typed needs no keeping any more: it is saved, on the list, or the user gave it up.
void ForgetTyped(DiaryContext& diary);

/// Tells the user that something can't be kept, and the run history, once, that nothing can.
void TellKeepingFailed(DiaryContext& diary);

/// True while the screen holds something beyond key and classes that was typed or chosen since it came there.
bool HoldsInput(const DiaryContext& diary);

/// The key on the screen counts as the one of what stands there; runs behind each gesture that doesn't type a key.
void SettleKey(DiaryContext& diary);

/// Watches while a master's row is taken over: what the user typed and it replaces goes on the list.
class TypedTextGuard {
  public:
    explicit TypedTextGuard(DiaryContext& diary) : diary_(diary), before_(diary.slot) {}
    ~TypedTextGuard();
    TypedTextGuard(const TypedTextGuard&) = delete;
    TypedTextGuard& operator=(const TypedTextGuard&) = delete;

  private:
    DiaryContext& diary_;
    ActivitySlot before_;
};

}  // namespace diary
