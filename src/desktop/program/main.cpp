// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/program/Program.h"

int main(int count, char** words) {
    return k520::Program::main(count, words);
}
