#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Builds the fuzz targets with clang and runs them, under the address and undefined-behaviour
# sanitizers.
#
#   fuzz/run.sh TARGET|all SECONDS       run for so long (each)
#   fuzz/run.sh TARGET|all RUNS runs     run so many inputs (each)
#   fuzz/run.sh TARGET|all merge         take what is new into fuzz/corpus, as few files as cover it
#   fuzz/run.sh TARGET|all coverage      the lines that the corpus reaches
#   fuzz/run.sh TARGET minimise FILE     the smallest input that fails as FILE does
#
# Everything that a run makes is in build/fuzz-work: TARGET.log, the inputs found, and findings as
# TARGET-crash-... An option of the fuzzer may follow: -jobs=4
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
work=$root/build/fuzz-work
corpus=$root/fuzz/corpus
# The longest input of a target, where it is not that of the others.
declare -A longest=([image]=8193 [profile]=2048 [edit]=256 [startUp]=32768 [csv]=2048 [commandLine]=256)
usual_length=1024

usage() {
    sed -n 's/^#   //p' "$0"
    exit 2
} >&2

# Where a target makes files it makes them in memory.
[[ ! -w /dev/shm ]] || export TMPDIR=/dev/shm
# Allocations without stacks are twice as fast; run a finding without this to see where it was made.
export ASAN_OPTIONS=${ASAN_OPTIONS:-malloc_context_size=0}

# build FOLDER CMAKE_OPTION...
build() {
    packaging/packages.sh build fuzz
    cmake --preset fuzz -B "$@"
    cmake --build "$1"
} >&2

fuzzer() {
    local target=$1
    shift
    (cd "$work" && "$root/build/fuzz/bin/fuzz_$target" \
        -max_len="${longest[$target]:-$usual_length}" -artifact_prefix="$target-" "$@")
}

run() {
    local target=$1 limit=$2
    shift 2
    local dictionary=$root/fuzz/$target.dict options=()
    [[ ! -e $dictionary ]] || options=(-dict="$dictionary")
    mkdir -p "$work/$target"
    fuzzer "$target" "$limit" -print_final_stats=1 -timeout=30 "${options[@]}" "$@" \
        "$work/$target" "$corpus/$target" 2>"$work/$target.log" || {
        tail -n 60 "$work/$target.log" >&2
        echo "fuzz/run.sh: a finding of $target, or no run at all: see above" >&2
        return 1
    }
    printf '%s: %s\n' "$target" "$(grep -a DONE "$work/$target.log")"
}

merge() {
    local target=$1 merged
    merged=$(mktemp -d)
    mkdir -p "$work/$target" "$corpus/$target"
    # As few files as reach every line that is reached; how often they do does not count.
    fuzzer "$target" -set_cover_merge=1 -use_counters=0 "$merged" "$corpus/$target" "$work/$target"
    rm -rf "${corpus:?}/$target"
    mv "$merged" "$corpus/$target"
    chmod 755 "$corpus/$target"
}

coverage() {
    local target=$1 folder=$root/build/fuzz-coverage
    build "$folder" -DK520_SANITIZE=fuzzer-no-link \
        -DCMAKE_CXX_FLAGS="-fprofile-instr-generate -fcoverage-mapping"
    (cd "$work" && LLVM_PROFILE_FILE=$work/$target.profraw "$folder/bin/fuzz_$target" -runs=0 \
        "$corpus/$target") 2>"$work/$target-coverage.log"
    llvm-profdata-14 merge -o "$work/$target.profdata" "$work/$target.profraw"
    llvm-cov-14 report "$folder/bin/fuzz_$target" -instr-profile="$work/$target.profdata" \
        -ignore-filename-regex="(/usr/|fuzz/|tests/)"
}

(($# >= 2)) || usage
mapfile -t all < <(sed -n 's/^set(fuzz_targets \(.*\))/\1/p' fuzz/CMakeLists.txt | tr ' ' '\n')
targets=("$1")
[[ $1 != all ]] || targets=("${all[@]}")
for target in "${targets[@]}"; do
    [[ -e fuzz/$target.cpp ]] || usage
done
mkdir -p "$work"
[[ $2 == coverage ]] || build "$root/build/fuzz"

for target in "${targets[@]}"; do
    case $2:${3:-} in
        merge:) merge "$target" ;;
        coverage:) coverage "$target" ;;
        minimise:?*) fuzzer "$target" -minimize_crash=1 -runs=100000 "$(realpath "$3")" ;;
        [0-9]*:runs) run "$target" -runs="$2" "${@:4}" ;;
        [0-9]*:*) run "$target" -max_total_time="$2" "${@:3}" ;;
        *) usage ;;
    esac
done
