#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# How long the desktop program takes from its start to the first painted main window, in ms: min,
# median and max of 30 warm starts; and its resident memory, in MB. Needs a display; without one it
# makes its own with Xvfb.
#   bench/start.sh [PATH OF k520]
set -euo pipefail
program=$(realpath "${1:-$(dirname "${BASH_SOURCE[0]}")/../build/release/bin/k520}")
folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -r "$folder"' EXIT
export K520_HOME=$folder/home
mkdir "$K520_HOME"
if [[ -z ${DISPLAY:-} ]]; then
    mkfifo "$folder/number"
    Xvfb -displayfd 3 -screen 0 1280x900x24 3>"$folder/number" 2>/dev/null &
    read -r number <"$folder/number"
    export DISPLAY=:$number
    openbox 2>/dev/null &
    until xdotool get_num_desktops >/dev/null 2>&1; do sleep 0.05; done
fi
"$program" --until-painted
for _ in {1..30}; do
    begin=$EPOCHREALTIME
    "$program" --until-painted
    end=$EPOCHREALTIME
    echo $((${end/./} - ${begin/./}))
done | sort -n | awk '{ all[NR] = $1 / 1000 }
    END { printf "start: min %.0f  median %.0f  max %.0f ms\n", all[1], all[int((NR + 1) / 2)], all[NR] }'
"$program" &
pid=$!
xdotool search --sync --onlyvisible --pid $pid >/dev/null
sleep 3
awk '/^(VmRSS|RssAnon|VmHWM)/ { printf "%s %.0f MB\n", $1, $2 / 1024 }' /proc/$pid/status
