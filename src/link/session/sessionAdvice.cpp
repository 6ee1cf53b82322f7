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
using safeguards::Arrived;
using safeguards::Ending;
using safeguards::Task;
using safeguards::What;
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

/// What follows after the cause and the state.
enum class Next : std::uint8_t { nothing, wayBack, backup };

/// A bad end in words: the headline, the cause, the state of image and radio, the next step.
struct Words {
    safeguards::Kind kind;
    const Text* headline;
    const Text* cause = nullptr;  ///< none: that of the last session
    const Text* state = nullptr;
    Next next = Next::nothing;
};

constexpr Words words[] = {
    {{What::notStored, Task::write}, &texts::nothingWritten, &texts::backupNotStored},
    {{What::notStored}, &texts::readWithoutCopy, &texts::copyNotStored},
    {{What::notReadable}, &texts::nothingWritten, &texts::backupNotReadable},

    {.kind = {What::differs, Task::write},
     .headline = &texts::writtenOtherwise,
     .cause = &texts::radioDiffers,
     .next = Next::wayBack},
    {.kind = {What::differs, Task::restore},
     .headline = &texts::writtenOtherwise,
     .cause = &texts::restoreDiffers,
     .next = Next::wayBack},
    {{What::differs}, &texts::passesDiffer, &texts::readsDiffer, &texts::imageUnchanged},

    {.kind = {{}, Task::write, Arrived::nothing, Stage::backUp},
     .headline = &texts::nothingWritten,
     .state = &texts::backUpFailed},
    {.kind = {{}, Task::write, Arrived::nothing},
     .headline = &texts::nothingWritten,
     .state = &texts::radioUnchanged,
     .next = Next::backup},
    {.kind = {{}, Task::write, Arrived::perhapsPart},
     .headline = &texts::perhapsPartlyWritten,
     .state = &texts::radioTouched,
     .next = Next::wayBack},
    {.kind = {{}, Task::write, Arrived::part},
     .headline = &texts::partlyWritten,
     .state = &texts::radioPartlyWritten,
     .next = Next::wayBack},
    {.kind = {{}, Task::write, Arrived::all},
     .headline = &texts::writtenNotCompared,
     .state = &texts::notCompared,
     .next = Next::wayBack},

    {.kind = {{}, Task::restore, Arrived::nothing},
     .headline = &texts::nothingWritten,
     .state = &texts::radioUnchanged},
    {.kind = {{}, Task::restore, Arrived::perhapsPart},
     .headline = &texts::perhapsPartlyWritten,
     .next = Next::wayBack},
    {.kind = {{}, Task::restore, Arrived::part},
     .headline = &texts::partlyWritten,
     .next = Next::wayBack},
    {.kind = {{}, Task::restore, Arrived::all},
     .headline = &texts::writtenNotCompared,
     .next = Next::wayBack},

    {.kind = {{}, Task::readOnce, Arrived::part},
     .headline = &texts::notRead,
     .state = &texts::imageMixed},
    {.kind = {}, .headline = &texts::notRead, .state = &texts::imageUnchanged},
};

std::string earlierText(const Ending& ending) {
    const auto count = ending.earlier.size();
    const auto latest = ending.earlier.front().filename().string();
    return count == 1 ? say(texts::earlierOffered, latest)
                      : say(texts::earlierSeveral, count, latest);
}

/// The way back from what a run, or an earlier one, has left in the radio.
std::string wayBackText(const Ending& ending) {
    if (ending.task == Task::restore) {
        return say(texts::restoreAgain);
    }
    if (!ending.earlier.empty()) {
        return earlierText(ending);
    }
    return ending.backup.empty() ? std::string()
                                 : say(texts::restoreOffered, ending.backup.filename().string());
}

/// Where a copy or a backup lies that is not needed at once.
std::string backupText(const Ending& ending) {
    if (ending.backup.empty() || ending.task == Task::restore) {
        return {};
    }
    return say(ending.direction() == Direction::read ? texts::copyLies : texts::backupLies,
               ending.backup.filename().string());
}

