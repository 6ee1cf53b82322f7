// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <system_error>
#include <vector>

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
#include "link/session/waysBack.h"

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
    const auto comparison = document::compareImages(expected, found);
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

/// The backups from before writes that broke off, the newest first.
std::vector<waysBack::WayBack> unfinishedWays() {
    auto ways = waysBack::list();
    std::erase_if(ways, [](const waysBack::WayBack& way) { return !way.unfinished; });
    return ways;
}

int listUnfinished() {
    std::vector<std::filesystem::path> paths;
    for (const auto& way : unfinishedWays()) {
        paths.push_back(way.path);
    }
    print(paths.empty() ? say(texts::nothingUnfinished) + "\n" : backupLines(paths));
    return exitDone;
}

/// `file` is the path of a backup, or its name alone.
int forgetUnfinished(const std::string& file) {
    const std::filesystem::path given(file);
    const auto path = given.has_parent_path() ? given : backups::folder() / given;
    const auto ways = unfinishedWays();
    const auto way = std::ranges::find_if(ways, [&](const waysBack::WayBack& each) {
        std::error_code error;
        return std::filesystem::equivalent(each.path, path, error);
    });
    if (way == ways.end()) {
        fail(say(texts::notUnfinished, file));
    }
    const auto mark = failureMark();
    waysBack::forget(*way);
    failOnFailureSince(mark, say(texts::notForgotten, file));
    print(say(texts::backupForgotten, way->path.string()) + "\n");
    return exitDone;
}

/// --list and --forget need no radio, all else does.
void requireOneWish(const Arguments& arguments) {
    const auto given = [&](std::initializer_list<ArgumentName> names) {
        return std::ranges::count_if(names, [&](auto name) { return arguments.has(name); });
    };
    const auto alone = given({"list", "forget"});
    const bool right = alone == 0 ? arguments.has("port")
                                  : alone == 1 && given({"port", "from", "verify", "trace"}) == 0;
    if (!right) {
        refuse(say(texts::oneWishOnly));
    }
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
    requireOneWish(arguments);
    startConfiguration(DefaultImage::helpful);
    if (arguments.has("list")) {
        return listUnfinished();
    }
    if (const auto forgotten = arguments.get("forget")) {
        return forgetUnfinished(*forgotten);
    }
    const auto from = arguments.get("from");
    if (!from && unfinishedWrite::all().empty()) {
        failForUnknownBackup(say(texts::noNotes, backups::folder().string()));
    }
    requireDifferentFiles({from, arguments.get("trace")});
    const safeguards::Choices choices{.readBack = arguments.has("verify")};
    RadioLink link(arguments.at("port"), arguments.get("trace"));
    if (from) {
        checkRestorable(*from);
    }
    // A script gets one line of a command that fails, and that is the failure's.
    if (isTerminal(Stream::err)) {
        printError((from ? say(texts::restoringFile, *from) : say(texts::lookingForBackup)) + "\n");
    }
    if (from) {
        link.restore(*from, choices);
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
