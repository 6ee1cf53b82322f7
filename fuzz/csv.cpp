// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any text as a CSV file of channels.

#include <vector>

#include "app/modShowErr.h"
#include "cli/Failure.h"
#include "cli/channelCsv.h"
#include "cli/csvText.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;

/// The message of the failure that a text ends in; empty where all of it is taken.
std::string failureOf(std::string_view text) {
    try {
        cli::takeChannelCsv(text);
        return {};
    } catch (const cli::Failure& failure) {
        require(failure.code() == 1 || failure.code() == 2, "an exit code of the program");
        return failure.what();
    }
}

std::vector<cli::CsvRow> rowsOf(std::string_view text) {
    try {
        return cli::parseCsv(text);
    } catch (const cli::Failure&) {
        return {};
    }
}

void requireReadAsWritten(const std::vector<cli::CsvRow>& rows) {
    // After another line: a byte order mark at the start of a file is not part of its first cell.
    std::string written = cli::csvLine({"first"});
    for (const auto& row : rows) {
        written += cli::csvLine(row.cells);
    }
    const auto again = cli::parseCsv(written);
    require(std::ranges::equal(rows, std::span(again).subspan(1), {}, &cli::CsvRow::cells,
                               &cli::CsvRow::cells),
            "cells come back as they were written");
}

void requireExportedAsImported() {
    const auto channels = fuzz::theChannels();
    const auto exported = cli::channelCsv();
    require(failureOf(exported).empty(), "what was exported can be imported");
    require(fuzz::theChannels() == channels, "and changes nothing");
    // Into another table it makes the same channels.
    fuzz::freshCore();
    require(failureOf(exported).empty(), "what was exported can be imported elsewhere");
    require(cli::channelCsv() == exported, "with the same result");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    requireReadAsWritten(rowsOf(text));
    fuzz::freshCore();
    // Most inputs leave the channels as they are, and checking those once will do.
    static const auto untouched = [] {
        requireExportedAsImported();
        fuzz::freshCore();
        return fuzz::theChannels();
    }();
    const bool taken = failureOf(text).empty();
    require(!taken || modShowErr::state().entries.empty(), "what fails is told");
    if (fuzz::theChannels() != untouched) {
        requireExportedAsImported();
    }
    return 0;
}
