#!/usr/bin/env bash
# play_registration.sh DRIVER ROOT SCREENSHOT
#
# Starts a virtual display, registers one slot of today on the install tree ROOT through the real window, at a minute
# that is still free, saves a picture of the filled screen and prints the stored row.
set -euo pipefail
driver=$1 root=$2 screenshot=$3
staff=00001
database=$root/data/gnrdb.accdb

work=$(mktemp -d)
children=()
clean_up() {
    local child
    for child in "${children[@]}"; do
        kill "$child" 2>/dev/null || true
    done
    wait
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

fail() {
    echo "The registration was not played: $1" >&2
    sed 's/^/  driver: /' "$work/driver.log" >&2 2>/dev/null || true
    exit 1
}

start_display() {
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
    children+=($!)
    local tries
    for ((tries = 0; tries < 200; tries++)); do
        if [[ -s $work/display ]]; then
            DISPLAY=:$(<"$work/display")
            export DISPLAY QT_QPA_PLATFORM=xcb
            return
        fi
        kill -0 "${children[0]}" 2>/dev/null || break
        sleep 0.1
    done
    cat "$work/xvfb.log" >&2
    fail "no virtual display"
}

start_driver() {
    mkfifo "$work/commands" "$work/answers"
    "$driver" --root "$root" --window <"$work/commands" >"$work/answers" 2>"$work/driver.log" &
    children+=($!)
    exec 5>"$work/commands" 6<"$work/answers"
    trap '' PIPE # a driver that died is told by the answer that is missing
}

# Gives the driver one command; the answer is left in $answer. Ends the script when the client refuses it.
play() {
    answer=
    printf '%s\n' "$1" >&5 2>/dev/null || fail "the driver has ended before $1"
    IFS= read -r -t 120 answer <&6 || fail "no answer to $1"
    [[ $answer == *'"ok":true'* && $answer != *'"ended":true'* ]] || fail "$1 was answered by $answer"
}

# The same, and the window named must then be in front, with no message box over it.
play_to() {
    play "$2"
    [[ $answer == *"\"window\":\"$1\""* && $answer == *'"message":null'* ]] || fail "$2 led to $answer, not to $1"
}

enter() {
    play "{\"do\":\"focus\",\"item\":\"$1\"}"
    play "{\"do\":\"type\",\"text\":\"$2\"}"
}

click() {
    play "{\"do\":\"click\",\"item\":\"$1\",\"index\":${2:-0}}"
}

query() {
    sqlite3 -readonly -cmd '.timeout 5000' "$@"
}

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
    play '{"do":"set","item":"対応分類","index":0,"value":1}'
    play '{"do":"set","item":"相手先区分","value":1}'
    enter 相手先コード 000001
    enter 営業活動摘要 '新製品のご案内。見積のご依頼をいただく。'
}

start_display
choose_time
start_driver
play_to frm活動手帳 '{"do":"state"}'
fill_screen
play_to frm活動手帳 '{"do":"state"}' # all is drawn when this is answered
import -window root "$screenshot"
play_to msg登録確認 '{"do":"click","item":"btn_登録"}'
play_to frm活動手帳 '{"do":"click","item":"btn_登録"}'

row=$(query -line "$database" "SELECT * FROM T営業活動明細 WHERE $slot")
[[ -n $row ]] || fail "no row was stored: the last answer was $answer"
echo "Registered for staff member $staff on $day at $hour:$minute; the row of T営業活動明細 in $database:"
echo
sed -E 's/^ *([^ ]+) = ?/  \1: /' <<<"$row"
echo
echo "The filled screen, before it was registered: $screenshot"
