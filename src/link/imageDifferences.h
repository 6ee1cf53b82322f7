// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image/MemoryImage.h"
#include "image/modIicDat.h"

/// Where two images differ, byte by byte, and what each byte belongs to.
namespace k520::imageDifferences {

struct ByteDifference {
    int address = 0;
    std::uint8_t a = 0;
    std::uint8_t b = 0;
};

/// All bytes of a range that differ, in ascending order. Addresses that one of the images lacks are
/// left out.
[[nodiscard]] std::vector<ByteDifference> find(const MemoryImage& a, const MemoryImage& b,
                                               modIicDat::AddressRange range);

/// Whose bits differ, in the language in force: a channel's number and the column's title, an
/// option's caption, the band and the like, several with commas; empty for a byte that nothing of
/// this program's uses.
[[nodiscard]] std::string ownerText(const ByteDifference& difference);

/// "0030: 25 / 35  Channel 3, Receive", for a list.
[[nodiscard]] std::string lineText(const ByteDifference& difference);

}  // namespace k520::imageDifferences
