#pragma once

#include <QDateTime>
#include <QString>
#include <array>

// The slot that a move or an add makes: what the user edits on the move screen, and how its commands shift it.
namespace move {

/// The key of a slot as its row has it: staff code (5), date "yyyymmdd", start and end "hh:nn"; an end hour may be
/// above 23.
struct SlotKey {
    QString 担当者コード, 日付, 開始時刻, 終了時刻;
};

/// The target's items by their names. Date parts are "0000", "00", "00", hours and minutes "00"; an item that the user
/// emptied is empty.
struct TargetSlot {
    QString 移動日付年, 移動日付月, 移動日付日, 移動曜日;
    QString 移動開始時刻時, 移動開始時刻分, 移動終了時刻時, 移動終了時刻分;
    QString 移動担当者コード, 移動担当者名;
    QString 移動部門コード, 移動部門名;
    QString 移動セクションコード, 移動セクション名;
    QString 事業所コード;  ///< comes with the staff member and has no item

    SlotKey Key() const;
};

/// A text of the target under the name that its field and its item share.
struct TargetText {
    const char* name;
    QString TargetSlot::*field;
    int width;      ///< of its mask of zeros, and the most that can be typed
    int most = -1;  ///< the highest number that a part of a time may be; none where that is left to others
};

/// What is typed, in the order in which it is asked for. All of it has to be filled.
inline constexpr std::array<TargetText, 10> kTypedTexts{{
    {"移動日付年", &TargetSlot::移動日付年, 4},
    {"移動日付月", &TargetSlot::移動日付月, 2},
    {"移動日付日", &TargetSlot::移動日付日, 2},
    {"移動開始時刻時", &TargetSlot::移動開始時刻時, 2, 23},
    {"移動開始時刻分", &TargetSlot::移動開始時刻分, 2, 59},
    {"移動終了時刻時", &TargetSlot::移動終了時刻時, 2, 47},
    {"移動終了時刻分", &TargetSlot::移動終了時刻分, 2, 59},
    {"移動担当者コード", &TargetSlot::移動担当者コード, 5},
    {"移動部門コード", &TargetSlot::移動部門コード, 3},
    {"移動セクションコード", &TargetSlot::移動セクションコード, 3},
}};

/// What is shown beside it.
inline constexpr std::array<TargetText, 4> kEchoedTexts{{
    {"移動曜日", &TargetSlot::移動曜日, 0},
    {"移動担当者名", &TargetSlot::移動担当者名, 0},
    {"移動部門名", &TargetSlot::移動部門名, 0},
    {"移動セクション名", &TargetSlot::移動セクション名, 0},
}};

/// Number 1 to 10 of the first typed text that is empty; 0 when all are filled.
int CheckTargetFilled(const TargetSlot& target);

/// True when the text can stand in that item: empty, or digits that make no number above the highest.
bool Fits(const TargetText& item, const QString& text);

/// Sets date or times from a key.
void TakeDate(TargetSlot& target, const QString& date);
void TakeTimes(TargetSlot& target, const QString& start, const QString& end);

/// Repairs the date parts and tells the weekday. While a part is empty nothing is repaired and the weekday is empty.
void RepairDate(TargetSlot& target);

/// Moves the date. Nothing happens while a date part is empty.
void StepDate(TargetSlot& target, int days);

/// Moves start and end by so many minutes, earlier when negative. The start stays within its day and takes the date
/// along at midnight; the end keeps its distance, with an hour from 24 up where it has to. Nothing happens while a part
/// of date or times is empty.
void StepTimes(TargetSlot& target, int minutes);

/// Today, the start rounded down to ten minutes, the end 30 minutes later ("24:nn" late in the evening).
void SetToNow(TargetSlot& target, const QDateTime& now);

}  // namespace move
