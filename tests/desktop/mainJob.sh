#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# The main job in a real window: an X server of its own, a window manager, the program as users start
# it, and nothing but key presses and mouse clicks from outside. Reads the simulated radio, edits a
# channel and an option, writes, saves, reopens and leaves; then looks at the files.
#   mainJob.sh K520 K520-CLI LANGUAGE [JOB]
# LANGUAGE: 1 Chinese, 3 English. JOB: main, or tones, which writes and saves while a tone is being
# typed and its suggestions are open.
set -euo pipefail
k520=$1
cli=$2
language=$3
job=${4:-main}
readonly skipped=77

for tool in Xvfb openbox xdotool; do
    command -v $tool >/dev/null || {
        echo "skipped: there is no $tool on this machine"
        exit $skipped
    }
done

# Titles of the windows, as far as they tell them apart.
case $language in
    1) main=K520 communication=通信 notice=提示 ;;
    *) main=K520 communication=Communicat notice=Notice ;;
esac

folder=$(mktemp -d)
export K520_HOME=$folder/home XDG_RUNTIME_DIR=$folder/run QT_QPA_PLATFORM=xcb
export LC_ALL=C.UTF-8
# The X keyboard library takes names that end without a zero with strndup, which is allowed; and what
# the system's libraries keep to the end is theirs.
export ASAN_OPTIONS=${ASAN_OPTIONS:-}:strict_string_checks=0:detect_leaks=0
mkdir -m 700 "$K520_HOME" "$XDG_RUNTIME_DIR"
finish() {
    local status=$?
    if ((status != 0)); then
        echo "the windows there were:"
        xdotool search --onlyvisible --name . getwindowname %@ || true
    fi
    # shellcheck disable=SC2046 # one number a word
    kill $(jobs -p) 2>/dev/null || true
    rm -r "$folder"
}
trap finish EXIT

fail() {
    echo "failed: $*"
    exit 1
}

# Looks every 50 ms, for 20 s at most, whether a command succeeds.
wait_for() {
    for _ in {1..400}; do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.05
    done
    fail "this never came true: $*"
}
shown() { [[ -n $(xdotool search --onlyvisible --name "$1") ]]; }
gone() { ! shown "$1"; }
active() { [[ $(xdotool getactivewindow getwindowname) == *$1* ]]; }
# Waits until a window has the keyboard.
window() { wait_for active "$1"; }
press() { xdotool key --clearmodifiers "$@"; }
# Presses a key until the window that it opens has the keyboard: the key may come while the keyboard
# is still on its way back from a dialog.
open_with() {
    local condition=("${@:2}")
    for _ in {1..10}; do
        press "$1"
        for _ in {1..40}; do
            ! "${condition[@]}" >/dev/null 2>&1 || return 0
            sleep 0.05
        done
    done
    fail "$1 had no effect: ${condition[*]}"
}
text() { xdotool type --delay 5 "$1"; }
# The receive frequencies of channels 1 and 2 in Hz.
frequencies() {
    "$cli" show --json "$1" | grep -oP '"rx_hz": *\K\d+' | head -n 2 | tr '\n' ' '
}

prepare() {
    for number in {1..16}; do
        "$cli" config set Ports "COM$number" virtual
    done
    "$cli" config set Setting Language "$language"
    "$cli" config set Setting FirRun 0
    # A part of the memory, so that a session takes two seconds: the channels, and the options.
    "$cli" config set Setting ReadEndAddr 03FF
    "$cli" config set Setting WriteEndAddr 03FF
}

start() {
    mkfifo "$folder/number"
    Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$folder/number" 2>/dev/null &
    read -r number <"$folder/number"
    export DISPLAY=:$number
    openbox &
    # Until the window manager answers: it gives the keyboard to windows that come after it.
    wait_for xdotool get_num_desktops
    "$k520" &
    program=$!
    window "$main"
}

# The dialog closes only after the session: Escape means nothing while it is busy.
closed_by_escape() {
    press Escape
    gone "$communication"
}
session() {
    open_with "$1" active "$communication"
    press Return
    wait_for closed_by_escape
    window "$main"
}

file_dialog_has_keyboard() {
    local title
    title=$(xdotool getactivewindow getwindowname)
    [[ -n $title && $title != *$main* && $title != *$notice* ]]
}
file_dialog() {
    press ctrl+a
    text "$1"
    press Return
    window "$main"
}

click_at() {
    eval "$(xdotool getactivewindow getwindowgeometry --shell)"
    xdotool mousemove $((X + WIDTH * $1 / 100)) $((Y + HEIGHT * $2 / 100)) click 1
}

main_job() {
    session F5
    # A click into the channels, the first cell, a frequency, and the answer of the grid: the next row.
    click_at 40 40
    press ctrl+Home
    text 446.0124
    press Return
    text 446.05
    press Return
    press F7
    press End
    session F6
    open_with ctrl+s active "$notice"
    open_with alt+y file_dialog_has_keyboard
    file_dialog "$folder/saved.dat"
    wait_for test -s "$folder/saved.dat"
    open_with ctrl+n active "$notice"
    open_with alt+y active "$main"
    open_with ctrl+o file_dialog_has_keyboard
    file_dialog "$folder/saved.dat"
    open_with ctrl+s active "$notice"
    open_with alt+y file_dialog_has_keyboard
    file_dialog "$folder/again.dat"
    wait_for test -s "$folder/again.dat"
    open_with ctrl+q active "$notice"
    press alt+y
    wait "$program" || fail "the program ended with $?"
}

tones_job() {
    session F5
    click_at 40 40
    # Two channels, and in each the decode tone.
    press ctrl+Home
    text 446.05
    press Return
    text 446.05
    press Return
    press ctrl+Home Right Right
    text 151.4
    session F6
    press Down
    text 141.3
    open_with ctrl+s active "$notice"
    open_with alt+y file_dialog_has_keyboard
    file_dialog "$folder/saved.dat"
    wait_for test -s "$folder/saved.dat"
    open_with ctrl+q active "$notice"
    press alt+y
    wait "$program" || fail "the program ended with $?"
}

# The decode tones of channels 1 and 2.
tones() {
    "$cli" show --json "$1" | grep -oP '"decode_tone": *"\K[^"]+' | head -n 2 | tr '\n' ' '
}

look_at_tones() {
    "$cli" read -p virtual -o "$folder/radio.dat"
    [[ $(tones "$folder/radio.dat") == "151.4 "* ]] || fail "the radio has $(tones "$folder/radio.dat")"
    [[ $(tones "$folder/saved.dat") == "151.4 141.3 " ]] || fail "saved: $(tones "$folder/saved.dat")"
}

look_at_main() {
    "$cli" read -p virtual -o "$folder/radio.dat"
    for name in saved again radio; do
        [[ $(frequencies "$folder/$name.dat") == "446012500 446050000 " ]] ||
            fail "channels in $name.dat: $(frequencies "$folder/$name.dat")"
        "$cli" show "$folder/$name.dat" | grep -E '300 ?(s|秒)' || fail "time-out timer in $name.dat"
    done
    "$cli" diff "$folder/saved.dat" "$folder/again.dat" || fail "saving again changed something"
}

prepare
start
"${job}_job"
"look_at_$job"
echo "the $job job is done"
