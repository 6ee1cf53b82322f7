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
#include "image/backups.h"
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

}  // namespace

int runRead(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("output"), arguments.get("trace")});
    startConfiguration(DefaultImage::needed);
    const auto& output = arguments.at("output");
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    checkSavable(output);
    link.read({.keepCopy = arguments.has("keep-copy"), .readBack = arguments.has("verify")});
    saveDocument(output);
    return exitDone;
}

int runWrite(const Arguments& arguments) {
    const auto backup = arguments.get("backup");
    requireDifferentFiles({arguments.at("FILE"), backup, arguments.get("trace")});
    if (backup && arguments.has("keep-copy")) {
        refuse("--backup and --keep-copy both make the backup; give one of them");
    }
    const bool backUpFirst = backup || arguments.has("keep-copy");
    // What lies outside a short read range comes from the default image.
    startConfiguration(backUpFirst ? DefaultImage::needed : DefaultImage::helpful);
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    // Before the radio is touched: the file has to be one that can be sent, the backup one that can
    // be kept.
    openDocument(arguments.at("FILE"), ShortFile::refuse);
    if (backup) {
        checkSavable(*backup);
    }
    encodeTables();
    link.write(
        {.backUpFirst = backup || arguments.has("keep-copy"), .readBack = arguments.has("verify")},
        backup.value_or(""));
    return exitDone;
}

int runRestore(const Arguments& arguments) {
    startConfiguration(DefaultImage::helpful);
    const auto from = arguments.get("from");
    const auto written = from ? std::nullopt : unfinishedWrite::latest();
    if (!from && !written) {
        fail("which backup the radio needs is not known: " + backups::folder().string() +
             " has no note of a write behind a backup; give one with --from");
    }
    const std::string file = from ? *from : written->backup.string();
    requireDifferentFiles({file, arguments.get("trace")});
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    if (from && !backups::parseName(*from)) {
        // What a write would say about such a file.
        openDocument(*from, ShortFile::refuse);
    }
    printError(
        fmt::format("{} {}\n", written ? "Checking that the radio needs" : "Restoring", file));
    link.restore(file, {.readBack = arguments.has("verify")}, written);
    print(
        fmt::format("Written back{}: {}\n", arguments.has("verify") ? " and compared" : "", file));
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
    link.read({});
    const MemoryImage found = image();
    requireEqual(expected, file, found, "radio",
                 fmt::format("the radio and {} differ{}", file, hintOfLostBytes(expected, found)));
    return exitDone;
}

}  // namespace k520::cli
