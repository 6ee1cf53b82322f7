// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/radioInfo.h"

#include <fmt/format.h>

#include "app/modSoftFace.h"
#include "channels/frequency.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/modCommun.h"

namespace k520::radioInfo {

namespace {

constexpr int unknownTimeText = 179;

std::string limitText(std::int32_t frequency) {
    return fmt::format("{}.{:05}", frequency / frequency::perMhz, frequency % frequency::perMhz);
}

}  // namespace

State& state() {
    static State instance;
    return instance;
}

void lblDebug_Click() {
    auto& flag = state().debugFlag;
    flag = flag == modCommun::flagTrue ? modCommun::flagFalse : modCommun::flagTrue;
}

std::string bandText(std::int32_t low, std::int32_t high) {
    return fmt::format("{} - {}MHz", limitText(low), limitText(high));
}

std::string lastWriteText() {
    const auto when = stamp::read(modIicDat::IicDat());
    return when ? fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", when->year, when->month, when->day,
                              when->hour, when->minute)
                : modSoftFace::text(unknownTimeText);
}

}  // namespace k520::radioInfo
