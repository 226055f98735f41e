#pragma once

#include "diary/diary_context.h"
#include "move/target_slot.h"
#include "screen/focus_walk.h"

namespace move {

/// What the routines of the move screen share. One for the process, made where the client is put together.
struct MoveContext {
    diary::DiaryContext& diary;

    screen::Form form{QStringLiteral("sbf営業日程移動")};
    screen::ResultLine result{form};
    SlotKey source{};
    TargetSlot target{};
    /// The target's item that had the focus last; a refused command gives it back.
    screen::Control* lastActive = nullptr;
    /// Statements that had failed in this run when the command under way began to write.
    int failuresBefore = 0;

    screen::Control& Item(const char* name) { return form.At(QString::fromUtf8(name)); }
    void ShowNotice(const QString& text) { Item("お知らせ").SetCaption(text); }
    void Focus(screen::Control& item) { screen::MoveFocusTo(form, item, diary.pick.PendingFocusControl); }
    void PaintTarget() {
        for (const TargetText& text : kTypedTexts)
            Item(text.name).SetText(target.*text.field);
        for (const TargetText& text : kEchoedTexts)
            Item(text.name).SetText(target.*text.field);
    }
};

}  // namespace move
