// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/ending.h"

namespace k520::safeguards {

namespace {

Arrived arrivedBy(const modSession::Result& result, Direction direction) noexcept {
    if (result.outcome == modSession::Outcome::succeeded) {
        return Arrived::all;
    }
    if (result.furthestAddress) {
        return Arrived::part;
    }
    // After the handshake the first block may have been stored without an answer that came back.
    const bool perhaps = direction == Direction::write && result.mostSteps > 0;
    return perhaps ? Arrived::perhapsPart : Arrived::nothing;
}

}  // namespace

Arrived Ending::arrived() const noexcept {
    switch (stage) {
        case Stage::backUp:
            return Arrived::nothing;
        case Stage::read:
            return task == Task::readOnce ? arrivedBy(result, Direction::read) : Arrived::nothing;
        case Stage::write:
        case Stage::restore:
            return arrivedBy(result, Direction::write);
        case Stage::compare:
            break;
    }
    // What was sent is in the radio; what was read waits until both passes agree.
    return direction() == Direction::write || result.outcome == modSession::Outcome::succeeded
               ? Arrived::all
               : Arrived::nothing;
}

bool Ending::written() const noexcept {
    return direction() == Direction::write && arrived() == Arrived::all;
}

bool Ending::radioChanged() const noexcept {
    return direction() == Direction::write && arrived() != Arrived::nothing;
}

bool isOf(const Ending& ending, const Kind& kind) noexcept {
    const auto fits = [](const auto& wanted, auto is) { return !wanted || *wanted == is; };
    return fits(kind.what, ending.what) && fits(kind.task, ending.task) &&
           fits(kind.arrived, ending.arrived()) && fits(kind.stage, ending.stage);
}

}  // namespace k520::safeguards
