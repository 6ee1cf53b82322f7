#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Takes the command line once through its work under valgrind, and fails on any error in the use of
# memory, on any block that is lost, and on any command that does not end as it has to.
#
#   tools/valgrind.sh [K520-CLI]      without one it is built
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if [[ $# -eq 0 ]]; then
    packaging/packages.sh build coverage
    cmake --preset dev
    cmake --build --preset dev --target k520-cli k520_share
fi
program=$(realpath "${1:-build/dev/bin/k520-cli}")
folder=$(mktemp -d)
radio=
trap '[[ -z $radio ]] || kill "$radio"; rm -rf -- "$folder"' EXIT
cd "$folder"
mkdir home
export K520_HOME=$folder/home

found=99 # no exit code of the program's own
memcheck=(valgrind --quiet --leak-check=full --errors-for-leak-kinds=definite
    "--error-exitcode=$found" "$program")

# check CODE ARGUMENT...: runs the program with the arguments, which has to end with that code
check() {
    local status=0
    "${memcheck[@]}" "${@:2}" >out.txt 2>err.txt </dev/null || status=$?
    if ((status != $1)); then
        printf 'FAILED (%d instead of %d): k520-cli %s\n' "$status" "$1" "${*:2}"
        cat out.txt err.txt
        exit 1
    fi
    printf 'clean  k520-cli %s\n' "${*:2}"
}

# A short range, for a session takes its time.
for key in ReadEndAddr WriteEndAddr; do
    check 0 config set Setting "$key" 03FF
done
check 0 config get Setting ReadEndAddr
check 0 new a.dat
check 0 show a.dat
check 0 show --json a.dat
check 0 set a.dat ch1.rx=446.00625 ch1.tx= ch2.decode=88.5 band=145-150 option.tot=60s -o b.dat
check 1 diff a.dat b.dat
check 1 diff --json a.dat b.dat
check 0 export b.dat -o b.csv
check 0 import a.dat b.csv -o c.dat
check 0 hex a.dat --from 10 --to 4F
check 0 ports
check 0 ports --json
check 0 read -p virtual -o read.dat --verify --trace trace.txt
check 0 set read.dat ch3.rx=446.05625
check 0 write -p virtual read.dat --backup backup.dat --verify
check 0 verify -p virtual read.dat
check 1 verify -p virtual backup.dat
# What is refused, and what fails.
check 2 set a.dat ch1.rx=abc
check 2 frob
check 1 show missing.dat
check 1 read -p /dev/null -o none.dat
printf 'channel,rx\n2,"447\n' >bad.csv
check 1 import a.dat bad.csv

# A radio on a pseudo-terminal, itself under valgrind, read by a program at its own speed: valgrind
# makes both too slow for the first attempts' time-outs at the speed of a real line.
"${memcheck[@]}" simulate --image read.dat --link "$folder/line" --save kept.dat --baud 230400 \
    >radio.txt 2>&1 &
radio=$!
until [[ -L line ]]; do
    kill -0 "$radio" || { cat radio.txt; exit 1; }
    sleep 0.1
done
other() {
    "$program" "$@" >/dev/null || { cat radio.txt; exit 1; }
}
other read -p "$folder/line" -o copy.dat
other diff read.dat copy.dat
other write -p "$folder/line" a.dat --verify
kill -TERM "$radio"
status=0
wait "$radio" || status=$?
radio=
if ((status != 0)); then
    printf 'FAILED (%d): k520-cli simulate\n' "$status"
    cat radio.txt
    exit 1
fi
echo "clean  k520-cli simulate"
