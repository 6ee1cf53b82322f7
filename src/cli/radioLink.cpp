// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/radioLink.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "app/modShowErr.h"
#include "base/Checked.h"
#include "base/Files.h"
#include "base/Interrupt.h"
#include "base/RuntimeError.h"
#include "base/Terminal.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/comparisonText.h"
#include "cli/output.h"
#include "cli/program.h"
#include "cli/sessionTexts.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "link/protocol/scriptText.h"
#include "link/session/backups.h"
#include "link/session/waysBack.h"
#include "link/simulator/virtualPort.h"

namespace k520::cli {

namespace {

using safeguards::Arrived;
using safeguards::Task;
using safeguards::What;

/// The number of a port that is given as one; nothing for a device.
std::optional<std::int16_t> portNumber(const std::string& port) {
    std::string digits = lowerAscii(port);
    if (digits.starts_with("com")) {
        digits.erase(0, 3);
    }
    int number = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    if (digits.empty() || rest != end) {
        return std::nullopt;
    }
    if (error != std::errc{} || number < comPorts::firstPort || number > comPorts::lastPort) {
        refuse(say(texts::noSuchPort, port, comPorts::lastPort));
    }
    return static_cast<std::int16_t>(number);
}

void requireUsable(modIicDat::AddressRange range, const std::string& name) {
    const int last = modIicDat::state().DatNum;
    const int blocks = (range.end - range.start) / scriptText::blockLength + 1;
    if (range.start >= 0 && range.end >= range.start &&
        range.start + blocks * scriptText::blockLength - 1 <= last) {
        return;
    }
    const int wholeBlocks = (last + 1) / scriptText::blockLength * scriptText::blockLength;
    fail(say(texts::rangeNotUsable, name, static_cast<std::uint16_t>(range.start),
             static_cast<std::uint16_t>(range.end), scriptText::blockLength, last,
             configSetCommand("Setting", name + "StartAddr", "0000"),
             configSetCommand("Setting", name + "EndAddr",
                              fmt::format("{:04X}", std::min(wholeBlocks - 1, 0x1FFF)))));
}

/// Puts back what lies outside a range: a short last block brings bytes that nobody has read.
void keepOutside(modIicDat::AddressRange range, const MemoryImage& before) {
    MemoryImage kept = before;
    for (int address = range.start; address <= range.end; ++address) {
        kept(address) = modIicDat::IicDat()(address);
    }
    if (kept != modIicDat::IicDat()) {
        modIicDat::IicDat() = kept;
        modChMem::SoftDisplay();
    }
}

std::string remedy(const safeguards::Ending& ending) {
    return say(ending.task == Task::restore ? texts::restoreAgainFirst : texts::writeAgainFirst);
}

/// A bad end in words. A text may take the remedy and the last address that was written.
struct Words {
    safeguards::Kind kind;
    const Text* text;
};

constexpr Words words[] = {
    {{What::notStored, Task::write}, &texts::noBackupNoWrite},
    {{What::notStored}, &texts::noCopyNoSave},
    {{What::notReadable}, &texts::nothingSent},
    {{What::differs, Task::write}, &texts::radioHoldsOther},
    {{What::differs, Task::restore}, &texts::radioHoldsOther},
    {{What::differs}, &texts::twoReadsDiffer},
    {.kind = {.stage = Stage::read}, .text = &texts::readFailed},
    {.kind = {.stage = Stage::backUp}, .text = &texts::backUpReadFailed},
    {.kind = {.task = Task::write, .stage = Stage::compare}, .text = &texts::writeNotCompared},
    {.kind = {.task = Task::restore, .stage = Stage::compare}, .text = &texts::restoredNotCompared},
    {.kind = {.stage = Stage::compare}, .text = &texts::secondReadFailed},
    {.kind = {.arrived = Arrived::perhapsPart}, .text = &texts::writeFailedUnknown},
    {.kind = {.arrived = Arrived::part}, .text = &texts::writeFailedPartly},
    {.kind = {}, .text = &texts::writeFailedUntouched},
};

/// Prints what differs, and says how many bytes do. The stamp, which comparisons leave out, counts
/// here.
std::string printDifferences(const safeguards::Ending& ending) {
    const bool written = ending.written();
    const auto comparison = document::compareImages(ending.expected, ending.found);
    print(comparisonText(comparison, say(written ? texts::sideSent : texts::sideFirst),
                         say(written ? texts::sideRadio : texts::sideSecond)));
    return comparison.equal() ? say(texts::onlyTheStamp) : countText(comparison);
}

std::string verdict(const safeguards::Ending& ending) {
    const int last = ending.result.furthestAddress.value_or(0) + scriptText::blockLength - 1;
    return say(*safeguards::rowFor(ending, words).text, remedy(ending), last);
}

/// What to do about a port that cannot be opened, where its failure does not say so itself.
std::string remedyFor(std::int16_t number) {
    switch (number) {
        case errNum::alreadyOpen:
            return say(texts::endOtherProgram);
        case errNum::deviceUnavailable:
            return say(texts::takeOtherPort);
        default:
            return {};
    }
}

}  // namespace

RadioLink::RadioLink(std::string port, std::optional<std::string> trace)
    : port_(std::move(port)), trace_(std::move(trace)), view_(trace_ == "-") {
    choosePort();
    requireUsable(modIicDat::state().readRange, "Read");
    requireUsable(modIicDat::state().writeRange, "Write");
    collectTrace();
}

RadioLink::~RadioLink() {
    // What was there stays where nothing came to be told.
    if (!trace_ || *trace_ == "-" || traceText_.empty()) {
        return;
    }
    try {
        files::replace(*trace_, std::span(reinterpret_cast<const std::uint8_t*>(traceText_.data()),
                                          traceText_.size()));
    } catch (const std::exception& error) {
        warn(say(texts::traceNotKept, error.what()));
    }
}

void RadioLink::choosePort() const {
    if (const auto number = portNumber(port_)) {
        comPorts::usePort(*number);
    } else {
        comPorts::useDevice(port_);
    }
}

void RadioLink::collectTrace() {
    if (!trace_) {
        return;
    }
    const bool toStdout = *trace_ == "-";
    if (!toStdout) {
        try {
            files::checkReplaceable(*trace_);
        } catch (const RuntimeError& error) {
            fail(error.source());
        }
    }
    // A reader of stdout who goes must not take a session in the middle with it.
    interrupt::failUnreadWrites();
    auto& list = modCommun::state().listRtData;
    collecting_ = list.onInsert.subscribe([this, &list, toStdout](int index) {
        const auto line =
            modCommun::traceLine(list.lines()[static_cast<std::size_t>(index)]) + '\n';
        if (toStdout) {
            printTrace(line);
        } else {
            traceText_ += line;
        }
    });
}

void RadioLink::printTrace(const std::string& line) {
    if (!traceBroken_ && !writeAtOnce(Stream::out, line)) {
        traceBroken_ = true;
        warn(say(texts::traceNotPrinted));
    }
}

void RadioLink::read(const safeguards::Choices& choices) {
    const MemoryImage before = modIicDat::IicDat();
    const auto ending = safeguards::read(view_, choices);
    conclude(ending);
    keepOutside(modIicDat::state().readRange, before);
}

void RadioLink::write(const safeguards::Choices& choices, const std::string& backUpTo) {
    conclude(safeguards::write(view_, choices, backUpTo));
}

void RadioLink::restore(const std::string& file, const safeguards::Choices& choices) {
    conclude(safeguards::restore(view_, file, choices));
}

std::string RadioLink::takeBack(const safeguards::Choices& choices) {
    const auto ending = safeguards::takeBack(view_, choices);
    conclude(ending);
    return ending.backup.string();
}

void RadioLink::conclude(const safeguards::Ending& ending) {
    view_.clear();
    if (!ending.displaced.empty()) {
        warn(say(texts::keptBeside, ending.backup.string(), ending.displaced.string()));
    }
    if (ending.good()) {
        tellOfLateFailures(ending.begin);
        for (const auto& earlier : ending.earlier) {
            warn(say(texts::restPutBackBy, restoreCommand(earlier)));
        }
        return;
    }
    warnBetween(ending.begin, ending.mark);
    failFor(ending);
}

void RadioLink::failFor(const safeguards::Ending& ending) const {
    switch (ending.what) {
        case What::otherRadio:
            failForUnknownBackup(say(texts::matchesNoNote));
        case What::severalPossible:
            print(backupLines(ending.possible));
            fail(say(texts::severalPossible));
        default:
            fail(say(texts::withCause, verdict(ending), causeOf(ending)) + wayBack(ending));
    }
}

std::string RadioLink::restoreCommand(const std::filesystem::path& backup) const {
    const bool named = port_ == VirtualPort::name || portNumber(port_);
    const auto port = named ? port_ : absolutePath(port_);
    return ownCommand({"restore", "-p", port, "--from", absolutePath(backup.string())});
}

/// How to put back what the radio held, once a write has begun to change it.
std::string RadioLink::wayBack(const safeguards::Ending& ending) const {
    if (ending.backup.empty() || ending.task == Task::restore) {
        return {};
    }
    auto text = ending.radioChanged() ? say(texts::putBackBy, restoreCommand(ending.backup))
                                      : say(texts::backupIs, ending.backup.string());
    for (const auto& earlier : ending.earlier) {
        text += say(texts::earlierPutBackBy, restoreCommand(earlier));
    }
    return text;
}

std::string backupLines(std::span<const std::filesystem::path> paths) {
    const auto all = waysBack::list();
    std::string lines;
    for (const auto& path : paths) {
        const auto way = std::ranges::find(all, path, &waysBack::WayBack::path);
        if (way != all.end()) {
            const auto& t = way->time;
            lines += fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}  {}{}\n", t.year, t.month,
                                 t.day, t.hour, t.minute, t.second, path.string(),
                                 way->unfinished ? say(texts::unfinishedMark) : "");
        }
    }
    return lines;
}

