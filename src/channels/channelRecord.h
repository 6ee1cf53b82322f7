// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>

/// Where a channel lives in the memory image, and what each of its bytes holds. Every address of
/// the channel area is written here and nowhere else.
///
/// Channel n has a record of 16 bytes at 0x0010 * n (channel 1 at 0x0010):
///
///   bytes 0..3     receive frequency, 8 BCD digits in 10 Hz, least significant pair first
///   bytes 4..7     transmit frequency, the same; FF FF FF FF where the channel does not transmit
///   bytes 8..9     decode (receive) tone word, low byte first
///   bytes 10..11   encode (transmit) tone word
///   byte  12       bits 3-4: parameter field 8
///   byte  13       bit 5: parameter field 5; bit 4: parameter field 6
///   bytes 14..15   not ours
///
/// Parameter field 7 of all channels is the word at 0x017E (low byte first): bit n-1 belongs to
/// channel n, which is why no more than sixteen channels can be coded. All other bits are kept as
/// they are.
namespace k520::channelRecord {

inline constexpr int firstAddress = 0x0010;
inline constexpr int size = 16;
/// The highest channel that has a bit in the shared word.
inline constexpr int codecChannels = 16;

/// The address of a channel's record; channels count from 1.
[[nodiscard]] constexpr int address(int channel) noexcept {
    return firstAddress + (channel - 1) * size;
}

namespace offset {
inline constexpr int rx = 0;
inline constexpr int tx = 4;
inline constexpr int decode = 8;
inline constexpr int encode = 10;
}  // namespace offset

inline constexpr int frequencyLength = 4;
inline constexpr int toneLength = 2;

/// Bytes of the record that are one column of the grid as a whole.
struct Part {
    int column;
    int offset;
    int length;
};

inline constexpr Part rxPart{1, offset::rx, frequencyLength};
inline constexpr Part txPart{2, offset::tx, frequencyLength};
inline constexpr Part decodePart{3, offset::decode, toneLength};
inline constexpr Part encodePart{4, offset::encode, toneLength};
inline constexpr std::array<Part, 4> parts{rxPart, txPart, decodePart, encodePart};

/// Whether the top byte of a stored frequency says that there is one. 0x00, 0xFF (erased) and all
/// above 0x99 mean none; in the receive frequency that makes the channel empty.
[[nodiscard]] constexpr bool frequencyPresent(std::uint8_t topByte) noexcept {
    return topByte >= 0x01 && topByte <= 0x99;
}

/// A parameter inside the record: value v (from 1) is the bit pattern patterns[v - 1] under `mask`
/// in byte `offset`; every other pattern reads as 0, every other value is written as 0.
struct Parameter {
    int field;
    int offset;
    std::uint8_t mask;
    std::array<std::uint8_t, 2> patterns;  ///< 0 where it has none
};

inline constexpr Parameter parameter5{5, 13, 0x20, {0x20, 0}};
inline constexpr Parameter parameter6{6, 13, 0x10, {0x10, 0}};
inline constexpr Parameter parameter8{8, 12, 0x18, {0x08, 0x10}};
inline constexpr std::array<Parameter, 3> parameters{parameter5, parameter6, parameter8};

/// The parameter that all channels share a word for, and the word's address.
inline constexpr int sharedField = 7;
inline constexpr int sharedWord = 0x017E;

}  // namespace k520::channelRecord
