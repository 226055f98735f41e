#pragma once

#include "diary/diary_context.h"

namespace diary {

/// The main screen `frm活動手帳`: puts the items on the form and ties their events to the routines of this folder. It
/// decides nothing itself.
class DiaryScreen {
  public:
    /// `diary` must outlive the screen.
    explicit DiaryScreen(DiaryContext& diary);

    /// Aims the focus where a fresh screen has it. Runs once the form is shown.
    void FocusAfterShow();

  private:
    void Load();
    void WireFocus();
    void WireDateAndTime();
    void WireStaff();
    void WireClassification();
    void WireCounterparty();
    void WireCommands();
    void WireLists();
    void WireDocuments();
    void WireSiblings();
    void WireAttachments();
    void OnLeaving(const char* name, void (*left)(DiaryContext&));
    void LeaveDateOrTime(screen::Control& item, QString& field, const QString& mask, void (*normalize)(DiaryContext&));

    /// A handler that returns at once while the screen is filled or waits for another program.
    std::function<void()> Awake(std::function<void()> handler);
    screen::Control& Item(const char* name, int index = -1) { return diary_.Item(name, index); }

    DiaryContext& diary_;
};

}  // namespace diary
