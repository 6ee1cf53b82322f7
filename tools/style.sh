#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Format, licence lines and shell scripts.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -d '' -t sources < <(
    find src tests faults fuzz bench tools '(' -name '*.h' -o -name '*.cpp' ')' -print0)
wait "$!"

clang-format-14 --dry-run -Werror "${sources[@]}"

licence='// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors'
for file in "${sources[@]}"; do
    [[ $(head -n 2 "$file") == "$licence" && $(grep -c '^// SPDX-' "$file") == 2 ]] || {
        echo "$file does not begin with its two licence lines" >&2
        exit 1
    }
done

mapfile -t scripts < <(grep --files-with-matches --recursive --exclude-dir=build --exclude-dir=.git \
    --max-count=1 '^#!.*\<\(ba\)\?sh$' .)
shellcheck "${scripts[@]}"
