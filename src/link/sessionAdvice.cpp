// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/sessionAdvice.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "app/RuntimeError.h"
#include "app/ownTexts.h"
#include "link/scriptText.h"

namespace k520::sessionAdvice {

namespace {

using modSession::Outcome;
using modSession::Result;
using safeguards::Report;
using Entries = std::span<const modShowErr::Entry>;

/// The handshake and the end of a script move no block.
constexpr int stepsWithoutBlock = 2;

struct PortTrouble {
    std::int16_t number;
    OwnText inShort;
    OwnText advice;
};

constexpr PortTrouble portTroubles[] = {
    {errNum::fileNotFound, OwnText::portMissingShort, OwnText::portMissing},
    {errNum::permissionDenied, OwnText::portDeniedShort, OwnText::portDenied},
    {errNum::alreadyOpen, OwnText::portInUseShort, OwnText::portInUse},
    {errNum::deviceUnavailable, OwnText::portNotSerialShort, OwnText::portNotSerial},
};
constexpr PortTrouble anyTrouble{0, OwnText::portNotUsable, OwnText::portTroubleOther};

const PortTrouble& troubleOf(std::int16_t number) {
    const auto* row = std::ranges::find(portTroubles, number, &PortTrouble::number);
    return row != std::end(portTroubles) ? *row : anyTrouble;
}

template <class... Arguments>
std::string say(OwnText text, const Arguments&... arguments) {
    return fmt::format(fmt::runtime(ownText(text)), arguments...);
}

/// Two sentences; Chinese ones have no blank between them.
std::string joined(const std::string& first, const std::string& second) {
    if (first.empty() || second.empty()) {
        return first + second;
    }
    return first + (first.ends_with("。") ? "" : " ") + second;
}

/// The last entry that a predicate holds for; an empty one where there is none.
template <class Predicate>
modShowErr::Entry lastWhere(Entries logged, Predicate holds) {
    const auto found = std::find_if(logged.rbegin(), logged.rend(), holds);
    return found != logged.rend() ? *found : modShowErr::Entry{};
}

modShowErr::Entry lastOf(Entries logged, std::string_view label) {
    return lastWhere(logged, [&](const auto& entry) { return entry.label == label; });
}

std::string success(Direction direction, const Result& result, Entries logged) {
    const auto line = say(direction == Direction::read ? OwnText::readDone : OwnText::writeDone,
                          std::max(0, result.stepCount - stepsWithoutBlock));
    return logged.empty() ? line : joined(line, say(OwnText::doneButLogged, logged.back().source));
}

std::string portAdvice(Entries logged) {
    const auto entry = lastOf(logged, "modCommun->OpenCom");
    const auto device = entry.source.substr(0, entry.source.find(": "));
    return say(troubleOf(entry.number).advice, entry.source, device);
}

/// The port's own failure on the way, not one of the opening.
bool tellsOfLostContact(const modShowErr::Entry& entry) {
    return entry.number == errNum::deviceIo &&
           (entry.label == "modCommun->ProtocolCom" || entry.label == "modCommun->RxComDat");
}

std::string errorAdvice(Entries logged) {
    const auto& entry = logged.empty() ? modShowErr::Entry{} : logged.back();
    return say(entry.number == errNum::subscript ? OwnText::rangeUnusable : OwnText::endedByError,
               entry.source);
}

std::string causeOfFailure(const Result& result, Entries logged) {
    if (result.stepCount == 0) {
        return say(OwnText::rangeUnusable, lastOf(logged, "modCommun->InitProtocol").source);
    }
    if (const auto lost = lastWhere(logged, tellsOfLostContact); lost.number != 0) {
        return say(OwnText::contactLost, lost.source);
    }
    if (result.failedAttempts < modSession::mostAttempts) {
        return errorAdvice(logged);
    }
    return say(result.mostSteps == 0 ? OwnText::radioSilent : OwnText::radioUnclear,
               result.failedAttempts);
}

std::string stateLeft(Direction direction, const Result& result) {
    const bool read = direction == Direction::read;
    if (result.furthestAddress) {
        return say(read ? OwnText::imageMixed : OwnText::radioPartlyWritten,
                   *result.furthestAddress + scriptText::blockLength - 1);
    }
    if (read) {
        return say(OwnText::imageUnchanged);
    }
    const bool untouched = modSession::radioStateAfter(result) == modSession::RadioState::untouched;
    return say(untouched ? OwnText::radioUnchanged : OwnText::radioTouched);
}

/// Why a session that did not succeed did not.
std::string causeOf(const Result& result, Entries logged) {
    switch (result.outcome) {
        case Outcome::portFailed:
            return portAdvice(logged);
        case Outcome::failed:
            return causeOfFailure(result, logged);
        case Outcome::stopped:
            return say(OwnText::sessionStopped);
        case Outcome::succeeded:
        case Outcome::busy:
        case Outcome::notAccepted:
            break;
    }
    return {};
}

/// Adds the way back from what a run, or an earlier one, has left in the radio.
std::string withWayBack(const std::string& text, const Report& report) {
    if (report.restored) {
        return joined(text, say(OwnText::restoreAgain));
    }
    if (!report.earlier.empty()) {
        return joined(text, say(OwnText::earlierOffered, report.earlier.filename().string()));
    }
    return report.backup.empty()
               ? text
               : joined(text, say(OwnText::restoreOffered, report.backup.filename().string()));
}

/// Adds where a copy or a backup lies that is not needed at once.
std::string withBackup(const std::string& text, const Report& report) {
    const bool read = report.direction == Direction::read;
    return report.backup.empty() || report.restored
               ? text
               : joined(text, say(read ? OwnText::copyLies : OwnText::backupLies,
                                  report.backup.filename().string()));
}

/// A write or a restore that did not come to its end.
std::string brokenWrite(const std::string& cause, const Report& report) {
    const bool changed = safeguards::radioChanged(report);
    const auto state = !changed          ? say(OwnText::radioUnchanged)
                       : report.restored ? std::string()
                                         : stateLeft(Direction::write, report.result);
    const auto text = joined(cause, state);
    // An earlier write may have torn a radio that this one has not touched.
    return changed || !report.earlier.empty() ? withWayBack(text, report)
                                              : withBackup(text, report);
}

/// A run whose last session did not succeed.
std::string brokenOff(const Report& report, Entries logged) {
    const auto cause = causeOf(report.result, logged);
    switch (report.stage) {
        case Stage::backUp:
            return joined(cause,
                          say(report.restored ? OwnText::radioUnchanged : OwnText::backUpFailed));
        case Stage::read:
            return joined(cause, say(OwnText::imageUnchanged));
        case Stage::write:
        case Stage::restore:
            return brokenWrite(cause, report);
        case Stage::compare:
            break;
    }
    return report.written
               ? withWayBack(joined(cause, report.restored ? "" : say(OwnText::notCompared)),
                             report)
               : joined(cause, say(OwnText::imageUnchanged));
}

std::string differ(const Report& report) {
    const auto count = report.differences.size();
    return report.written
               ? withWayBack(
                     say(report.restored ? OwnText::restoreDiffers : OwnText::radioDiffers, count),
                     report)
               : joined(say(OwnText::readsDiffer, count), say(OwnText::imageUnchanged));
}

/// A run whose sessions all succeeded.
std::string done(const Report& report, Entries logged) {
    const auto text = success(report.direction, report.result, logged);
    const bool read = report.direction == Direction::read;
    const auto verdict =
        report.stage == Stage::compare
            ? joined(text, say(read ? OwnText::bothReadsAgree : OwnText::radioHoldsAll))
            : text;
    return report.restored ? joined(verdict, say(OwnText::radioRestored))
                           : withBackup(verdict, report);
}

/// A backup that could not be stored or read.
std::string backupTrouble(const Report& report) {
    if (report.direction == Direction::read) {
        return say(OwnText::copyNotStored, report.backupTrouble);
    }
    return say(
        report.stage == Stage::backUp ? OwnText::backupNotStored : OwnText::backupNotReadable,
        report.backupTrouble);
}

}  // namespace

std::string adviceAfter(Direction direction, const Result& result, Entries logged) {
    switch (result.outcome) {
        case Outcome::succeeded:
            return success(direction, result, logged);
        case Outcome::portFailed:
            return causeOf(result, logged);
        case Outcome::failed:
        case Outcome::stopped:
            return joined(causeOf(result, logged), stateLeft(direction, result));
        case Outcome::busy:
        case Outcome::notAccepted:
            break;
    }
    return {};
}

std::string adviceAfter(const Report& report, Entries logged) {
    const Outcome outcome = report.result.outcome;
    if (!report.backupTrouble.empty()) {
        return backupTrouble(report);
    }
    if (!report.differences.empty()) {
        return differ(report);
    }
    if (outcome == Outcome::busy) {
        return {};
    }
    if (report.good) {
        return done(report, logged);
    }
    const bool plain = report.stage == Stage::write ? report.backup.empty() : !report.imageSafe;
    return plain ? adviceAfter(report.direction, report.result, logged) : brokenOff(report, logged);
}

const std::string& stageName(Direction direction, Stage stage) {
    switch (stage) {
        case Stage::read:
            return ownText(OwnText::stageRead);
        case Stage::backUp:
            return ownText(OwnText::stageBackUp);
        case Stage::write:
            return ownText(OwnText::stageWrite);
        case Stage::restore:
            return ownText(OwnText::stageRestore);
        case Stage::compare:
            break;
    }
    return ownText(direction == Direction::read ? OwnText::stageReadAgain : OwnText::stageReadBack);
}

const std::string& portTroubleInShort(std::int16_t number) {
    return ownText(troubleOf(number).inShort);
}

}  // namespace k520::sessionAdvice
