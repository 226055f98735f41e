#include "diary/kept_list.h"

#include <QJsonDocument>

#include "diary/commands.h"
#include "diary/counterparty.h"
#include "diary/focus_gate.h"
#include "diary/kept_inputs.h"
#include "diary/outcome_words.h"
#include "diary/painting.h"
#include "diary/slot_input.h"

namespace diary {

namespace {

/// A row's key: the moment and its number, without what tells apart the files of two runs.
QString RowKey(const QString& id) {
    return u'C' + id.section(u'-', 0, 1);
}

screen::ListRow ShownRow(const QString& id, const QJsonObject& input) {
    const auto text = [&input](const char* name) { return input[QString::fromUtf8(name)].toString(); };
    const QString moment = text("moment");
    return {RowKey(id),
            {DateShown(moment) + " " + moment.mid(9, 2) + ":" + moment.mid(11, 2), text("reason"),
             DateShown(text("SlotDate")), text("StartTime") + "～" + text("EndTime"), text("相手先略称"),
             text("営業活動摘要").section(u'\n', 0, 0).trimmed()}};
}

const lists::ListDescription& KeptListDescription() {
    static const lists::ListDescription description = [] {
        lists::ListDescription list;
        list.name = QStringLiteral("wnd控え一覧");
        list.title = QStringLiteral("控え一覧");
        list.list = QStringLiteral("List控え");
        list.columns = {{"日時", 1900}, {"理由", 1900},   {"日付", 1300},
                        {"時刻", 1400}, {"相手先", 2300}, {"摘要", 4500}};
        list.canClear = false;
        return list;
    }();
    return description;
}

std::vector<screen::ListRow> ShownRows(DiaryContext& diary) {
    PruneKept(diary);
    std::vector<screen::ListRow> rows;
    for (const platform::KeptFiles::Entry& entry : diary.kept.List())
        rows.push_back(ShownRow(entry.id, QJsonDocument::fromJson(entry.text).object()));
    return rows;
}

void BringBack(DiaryContext& diary, const QString& key) {
    for (const platform::KeptFiles::Entry& entry : diary.kept.List()) {
        if (RowKey(entry.id) != key) continue;
        if (!KeepWhatLeaves(diary, QStringLiteral("別の控えを表示"))) return;
        PutInputOnScreen(diary, QJsonDocument::fromJson(entry.text).object());
        diary.state.PickedKept = entry.id;
        return;
    }
}

}  // namespace

void OpenKeptList(DiaryContext& diary) {
    screen::Control& back = *diary.state.LastLeftControl;
    const lists::OwnRows rows{[&diary] { return ShownRows(diary); },
                              [&diary](const QString& key) { BringBack(diary, key); }};
    diary.lists.OpenOwnList(KeptListDescription(), rows, back);
}

void PutInputOnScreen(DiaryContext& diary, const QJsonObject& input) {
    TakeInput(diary, input);
    diary.state.CameAs = ActivitySlot();
    diary.state.Loaded = LoadedRow();
    diary.state.ContactOf = PartyKey(diary.slot);
    // Whether a text was typed or a master's isn't known any more.
    diary.state.TypedTexts.clear();
    for (const SlotText& text : kPartyTexts)
        diary.state.TypedTexts.insert(QString::fromUtf8(text.name));
    diary.state.InputHappened = true;
    diary.session.NewSlotMode = RowsAtStart(diary, KeyOnScreen(diary)).isEmpty();
    diary.state.LoadedSlotDate = diary.session.NewSlotMode ? QString() : diary.session.SlotDate;
    PaintScreen(diary);
    RefreshCommands(diary);
    RefreshScreen(diary);
    SettleKey(diary);
    // What was under way in an item when its run ended goes on there.
    screen::Control* item = diary.form.Find(input["item"].toString());
    FocusControl(diary, item ? *item : *diary.state.FirstEntryControl);
    if (item) item->SetText(input["text"].toString());
}

}  // namespace diary
