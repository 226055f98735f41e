# shellcheck shell=bash
# For scripts that play the client through its real windows on a virtual display: source it, call start_display and
# start_driver DRIVER ARGUMENT…, then play. Everything that was started ends with the script.
work=$(mktemp -d)
# What the client keeps of unfinished work is this play's own: nothing of an earlier run is offered to it.
export XDG_STATE_HOME=$work/state
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
    echo "$(basename "$0") was not played: $1" >&2
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
    "$@" --window <"$work/commands" >"$work/answers" 2>"$work/driver.log" &
    children+=($!)
    exec 5>"$work/commands" 6<"$work/answers"
    trap '' PIPE # a driver that died is told by the answer that is missing
}

# Gives the driver one command; the answer is left in $answer.
tell() {
    answer=
    printf '%s\n' "$1" >&5 2>/dev/null || fail "the driver has ended before $1"
    IFS= read -r -t 120 answer <&6 || fail "no answer to $1"
}

# The same; ends the script when the client refuses it.
play() {
    tell "$1"
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
