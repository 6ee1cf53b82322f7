#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Tries every fault of which ./test tries a part, and prints tables of what came of them: minutes to
# hours.
#   campaign.sh files [GTEST OPTION]...   every system call of every save, files, settings, ports
#   campaign.sh link                      every byte on the line, one a session, on a simulated clock
#   campaign.sh program [STRIDE]          the real program over a pseudo-terminal; kills a write at one
#                                         exchange in STRIDE (default 1)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
kind=${1:-}
bin=build/campaign/bin

build() {
    cmake -S . -B build/campaign -G Ninja -DCMAKE_BUILD_TYPE=Release -DK520_BUILD_DESKTOP=OFF >&2
    cmake --build build/campaign --target k520-cli "$@" >&2
}

# Tests that note their rows in a file when they are told its name.
files() {
    build k520_fault_tests
    folder=$(mktemp -d)
    trap 'rm -r "$folder"' EXIT
    export K520_FAULT_ROWS=$folder/rows
    touch "$K520_FAULT_ROWS"
    local code=0
    "$bin/k520_fault_tests" --gtest_brief=1 "$@" >"$folder/log" 2>&1 || code=$?
    echo "| fault | how | count | outcome |"
    echo "| --- | --- | --- | --- |"
    cat "$K520_FAULT_ROWS"
    grep -A2 SKIPPED "$folder/log" || true
    ((code == 0)) || cat "$folder/log" >&2
    return "$code"
}

case $kind in
    files) files "${@:2}" ;;
    link | program)
        build "k520_${kind}_campaign"
        "$bin/k520_${kind}_campaign" "${@:2}"
        ;;
    *)
        sed -n 's/^#   //p' "${BASH_SOURCE[0]}" >&2
        exit 2
        ;;
esac
