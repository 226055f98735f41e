#!/usr/bin/env bash
# play_registration.sh DRIVER ROOT SCREENSHOT
#
# Starts a virtual display, registers one slot of today on the install tree ROOT through the real window, at a minute
# that is still free, saves a picture of the screen that tells what it still lacks, and prints the stored row.
set -euo pipefail
driver=$1 root=$2 screenshot=$3
staff=00001
database=$root/data/gnrdb.accdb

# shellcheck source=scripts/driver.sh
source "$(dirname "${BASH_SOURCE[0]}")/driver.sh"

# Finds a minute of today at which nothing of this staff member begins: $hour, $minute, and the end $end_hour.
choose_time() {
    local tries
    day=$(date +%Y%m%d)
    for ((tries = 0; tries < 500; tries++)); do
        hour=$(printf %02d $((RANDOM % 23))) minute=$(printf %02d $((RANDOM % 60)))
        end_hour=$(printf %02d $((10#$hour + 1)))
        slot="担当者コード = '$staff' AND 日付 = '$day' AND 開始時刻 = '$hour:$minute'"
        [[ $(query "$database" "SELECT COUNT(*) FROM T営業活動明細 WHERE $slot") != 0 ]] || return 0
    done
    fail "no free minute is left today"
}

fill_screen() {
    enter 営業活動日付年 "${day:0:4}"
    enter 営業活動日付月 "${day:4:2}"
    enter 営業活動日付日 "${day:6:2}"
    enter 開始時刻時 "$hour"
    enter 開始時刻分 "$minute"
    enter 終了時刻時 "$end_hour"
    enter 終了時刻分 "$minute"
    enter 担当者コード "$staff"
    click opb_発信区分
    click opb_応対方法
    click opb_要件分類
    play '{"do":"set","item":"相手先区分","value":1}'
    enter 相手先コード 000001
    enter 営業活動摘要 '新製品のご案内。見積のご依頼をいただく。'
}

start_display
choose_time
start_driver "$driver" --root "$root"
play_to frm活動手帳 '{"do":"state"}'
fill_screen
tell '{"do":"key","key":"F12"}'      # too early: the handling is missing, and the screen says so
play_to frm活動手帳 '{"do":"state"}' # all is drawn when this is answered
import -window root "$screenshot"
play '{"do":"set","item":"対応分類","index":0,"value":1}'
play '{"do":"focus","item":"営業活動摘要"}'
play_to msg登録確認 '{"do":"click","item":"btn_登録"}'
play_to frm活動手帳 '{"do":"click","item":"btn_登録"}'

row=$(query -line "$database" "SELECT * FROM T営業活動明細 WHERE $slot")
[[ -n $row ]] || fail "no row was stored: the last answer was $answer"
echo "Registered for staff member $staff on $day at $hour:$minute; the row of T営業活動明細 in $database:"
echo
sed -E 's/^ *([^ ]+) = ?/  \1: /' <<<"$row"
echo
echo "The screen, shortly before it was registered: $screenshot"
