// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

namespace k520::test {

/// A write of the real program with a backup, over 0000 to `lastAddress` of a radio on a
/// pseudo-terminal, and killed when the radio has heard so many exchanges of the write.
struct KilledWriteCase {
    int lastAddress = 0x1FFF;
    std::uint32_t exchange = 1;
};

/// Checks that the backup holds what the radio held, and that writing it restores the radio.
/// Returns what is wrong, or nothing.
std::string killedWrite(const KilledWriteCase& job);

/// A write to each of two radios of one kind, both with the backup in the program's folder and both
/// killed like that. Checks that each radio gets its own content back without being told which.
/// The radios differ in the last block; a write that was killed after it leaves nothing to tell
/// them apart by. Returns what is wrong, or nothing.
std::string twoKilledWrites(const KilledWriteCase& job);

}  // namespace k520::test
