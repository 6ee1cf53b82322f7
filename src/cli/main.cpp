// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/run.h"

int main(int count, char** words) {
    return k520::cli::run(count, words);
}
