#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Runs all tests in the build that counts lines, says how many lines of src they ran, folder by
# folder, and fails below the limits.
#
#   tools/coverage.sh [CTEST OPTION]...
#
# What is not run stands, line by line, in build/coverage/lines.txt.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

least_core=90 # percent of the lines outside the windows
least_all=80  # percent of all lines

# Counts of another build, and those of the listing of the tests, do not belong to this run.
forget_counts() {
    find build/coverage -name '*.gcda' -delete
}

packaging/packages.sh build tests coverage
cmake --preset coverage
forget_counts
cmake --build --preset coverage
forget_counts
# Programs that the tests start as another user add to the counts, too.
umask 0
chmod -R a+rwX build/coverage
ctest --preset coverage --parallel "$(nproc)" "$@"

# Programs that the tests start add to the counts themselves when they end. Only the objects of src
# are looked at: notes of tests that are gone lie about among the others.
gcovr -j "$(nproc)" --root . --filter src/ --exclude-directories '.*_autogen' \
    --csv build/coverage/lines.csv --txt build/coverage/lines.txt build/coverage/src

awk -F, -v least_core="$least_core" -v least_all="$least_all" '
    function percent(run, total) { return total ? 100 * run / total : 0 }
    function line(name, run, total) {
        return sprintf("%-16s %6d of %6d lines %6.1f %%", name, run, total, percent(run, total))
    }
    NR > 1 {
        folder = $1
        sub("/[^/]*$", "", folder)
        window = $1 ~ "^src/desktop/"
        total[folder] += $2; run[folder] += $3
        allTotal += $2; allRun += $3
        if (!window) { coreTotal += $2; coreRun += $3 }
    }
    END {
        for (folder in total) print line(folder, run[folder], total[folder]) | "sort"
        close("sort")
        print line("without windows", coreRun, coreTotal)
        print line("all", allRun, allTotal)
        low = percent(coreRun, coreTotal) < least_core || percent(allRun, allTotal) < least_all
        if (low) printf "That is too little: %d %% and %d %% are the least.\n", least_core, least_all
        exit low
    }' build/coverage/lines.csv
