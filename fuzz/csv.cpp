// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any text as a CSV file of channels.

#include <vector>

#include "app/modShowErr.h"
#include "document/channelCsv.h"
#include "document/csvText.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;

/// The message of the failure that a text ends in; empty where all of it is taken.
std::string failureOf(std::string_view text) {
    try {
        document::takeChannelCsv(text, [](const std::string&) {});
        return {};
    } catch (const document::Refused& refused) {
        require(refused.reason() == document::Reason::notPossible, "the line is named");
        return refused.what();
    }
}

std::vector<document::CsvRow> rowsOf(std::string_view text) {
    try {
        return document::parseCsv(text);
    } catch (const document::Refused&) {
        return {};
    }
}

void requireReadAsWritten(const std::vector<document::CsvRow>& rows) {
    // After another line: a byte order mark at the start of a file is not part of its first cell.
    std::string written = document::csvLine({"first"});
    for (const auto& row : rows) {
        written += document::csvLine(row.cells);
    }
    const auto again = document::parseCsv(written);
    require(std::ranges::equal(rows, std::span(again).subspan(1), {}, &document::CsvRow::cells,
                               &document::CsvRow::cells),
            "cells come back as they were written");
}

void requireExportedAsImported() {
    const auto channels = fuzz::theChannels();
    const auto exported = document::channelCsv();
    require(failureOf(exported).empty(), "what was exported can be imported");
    require(fuzz::theChannels() == channels, "and changes nothing");
    // Into another table it makes the same channels.
    fuzz::freshCore();
    require(failureOf(exported).empty(), "what was exported can be imported elsewhere");
    require(document::channelCsv() == exported, "with the same result");
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
    require(taken || fuzz::theChannels() == untouched, "what is refused changes nothing");
    require(!taken || modShowErr::state().entries.empty(), "what fails is told");
    if (fuzz::theChannels() != untouched) {
        requireExportedAsImported();
    }
    return 0;
}