std::string nextText(Next next, const Ending& ending) {
    switch (next) {
        case Next::nothing:
            return {};
        case Next::backup:
            // An earlier write may have torn a radio that this one has not touched.
            return ending.earlier.empty() ? backupText(ending) : wayBackText(ending);
        case Next::wayBack:
            break;
    }
    return wayBackText(ending);
}

std::string causeText(const Text* cause, const Ending& ending, Entries logged) {
    if (cause == nullptr) {
        return causeOf(ending.result, logged);
    }
    return ending.what == What::differs ? say(*cause, ending.differences.size())
                                        : say(*cause, ending.backupTrouble);
}

/// Where the very first session finds no port there is no state to tell of.
bool beganNothing(const Ending& ending) {
    return ending.result.outcome == Outcome::portFailed &&
           (ending.task == Task::readOnce ||
            (ending.stage == Stage::write && ending.backup.empty()));
}

std::string stateText(const Text* state, const Ending& ending) {
    if (state == nullptr || beganNothing(ending)) {
        return {};
    }
    const int last = ending.result.furthestAddress.value_or(0) + scriptText::blockLength - 1;
    return say(*state, last);
}

/// A user who has stopped a session that did no harm has nothing to be warned of.
Tone toneOfFailure(const Ending& ending) {
    if (ending.radioChanged()) {
        return Tone::bad;
    }
    const bool wanted = ending.result.outcome == Outcome::stopped;
    return wanted || ending.what == What::notStored || ending.what == What::notReadable
               ? Tone::warning
               : Tone::bad;
}

Notice failure(const Ending& ending, Entries logged) {
    const Words& row = safeguards::rowFor(ending, words);
    const auto advice = joined(causeText(row.cause, ending, logged), stateText(row.state, ending));
    return {toneOfFailure(ending), say(*row.headline), joined(advice, nextText(row.next, ending))};
}

/// A run whose sessions all succeeded: what there is to say of it besides.
std::string adviceOfSuccess(const Ending& ending, Entries logged) {
    const bool read = ending.direction() == Direction::read;
    const auto compared = say(read ? texts::bothReadsAgree : texts::radioHoldsAll);
    const auto verdict =
        joined(doubts(logged), ending.stage == Stage::compare ? compared : std::string());
    if (ending.earlier.empty()) {
        return joined(verdict, backupText(ending));
    }
    const auto latest = ending.earlier.front().filename().string();
    return joined(verdict, ending.earlier.size() == 1 ? say(texts::earlierNotCovered, latest)
                                                      : earlierText(ending));
}

Notice success(const Ending& ending, Entries logged) {
    return {Tone::good,
            ending.task == Task::restore ? say(texts::radioRestored)
                                         : blocksMoved(ending.direction(), ending.result),
            adviceOfSuccess(ending, logged)};
}

/// "2026-11-22 13:05".
std::string minuteOf(const DateTime& t) {
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", t.year, t.month, t.day, t.hour, t.minute);
}

}  // namespace

Notice noticeOf(const Ending& ending, Entries logged) {
    switch (ending.what) {
        case What::done:
            return success(ending, logged);
        case What::refused:
            return {};
        default:
            return failure(ending, logged);
    }
}

Notice noticeWhileGivingUp(Direction direction, Stage stage, const Result& result, Entries logged) {
    Ending ending;
    ending.task = direction == Direction::read ? Task::readOnce : Task::write;
    ending.stage = stage;
    ending.result = result;
    return {Tone::bad, say(*safeguards::rowFor(ending, words).headline), causeOf(result, logged)};
}

Notice noticeOfError(Direction direction, Entries logged) {
    const bool read = direction == Direction::read;
    return {Tone::bad, say(read ? texts::notRead : texts::perhapsPartlyWritten),
            joined(errorAdvice(logged), read ? std::string() : say(texts::radioTouched))};
}

Notice beforeRun(Direction direction, const std::string& startButton) {
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
