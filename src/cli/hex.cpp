// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <optional>
#include <string>

#include "base/Checked.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/commands.h"
#include "cli/document.h"
#include "cli/output.h"
#include "cli/program.h"
#include "image/modIicDat.h"
#include "memview/modMemDat.h"

namespace k520::cli {

namespace {

using modMemDat::bytesPerRow;

int addressArgument(const Arguments& arguments, ArgumentName name, int fallback) {
    auto text = arguments.get(name);
    if (!text) {
        return fallback;
    }
    if (text->starts_with("0x") || text->starts_with("0X")) {
        text->erase(0, 2);
    }
    try {
        const int address = hexToInt16(*text);
        if (address >= 0) {
            return address;
        }
    } catch (const RuntimeError&) {
        // Told below, with the option's name.
    }
    refuse(say(texts::notAnAddress, name.text(), arguments.at(name)));
}

std::string hexRow(int rowStart, int from, int to) {
    std::string line = modMemDat::rowTitle(rowStart);
    for (int address = rowStart; address < rowStart + bytesPerRow; ++address) {
        line += ' ';
        line += address < from || address > to
                    ? std::string("  ")
                    : modMemDat::FormatByteDat(modIicDat::IicDat()(address));
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

}  // namespace

int runHex(const Arguments& arguments) {
    startConfiguration(DefaultImage::helpful);
    const int last = modIicDat::state().DatNum;
    const int from = addressArgument(arguments, "from", 0);
    const int to = addressArgument(arguments, "to", last);
    if (from > to || to > last) {
        refuse(say(texts::addressesOutside, from, to, last));
    }
    openDocument(arguments.at("FILE"), ShortFile::warn);
    for (int row = from - from % bytesPerRow; row <= to; row += bytesPerRow) {
        print(hexRow(row, from, to));
    }
    return exitDone;
}

}  // namespace k520::cli