void failForUnknownBackup(const std::string& reason) {
    constexpr std::size_t mostNamed = 3;
    std::vector<std::filesystem::path> latest;
    for (const auto& way : waysBack::list()) {
        if (way.reason == backups::Reason::beforeWrite && latest.size() < mostNamed) {
            latest.push_back(way.path);
        }
    }
    print(backupLines(latest));
    fail(latest.empty() ? reason : reason + say(texts::latestListed));
}

void RadioLink::warnBetween(std::size_t begin, std::size_t end) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = begin; i < std::min(end, entries.size()); ++i) {
        warn(entries[i].source);
    }
}

void RadioLink::tellOfLateFailures(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = mark; i < entries.size(); ++i) {
        // The simulated radio can tell only here that it could not keep its memory.
        if (entries[i].isOf(modCommun::procedures::closeCom)) {
            fail(entries[i].source);
        }
        warn(entries[i].source);
    }
}

std::string RadioLink::causeOf(const safeguards::Ending& ending) const {
    switch (ending.what) {
        case What::notStored:
        case What::notReadable:
            return ending.backupTrouble;
        case What::differs:
            return printDifferences(ending);
        default:
            return causeOfBreak(ending);
    }
}

std::string RadioLink::causeOfBreak(const safeguards::Ending& ending) const {
    if (ending.result.outcome == modSession::Outcome::stopped) {
        return say(texts::stoppedOnRequest);
    }
    const auto& entries = modShowErr::state().entries;
    if (!ending.result.unanswered && ending.mark < entries.size()) {
        return fmt::format("{}{}", entries[ending.mark].source,
                           remedyFor(entries[ending.mark].number));
    }
    return say(texts::noAnswerAtPort, port_, ending.result.failedAttempts);
}

}  // namespace k520::cli
