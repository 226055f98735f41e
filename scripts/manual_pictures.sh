#!/usr/bin/env bash
# manual_pictures.sh [BIN]
#
# Takes the pictures of docs/manual anew, with the programs in BIN (build/release/bin): makes a demo company of its own,
# plays its screens on a virtual display and saves what stands there.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bin=${1:-build/release/bin}
# shellcheck source=scripts/driver.sh
source scripts/driver.sh
root=$work/demo
pictures=docs/manual/images

# The windows as they stand, without the bare display, which is black, round and between them, in as few colours as show
# no difference.
take() {
    play '{"do":"state"}' # all is drawn when this is answered
    import -window root "$work/$1.png"
    convert "$work/$1.png" -define trim:edges=east,south -trim +repage -fill white -opaque black +dither -colors 96 \
        "PNG8:$pictures/$1.png"
}

# Brings a stored slot onto the screen; its key begins like $key.
go_to() {
    enter 営業活動日付年 "${1:3:4}"
    enter 営業活動日付月 "${1:7:2}"
    enter 営業活動日付日 "${1:9:2}"
    enter 開始時刻時 "${1:11:2}"
    enter 開始時刻分 "${1:14:2}"
    enter 終了時刻時 "${1:16:2}"
    enter 終了時刻分 "${1:19:2}"
    play '{"do":"focus","item":"担当者コード"}'
    play '{"do":"focus","item":"相手先コード"}'
}

"$bin/katsudo-setup" create --root "$root" --demo --staff 12 --parties 200 --slots 400 --documents 60 --today 20260424
mkdir -p "$work/机/図面"
head -c 310000 /dev/zero >"$work/机/御見積書.doc"
touch "$work/机/図面/平面図.txt"
touch -d 2026-04-22 "$work/机/御見積書.doc"
staff=00001
# The newest visit to a customer with a memo that this staff member has stored.
key=$(query "$root/data/gnrdb.accdb" "SELECT '000' || 日付 || 開始時刻 || 終了時刻 || 担当者コード FROM T営業活動明細
    WHERE 担当者コード = '$staff' AND 相手先区分 = '1' AND 営業活動摘要 <> '' ORDER BY 日付 DESC, 開始時刻 LIMIT 1")
[[ -n $key ]] || fail "the demo company has no slot to show"
mapfile -t others < <(query "$root/data/gnrdb.accdb" "SELECT '000' || 日付 || 開始時刻 || 終了時刻 FROM T営業活動明細
    WHERE 担当者コード = '$staff' AND 日付 < '${key:3:8}' ORDER BY 日付 DESC LIMIT 2")

start_display
start_driver "$bin/katsudo-drive" --root "$root" --now "20260424 173000" --login "eigyo$staff" --computer PC01 --tail "$key"
play_to frm活動手帳 '{"do":"state"}'
take main
play '{"do":"choose","item":"tab_詳細","entry":1}'
play '{"do":"click","item":"btn_付属書類追加"}'
play "{\"do\":\"path\",\"path\":\"$work/机/御見積書.doc\"}"
play '{"do":"click","item":"btn_フォルダ"}'
play_to frm活動手帳 "{\"do\":\"path\",\"path\":\"$work/机/図面\"}"
play '{"do":"select","item":"List付属書類","row":0}'
take papers
play '{"do":"focus","item":"担当者コード"}'
play_to wnd担当者一覧 '{"do":"key","key":"Ctrl"}'
take list
play_to frm活動手帳 '{"do":"key","key":"Escape"}'
play '{"do":"choose","item":"tab_詳細","entry":0}'
play_to sbf営業日程移動 '{"do":"click","item":"btn_移動"}'
take move
play_to frm活動手帳 '{"do":"click","item":"btn_終了"}'
enter 営業活動摘要 "見積書をお渡しした。来週お返事をいただく。"
play_to msg登録確認 '{"do":"click","item":"btn_登録"}'
take confirm
play_to frm活動手帳 '{"do":"key","key":"N"}'
for other in "${others[@]}"; do
    go_to "$other"
    enter 営業活動摘要 "カタログをお届けした。"
done
go_to "$key"
play_to wnd控え一覧 '{"do":"key","key":"Ctrl+F2"}'
take kept
ls -l "$pictures"
