// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/sessionAdvice.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/RuntimeError.h"
#include "link/protocol/modCommun.h"
#include "link/protocol/scriptText.h"
#include "link/session/linkTexts.h"
#include "link/session/waysBack.h"

namespace k520::sessionAdvice {

namespace {

using modSession::Outcome;
using modSession::Result;
using safeguards::Report;
namespace procedures = modCommun::procedures;
using Entries = std::span<const modShowErr::Entry>;

/// The handshake and the end of a script move no block.
constexpr int stepsWithoutBlock = 2;

struct PortTrouble {
    std::int16_t number;
    Text inShort;
    Text advice;
};

constexpr PortTrouble portTroubles[] = {
    {errNum::fileNotFound, texts::portMissingShort, texts::portMissing},
    {errNum::permissionDenied, texts::portDeniedShort, texts::portDenied},
    {errNum::alreadyOpen, texts::portInUseShort, texts::portInUse},
    {errNum::deviceUnavailable, texts::portNotSerialShort, texts::portNotSerial},
};
constexpr PortTrouble anyTrouble{0, texts::portNotUsable, texts::portTroubleOther};

const PortTrouble& troubleOf(std::int16_t number) {
    const auto* row = std::ranges::find(portTroubles, number, &PortTrouble::number);
    return row != std::end(portTroubles) ? *row : anyTrouble;
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

modShowErr::Entry lastOf(Entries logged, const Procedure& procedure) {
    return lastWhere(logged, [&](const auto& entry) { return entry.isOf(procedure); });
}

std::string blocksMoved(Direction direction, const Result& result) {
    return say(direction == Direction::read ? texts::readDone : texts::writeDone,
               std::max(0, result.stepCount - stepsWithoutBlock));
}

/// What was logged although all went well.
std::string doubts(Entries logged) {
    return logged.empty() ? std::string() : say(texts::doneButLogged, logged.back().source);
}

std::string portAdvice(Entries logged) {
    const auto entry = lastOf(logged, procedures::openCom);
    return say(troubleOf(entry.number).advice, entry.source,
               entry.subject.empty() ? entry.source : entry.subject);
}

/// The port's own failure on the way, not one of the opening.
bool tellsOfLostContact(const modShowErr::Entry& entry) {
    return entry.number == errNum::deviceIo &&
           (entry.isOf(procedures::protocolCom) || entry.isOf(procedures::rxComDat));
}

std::string errorAdvice(Entries logged) {
    const auto& entry = logged.empty() ? modShowErr::Entry{} : logged.back();
    return say(entry.number == errNum::subscript ? texts::rangeUnusable : texts::endedByError,
               entry.source);
}

std::string causeOfFailure(const Result& result, Entries logged) {
    if (result.stepCount == 0) {
        return say(texts::rangeUnusable, lastOf(logged, procedures::initProtocol).source);
    }
    if (const auto lost = lastWhere(logged, tellsOfLostContact); lost.number != 0) {
        return say(texts::contactLost, lost.source);
    }
    if (result.failedAttempts < modSession::mostAttempts) {
        return errorAdvice(logged);
    }
    return say(result.mostSteps == 0 ? texts::radioSilent : texts::radioUnclear,
               result.failedAttempts);
}

std::string stateLeft(Direction direction, const Result& result) {
    const bool read = direction == Direction::read;
    if (result.furthestAddress) {
        return say(read ? texts::imageMixed : texts::radioPartlyWritten,
                   *result.furthestAddress + scriptText::blockLength - 1);
    }
    if (read) {
        return say(texts::imageUnchanged);
    }
    const bool untouched = modSession::radioStateAfter(result) == modSession::RadioState::untouched;
    return say(untouched ? texts::radioUnchanged : texts::radioTouched);
}

/// Why a session that did not succeed did not.
std::string causeOf(const Result& result, Entries logged) {
    switch (result.outcome) {
        case Outcome::portFailed:
            return portAdvice(logged);
        case Outcome::failed:
            return causeOfFailure(result, logged);
        case Outcome::stopped:
            return say(texts::sessionStopped);
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
        return joined(text, say(texts::restoreAgain));
    }
    if (!report.earlier.empty()) {
        const auto count = report.earlier.size();
        const auto latest = report.earlier.front().filename().string();
        return joined(text, count == 1 ? say(texts::earlierOffered, latest)
                                       : say(texts::earlierSeveral, count, latest));
    }
    return report.backup.empty()
               ? text
               : joined(text, say(texts::restoreOffered, report.backup.filename().string()));
}

/// Adds where a copy or a backup lies that is not needed at once.
std::string withBackup(const std::string& text, const Report& report) {
    const bool read = report.direction == Direction::read;
    return report.backup.empty() || report.restored
               ? text
               : joined(text, say(read ? texts::copyLies : texts::backupLies,
                                  report.backup.filename().string()));
}

/// A write or a restore that did not come to its end.
std::string brokenWrite(const std::string& cause, const Report& report) {
    const bool changed = safeguards::radioChanged(report);
    const auto state = !changed          ? say(texts::radioUnchanged)
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
                          say(report.restored ? texts::radioUnchanged : texts::backUpFailed));
        case Stage::read:
            return joined(cause, say(texts::imageUnchanged));
        case Stage::write:
        case Stage::restore:
            return brokenWrite(cause, report);
        case Stage::compare:
            break;
    }
    return report.written
               ? withWayBack(joined(cause, report.restored ? "" : say(texts::notCompared)), report)
               : joined(cause, say(texts::imageUnchanged));
}

std::string differ(const Report& report) {
    const auto count = report.differences.size();
    return report.written
               ? withWayBack(
                     say(report.restored ? texts::restoreDiffers : texts::radioDiffers, count),
                     report)
               : joined(say(texts::readsDiffer, count), say(texts::imageUnchanged));
}

/// A run whose sessions all succeeded: what there is to say of it besides.
std::string adviceOfSuccess(const Report& report, Entries logged) {
    const bool read = report.direction == Direction::read;
    const auto verdict =
        report.stage == Stage::compare
            ? joined(doubts(logged), say(read ? texts::bothReadsAgree : texts::radioHoldsAll))
            : doubts(logged);
    return report.restored ? verdict : withBackup(verdict, report);
}

/// A backup that could not be stored or read.
std::string backupTrouble(const Report& report) {
    if (report.direction == Direction::read) {
        return say(texts::copyNotStored, report.backupTrouble);
    }
    return say(report.stage == Stage::backUp ? texts::backupNotStored : texts::backupNotReadable,
               report.backupTrouble);
}

/// The cause of a bad end, the state of image and radio, and the next step.
std::string adviceOfFailure(const Report& report, Entries logged) {
    if (!report.backupTrouble.empty()) {
        return backupTrouble(report);
    }
    if (!report.differences.empty()) {
        return differ(report);
    }
    const bool plain = report.stage == Stage::write ? report.backup.empty() : !report.imageSafe;
    return plain ? adviceAfter(report.direction, report.result, logged) : brokenOff(report, logged);
}

const Text& headlineOfWrite(const Report& report) {
    if (!report.differences.empty()) {
        return texts::writtenOtherwise;
    }
    if (report.written) {
        return texts::writtenNotCompared;
    }
    if (!safeguards::radioChanged(report)) {
        return texts::nothingWritten;
    }
    return report.result.furthestAddress ? texts::partlyWritten : texts::perhapsPartlyWritten;
}

const Text& headlineOfFailure(const Report& report) {
    if (report.direction == Direction::write) {
        return headlineOfWrite(report);
    }
    if (!report.differences.empty()) {
        return texts::passesDiffer;
    }
    return report.backupTrouble.empty() ? texts::notRead : texts::readWithoutCopy;
}

/// A user who has stopped a session that did no harm has nothing to be warned of.
Tone toneOfFailure(const Report& report) {
    if (report.direction == Direction::write && safeguards::radioChanged(report)) {
        return Tone::bad;
    }
    const bool wanted = report.result.outcome == Outcome::stopped;
    return wanted || !report.backupTrouble.empty() ? Tone::warning : Tone::bad;
}

/// "2026-11-22 13:05".
std::string minuteOf(const DateTime& t) {
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", t.year, t.month, t.day, t.hour, t.minute);
}

}  // namespace

