// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <algorithm>

#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/commands.h"
#include "cli/compare.h"
#include "cli/document.h"
#include "cli/output.h"
#include "cli/program.h"
#include "cli/radioLink.h"
#include "image/datFile.h"
#include "image/modIicDat.h"

namespace k520::cli {

namespace {

MemoryImage& image() {
    return modIicDat::IicDat();
}

/// The image as a write sends it, but for the stamp.
void encodeTables() {
    const auto mark = failureMark();
    modChMem::SetConvIicDat();
    failOnFailureSince(mark, "the channels and options cannot be encoded");
}

/// Prints what differs and raises Failure 1 when something does.
void requireEqual(const MemoryImage& expected, const std::string& nameOfExpected,
                  const MemoryImage& found, const std::string& nameOfFound,
                  const std::string& verdict) {
    const auto a = pictureOf(expected);
    const auto comparison = compare(a, pictureOf(found));
    if (!comparison.equal()) {
        print(comparisonText(comparison, nameOfExpected, nameOfFound));
        fail(fmt::format("{}: {}", verdict, countText(comparison)));
    }
}

/// The bytes that a data file cannot hold differ until the file has once been written to the radio.
std::string hintOfLostBytes(const MemoryImage& expected, const MemoryImage& found) {
    constexpr int last = datFile::lostAddress + datFile::lostCount - 1;
    for (int address = datFile::lostAddress; address <= last; ++address) {
        if (expected(address) != found(address)) {
            return fmt::format(" (bytes {:04X} to {:04X} have no place in a data file)",
                               datFile::lostAddress, last);
        }
    }
    return {};
}

/// A second pass over the radio must bring the same bytes: the protocol has no checksum.
void readAgain(RadioLink& link) {
    const MemoryImage first = image();
    link.read("Reading again", modIicDat::state().readRange, "nothing saved");
    const MemoryImage second = image();
    if (first != second) {
        requireEqual(first, "first", second, "second",
                     "two reads of the radio differ, so one of them is wrong; nothing saved; check "
                     "the cable and read again");
        fail("two reads of the radio differ in the programming stamp; nothing saved");
    }
}

void backUp(RadioLink& link, const std::string& path) {
    link.read("Backing up", modIicDat::state().readRange, "the radio is untouched");
    saveDocument(path);
    renewConfiguration();
}

void readBack(RadioLink& link) {
    const MemoryImage sent = image();
    link.read("Comparing", modIicDat::state().writeRange,
              "the radio is written but not compared; run verify");
    const MemoryImage found = image();
    if (sent != found) {
        requireEqual(sent, "sent", found, "radio",
                     "the radio does not hold what was sent; write again");
        fail("the radio does not hold the programming stamp that was sent; write again");
    }
}

}  // namespace

int runRead(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("output"), arguments.get("trace")});
    startConfiguration(DefaultImage::needed);
    const auto& output = arguments.at("output");
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    checkSavable(output);
    link.read("Reading", modIicDat::state().readRange, "nothing saved");
    if (arguments.has("verify")) {
        readAgain(link);
    }
    saveDocument(output);
    return exitDone;
}

int runWrite(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("FILE"), arguments.get("backup"), arguments.get("trace")});
    startConfiguration(DefaultImage::helpful);
    const auto& file = arguments.at("FILE");
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    // Before the radio is touched: the file has to be one that can be sent.
    openDocument(file, ShortFile::refuse);
    if (const auto backup = arguments.get("backup")) {
        checkSavable(*backup);
        renewConfiguration();
        backUp(link, *backup);
        openDocument(file, ShortFile::refuse);
    }
    encodeTables();
    link.write();
    if (arguments.has("verify")) {
        readBack(link);
    }
    return exitDone;
}

int runVerify(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("FILE"), arguments.get("trace")});
    startConfiguration(DefaultImage::helpful);
    const auto& file = arguments.at("FILE");
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    openDocument(file, ShortFile::refuse);
    encodeTables();
    const MemoryImage expected = image();
    link.read("Reading", modIicDat::state().readRange, "nothing compared");
    const MemoryImage found = image();
    requireEqual(expected, file, found, "radio",
                 fmt::format("the radio and {} differ{}", file, hintOfLostBytes(expected, found)));
    return exitDone;
}

}  // namespace k520::cli
