#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Takes all pictures of the guides and the README anew, from the real programs: an X server of its own, a
# window manager, key presses from outside, and a simulated radio at /dev/ttyUSB0 at the speed of a real
# one. Takes five minutes, more on a busy machine.
#
#   tools/pictures.sh BIN-FOLDER [FOLDER]    into FOLDER, by default docs/images
#
# Run it as root: what it puts into /dev and /home is seen by these programs only.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
bin=$(realpath "${1:?usage: tools/pictures.sh BIN-FOLDER [FOLDER]}")
pictures=$(realpath "${2:-$here/../docs/images}")

for tool in Xvfb openbox xdotool import convert script; do
    command -v "$tool" >/dev/null || {
        echo "there is no $tool on this machine"
        exit 1
    }
done
if [[ ${K520_PICTURES_APART:-} != yes ]]; then
    K520_PICTURES_APART=yes exec unshare --mount --propagation private "$0" "$bin" "$pictures"
fi

folder=$(mktemp -d)
finish() {
    # shellcheck disable=SC2046 # one number a word
    kill $(jobs -p) 2>/dev/null || true
    wait
    umount --lazy "$folder/pts" "$folder/apart" 2>/dev/null || true
    rm -rf --one-file-system "$folder"
}
trap finish EXIT

# Changes below a folder stay in this script's own view of it.
apart() {
    local at=$folder/apart$1
    mkdir -p "$at/new" "$at/work"
    mount -t overlay overlay -o "lowerdir=$1,upperdir=$at/new,workdir=$at/work" "$1"
}
mkdir "$folder/apart" "$folder/pts"
mount -t tmpfs tmpfs "$folder/apart"
mount --bind /dev/pts "$folder/pts"
apart /dev
mount --bind "$folder/pts" /dev/pts
apart /home

PATH=$bin:$PATH
export K520_HOME=/home/dealer/k520 XDG_RUNTIME_DIR=$folder/run XDG_CONFIG_HOME=$folder/config
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
mkdir -p "$K520_HOME" "$XDG_CONFIG_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$folder/number" 2>/dev/null &
read -r number <"$folder/number"
export DISPLAY=:$number
openbox 2>/dev/null &
until xdotool get_num_desktops >/dev/null 2>&1; do sleep 0.1; done

# What the dark desktop of one picture looks like.
cat >"$XDG_CONFIG_HOME/kdeglobals" <<'END'
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=239,240,241
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=239,240,241
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:Selection]
BackgroundNormal=61,139,200
ForegroundNormal=252,252,252
[KDE]
widgetStyle=fusion
END

wait_for() {
    for _ in {1..3600}; do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.05
    done
    echo "this never came true: $*"
    exit 1
}
active() { [[ $(xdotool getactivewindow getwindowname) == *$1* ]]; }
inactive() { ! active "$1"; }
# There are more than so many files with such names among the backups.
kept() { (($(find "$K520_HOME/Data/Backups" -name "$1" | wc -l) > $2)); }
press() {
    for key in "$@"; do
        xdotool key --clearmodifiers "$key"
        sleep 0.15
    done
}
text() { xdotool type --delay 20 "$1"; }

# The window in front, with its frame.
front() {
    local id
    sleep 0.3
    id=$(xdotool getactivewindow)
    import -frame -window "$id" "$pictures/$1.png"
    echo "$1"
}
main_window() {
    sleep 0.3
    import -frame -window "$program_window" "$pictures/$1.png"
    echo "$1"
}
# All windows; around them the screen is black.
windows() {
    sleep 0.3
    import -window root "$pictures/$1.png"
    convert "$pictures/$1.png" -trim +repage "png8:$pictures/$1.png"
    echo "$1"
}