std::string adviceAfter(Direction direction, const Result& result, Entries logged) {
    switch (result.outcome) {
        case Outcome::succeeded:
            return joined(blocksMoved(direction, result), doubts(logged));
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

Ending endingOf(const Report& report, Entries logged) {
    if (report.good) {
        return {Tone::good,
                report.restored ? say(texts::radioRestored)
                                : blocksMoved(report.direction, report.result),
                adviceOfSuccess(report, logged)};
    }
    if (report.result.outcome == Outcome::busy) {
        return {};
    }
    return {toneOfFailure(report), say(headlineOfFailure(report)), adviceOfFailure(report, logged)};
}

Ending endingWhileGivingUp(Direction direction, Stage stage, const Result& result, Entries logged) {
    Report report;
    report.direction = direction;
    report.stage = stage;
    report.result = result;
    report.written = direction == Direction::write && stage == Stage::compare;
    return {Tone::bad, say(headlineOfFailure(report)), causeOf(result, logged)};
}

Ending endingOfError(Direction direction, Entries logged) {
    const bool read = direction == Direction::read;
    return {Tone::bad, say(read ? texts::notRead : texts::perhapsPartlyWritten),
            joined(errorAdvice(logged), read ? std::string() : say(texts::radioTouched))};
}

Ending beforeRun(Direction direction, const std::string& startButton) {
    const auto ways = waysBack::list();
    const auto torn = std::ranges::find_if(ways, &waysBack::WayBack::unfinished);
    if (torn != ways.end()) {
        return {Tone::warning, say(texts::unfinishedBefore),
                say(texts::unfinishedHint, minuteOf(torn->time))};
    }
    const bool read = direction == Direction::read;
    return {Tone::plain, say(read ? texts::readyToRead : texts::readyToWrite),
            say(texts::readyHint, startButton, modCommun::state().portNumber)};
}

std::string stageName(Direction direction, Stage stage) {
    switch (stage) {
        case Stage::read:
            return say(texts::stageRead);
        case Stage::backUp:
            return say(texts::stageBackUp);
        case Stage::write:
            return say(texts::stageWrite);
        case Stage::restore:
            return say(texts::stageRestore);
        case Stage::compare:
            break;
    }
    return say(direction == Direction::read ? texts::stageReadAgain : texts::stageReadBack);
}

std::string portTroubleInShort(std::int16_t number) {
    return say(troubleOf(number).inShort);
}

}  // namespace k520::sessionAdvice
