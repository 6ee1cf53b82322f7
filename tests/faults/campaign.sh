#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Tries every fault of the tests below tests/faults, where ./test tries a part, and prints what came
# of it as the rows of a table: fault, how it was made, how often, outcome. Takes some minutes.
#   campaign.sh [PATH OF k520_fault_tests] [GTEST OPTION]...
set -euo pipefail
tests=$(realpath "${1:-$(dirname "${BASH_SOURCE[0]}")/../../build/dev/bin/k520_fault_tests}")
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
export K520_FAULT_ROWS=$folder/rows
touch "$K520_FAULT_ROWS"
code=0
"$tests" --gtest_brief=1 "${@:2}" >"$folder/log" 2>&1 || code=$?
echo "| fault | how | count | outcome |"
echo "| --- | --- | --- | --- |"
cat "$K520_FAULT_ROWS"
grep -A2 SKIPPED "$folder/log" || true
if ((code != 0)); then
    cat "$folder/log" >&2
fi
exit "$code"