# The simulated radio that the cable leads to.
radio() {
    k520-cli simulate --link /dev/ttyUSB0 >/dev/null 2>&1 &
    radio=$!
    wait_for test -e /dev/ttyUSB0
}
no_radio() {
    kill "$radio" 2>/dev/null || true
    wait "$radio" 2>/dev/null || true
}
# program [VARIABLE=VALUE...]: starts the desktop program.
program() {
    env "$@" k520 >/dev/null 2>&1 &
    program=$!
    wait_for active K520
    sleep 1
    program_window=$(xdotool getactivewindow)
}
no_program() {
    kill "$program" 2>/dev/null || true
    wait "$program" 2>/dev/null || true
}
fresh_folder() {
    rm -rf "${K520_HOME:?}"
    mkdir -p "$K520_HOME"
    k520-cli config set Setting Language "$1"
    # The first start would choose the language of the system, and the port.
    k520-cli config set Setting FirRun 0
    k520-cli config set Setting COM 9
}
click_into_grid() {
    eval "$(xdotool getwindowgeometry --shell "$program_window")"
    xdotool mousemove $((X + WIDTH * 40 / 100)) $((Y + HEIGHT * 40 / 100)) click 1
    xdotool mousemove $((X + WIDTH - 40)) $((Y + HEIGHT - 6))
    sleep 0.3
}

# The channels with a tone, a channel outside the band, and a tone that is being typed.
picture_of_editing() {
    click_into_grid
    press ctrl+Home Right Right
    text 88.5
    press Return Right
    text 023
    press Return Left Left
    text 480
    press Return Right
    text D02
    main_window "$1"
    press Escape Escape
}

pictures_of() {
    local language=$1 number=$2 editing=$3 dialog=$4
    fresh_folder "$number"
    radio
    program
    picture_of_editing "$editing"

    press F8
    wait_for inactive K520
    sleep 0.5
    front "guide-port-$language"
    press Escape
    wait_for active K520

    press F5
    wait_for active "$dialog"
    press alt+d Return
    sleep 12
    [[ $language != en ]] || front guide-read-en
    wait_for kept "*_read_*.dat" 0
    sleep 1
    press alt+d
    front "guide-read-done-$language"
    press Escape
    wait_for active K520

    press F6
    wait_for active "$dialog"
    press Return
    # The note of a write that has come to its good end.
    wait_for kept "*.written" 0
    sleep 1
    front "guide-write-done-$language"
    press Escape
    wait_for active K520
    no_radio

    # The cable is pulled in the middle of the write.
    radio
    press F6
    wait_for active "$dialog"
    press Return
    wait_for kept "*_before-write_*.dat" 1
    sleep 8
    no_radio
    wait_for active "$notice"
    sleep 0.5
    press Return
    wait_for inactive "$notice"
    sleep 0.5
    front "guide-restore-$language"
    press Escape
    wait_for active K520
    press ctrl+m F9
    sleep 1
    main_window "guide-errors-$language"
    no_program
}
dark_picture() {
    fresh_folder 1
    radio
    program QT_QPA_PLATFORMTHEME=kde KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
    press F5
    wait_for active 通信
    # With its lower part open it would reach below the main window.
    xdotool windowmove "$(xdotool getactivewindow)" 330 120
    press alt+d Return
    sleep 9
    windows read-zh-dark
    no_program
    no_radio
}

# What a terminal shows, as a picture.
terminal_picture() {
    local shown
    shown=$(cd "$folder" && script -qec "$2" /dev/null | tr -d '\r' |
        sed -e 's/&/\&amp;/g; s/</\&lt;/g' -e 's/\x1b\[1m/<b>/g; s/\x1b\[33m/<span foreground="#f2a33a"><b>/g' \
            -e 's/<span[^>]*><b>\(.*\)\x1b\[0m/<span foreground="#f2a33a">\1<\/span>/' \
            -e 's/\x1b\[0m/<\/b>/g')
    convert -background '#1b2023' -border 12 -bordercolor '#1b2023' \
        pango:"<span font='DejaVu Sans Mono 10' foreground='#dde3e6'>\$ $2
$shown</span>" "png8:$pictures/$1.png"
    echo "$1"
}

fresh_folder 3
k520-cli new "$folder/fleet.dat"
k520-cli set "$folder/fleet.dat" ch5.rx=433.5 ch5.decode=D023N ch6.rx=462.5625 ch6.decode=88.5 ch7.rx=145.5
terminal_picture show "k520-cli show fleet.dat"
notice=Notice
pictures_of en 3 main-en Communicat
notice=提示
pictures_of zh 1 guide-main-zh 通信
dark_picture
