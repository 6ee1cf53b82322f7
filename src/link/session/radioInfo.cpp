// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/radioInfo.h"

#include <fmt/format.h>

#include "app/modSoftFace.h"
#include "base/ModuleState.h"
#include "channels/frequency.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/protocol/modCommun.h"

namespace k520::radioInfo {

namespace {}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void lblDebug_Click() {
    auto& flag = state().debugFlag;
    flag = flag == modCommun::flagTrue ? modCommun::flagFalse : modCommun::flagTrue;
}

std::string bandText(std::int32_t low, std::int32_t high) {
    return fmt::format("{} - {}MHz", frequency::fixedMhzText(low), frequency::fixedMhzText(high));
}

std::string lastWriteText() {
    const auto when = stamp::read(modIicDat::IicDat());
    return when ? fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", when->year, when->month, when->day,
                              when->hour, when->minute)
                : modSoftFace::text(SoftText::unknownTime);
}

}  // namespace k520::radioInfo
