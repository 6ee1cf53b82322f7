// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "cli/Command.h"

/// What the commands do. Each prints its result to stdout and returns its exit code, or raises
/// Failure with the line that goes to stderr.
namespace k520::cli {

int runNew(const Arguments& arguments);
int runShow(const Arguments& arguments);
int runSet(const Arguments& arguments);
int runExport(const Arguments& arguments);
int runImport(const Arguments& arguments);
int runDiff(const Arguments& arguments);
int runHex(const Arguments& arguments);
int runConfigGet(const Arguments& arguments);
int runConfigSet(const Arguments& arguments);
int runPorts(const Arguments& arguments);
int runRead(const Arguments& arguments);
int runWrite(const Arguments& arguments);
int runRestore(const Arguments& arguments);
int runVerify(const Arguments& arguments);
int runSimulate(const Arguments& arguments);

}  // namespace k520::cli
