#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Prints all that k520-cli says, in both languages, for a person to read through: the help of each
# command, one line that works and one that fails.
#
#   tools/speakBoth.sh build/dev/bin/k520-cli > both.txt
set -euo pipefail

cli=$(realpath "${1:?usage: tools/speakBoth.sh PATH-OF-K520-CLI}")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
export NO_COLOR=1

say() {
    local status=0
    printf '\n$ k520-cli %s\n' "$*"
    timeout 100 "$cli" --program-folder home "$@" 2>&1 || status=$?
    printf '=> %s\n' "$status"
}

files() {
    say new a.dat
    say set a.dat ch1.rx=447 ch1.encode=67.0 option.tot=60s -o b.dat
    say show a.dat
    say export a.dat -o a.csv
    say import a.dat a.csv
    say diff a.dat a.dat
    say diff a.dat b.dat
    say hex a.dat --from 0010 --to 001F
    say config get Setting Language
    say ports
    say new none/a.dat
    say show none.dat
    say show home
    say show empty.dat
    say show short.dat
    say set short.dat band=1
    say set a.dat ch1.rx=abc
    say set a.dat ch20.rx=446
    say set a.dat ch1.decode=x
    say set a.dat ch1.Power=x
    say set a.dat option.tot=61
    say set a.dat option.x=1
    say set a.dat band=x
    say set a.dat band=10-20
    say set a.dat ch6.tx=446
    say set a.dat word
    say export a.dat -o a.dat
    say import a.dat bad.csv
    say import a.dat twice.csv
    say diff a.dat none.dat
    say hex a.dat --from xyz
    say hex a.dat --to 7000
    say config set Setting a=b c
    say config get Setting
    say config
}

words() {
    say
    say frob
    say show
    say show a.dat --frob
    say show --json=x a.dat
    say hex a.dat --from
    say hex a.dat --to 1 --to 2
    say set a.dat '[a=b]'
}

radios() {
    say read -p 17 -o r.dat
    say read -p /dev/none -o r.dat
    say read -p "$folder" -o r.dat
    say read -p a.dat -o r.dat
    say read -p /dev/null -o r.dat
    say restore -p virtual
    say write -p virtual short.dat
    say write -p virtual a.dat --backup b.dat --keep-copy
    say simulate --lose x
    say simulate --link a.dat
    # These take as long as on a real line.
    say write -p virtual b.dat --keep-copy --verify
    say verify -p virtual b.dat
    say verify -p virtual a.dat
    say restore -p virtual
}

settings() {
    local rows=("Setting DatNum 99" "ChInfo $((block)) 99" "ChInfo $((block + 402)) 77"
        "Setting ReadEndAddr 2FFF")
    local section key value before
    for row in "${rows[@]}"; do
        read -r section key value <<<"$row"
        before=$("$cli" --program-folder home config get "$section" "$key")
        "$cli" --program-folder home config set "$section" "$key" "$value"
        say show a.dat
        say read -p virtual -o /dev/null/r.dat
        "$cli" --program-folder home config set "$section" "$key" "$before"
    done
}

: >empty.dat
head -c 512 /dev/zero >short.dat
printf 'channel,frob\n1,2\n' >bad.csv
printf 'channel,rx\n2,447\n2,448\n' >twice.csv
for language in 1 3; do
    block=$((language * 1000))
    printf '\n======== Language %s ========\n' "$language"
    "$cli" --program-folder home config set Setting Language "$language" 2>/dev/null
    say --help
    "$cli" --program-folder home config set Setting Language "$language"
    # The second word of a line of a list of commands begins its meaning.
    for command in $("$cli" --help | sed -n 's/^  \([a-z]\{3,\}\)  .*/\1/p'); do
        say "$command" --help
    done
    say config get --help
    say config set --help
    files
    words
    settings
    [[ ${2:-} == quick ]] || radios
done
