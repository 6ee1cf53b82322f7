// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
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

/// What differences come to. The programming stamp counts nowhere: it differs after each write.
struct Summary {
    std::size_t bytes = 0;        ///< that differ
    std::vector<int> channels{};  ///< their numbers, ascending, each once
    std::vector<int> options{};   ///< the same of the optional features, from 0
    bool band = false;
    bool model = false;
    std::size_t otherBytes = 0;  ///< that belong to none of these

    friend bool operator==(const Summary&, const Summary&) = default;
};

[[nodiscard]] Summary summaryOf(std::span<const ByteDifference> differences);

/// One line in the language in force: "channels 1-3, 7; optional features: Tot; band; other bytes:
/// 12", or "nothing".
[[nodiscard]] std::string summaryText(const Summary& summary);

}  // namespace k520::imageDifferences
