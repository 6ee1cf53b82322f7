// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/RuntimeError.h"
#include "base/Terminal.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/commands.h"
#include "cli/comparisonText.h"
#include "cli/document.h"
#include "cli/output.h"
#include "cli/program.h"
#include "cli/radioLink.h"
#include "cli/sessionTexts.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/session/backups.h"
#include "link/session/unfinishedWrite.h"

namespace k520::cli {

namespace {

MemoryImage& image() {
    return modIicDat::IicDat();
}

/// The image as a write sends it, but for the stamp.
void encodeTables() {
    const auto mark = failureMark();
    modChMem::SetConvIicDat();
    failOnFailureSince(mark, say(texts::notEncoded));
}

/// Prints what differs and raises Failure 1 when something does.
void requireEqual(const MemoryImage& expected, const std::string& nameOfExpected,
                  const MemoryImage& found, const std::string& nameOfFound,
                  const std::string& verdict) {
    const auto a = document::pictureOf(expected);
    const auto comparison = document::compare(a, document::pictureOf(found));
    if (!comparison.equal()) {
        print(comparisonText(comparison, nameOfExpected, nameOfFound));
        fail(say(texts::withCause, verdict, countText(comparison)));
    }
}

/// Before the radio is touched, and what a write would say about a data file.
void checkRestorable(const std::string& file) {
    try {
        backups::requireRestorable(file);
    } catch (const RuntimeError& error) {
        fail(say(texts::withCause, say(texts::nothingSent), error.source()));
    }
    if (!backups::parseName(file)) {
        openDocument(file, ShortFile::refuse);
    }
}

/// The bytes that a data file cannot hold differ until the file has once been written to the radio.
std::string hintOfLostBytes(const MemoryImage& expected, const MemoryImage& found) {
    constexpr int last = datFile::lostAddress + datFile::lostCount - 1;
    for (int address = datFile::lostAddress; address <= last; ++address) {
        if (expected(address) != found(address)) {
            return say(texts::lostBytesHint, datFile::lostAddress, last);
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
        refuse(say(texts::oneBackupOnly));
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
    if (!from && unfinishedWrite::all().empty()) {
        failForUnknownBackup(say(texts::noNotes, backups::folder().string()));
    }
    requireDifferentFiles({from, arguments.get("trace")});
    const safeguards::Choices choices{.readBack = arguments.has("verify")};
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    if (from) {
        checkRestorable(*from);
        printError(say(texts::restoringFile, *from) + "\n");
        link.restore(*from, choices);
    } else if (isTerminal(Stream::err)) {
        printError(say(texts::lookingForBackup) + "\n");
    }
    const auto file = from ? *from : link.takeBack(choices);
    print(say(choices.readBack ? texts::writtenBackCompared : texts::writtenBack, file) + "\n");
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
    requireEqual(expected, file, found, say(texts::sideRadio),
                 say(texts::radioAndFileDiffer, file, hintOfLostBytes(expected, found)));
    return exitDone;
}

}  // namespace k520::cli
