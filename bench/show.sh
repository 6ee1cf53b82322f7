#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# How long `k520-cli show` takes as a whole process: min, median and max of 50 runs, in ms.
#   bench/show.sh [PATH OF k520-cli]
set -euo pipefail
program=${1:-$(dirname "${BASH_SOURCE[0]}")/../build/release/bin/k520-cli}
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
export K520_HOME=$folder
"$program" new "$folder/a.dat"
for _ in {1..50}; do
    begin=$EPOCHREALTIME
    "$program" show "$folder/a.dat" >/dev/null
    end=$EPOCHREALTIME
    echo $((${end/./} - ${begin/./}))
done | sort -n | awk '{ all[NR] = $1 / 1000 }
    END { printf "show: min %.1f  median %.1f  max %.1f ms\n", all[1], all[int((NR + 1) / 2)], all[NR] }'
