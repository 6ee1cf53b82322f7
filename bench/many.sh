#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# How the cost of the command line grows with the number of data files: show, diff and set over 1, 100
# and 10000 files, a process a file, one after the other and on all processors at once. Prints the
# milliseconds a file.
#   bench/many.sh K520-CLI [COUNT]...
set -euo pipefail
cli=$(realpath "$1")
counts=("${@:2}")
((${#counts[@]})) || counts=(1 100 10000)
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
cd "$folder"
export K520_HOME=$folder
"$cli" new first.dat

# $1 processes at a time, the rest the command; the file's number stands for @.
over_files() {
    seq "$count" | xargs -P "$1" -I@ "${@:2}" >/dev/null || true
}
milliseconds() {
    local start=$EPOCHREALTIME end
    "$@"
    end=$EPOCHREALTIME
    echo $(((${end/./} - ${start/./}) / 10 / count)) | sed 's/..$/.&/; s/^\./0./'
}

printf '%8s %-6s %12s %12s\n' files what "one by one" "$(nproc) at once"
for count in "${counts[@]}"; do
    seq "$count" | xargs -I@ cp first.dat @.dat
    while read -r name words; do
        read -ra command <<<"$words"
        printf '%8d %-6s %9s ms %9s ms\n' "$count" "$name" \
            "$(milliseconds over_files 1 "$cli" "${command[@]}")" \
            "$(milliseconds over_files "$(nproc)" "$cli" "${command[@]}")"
    done <<'COMMANDS'
show show @.dat
diff diff first.dat @.dat
set set @.dat ch1.rx=446.1
COMMANDS
    rm ./*[0-9].dat
done
