// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "image/modIicDat.h"

/// The texts of the protocol scripts. A script is a string of two-character tokens without
/// separators: hexadecimal bytes and these keywords.
///
///   TX  begins a frame: the bytes and VA marks after it are sent in one write
///   RX  ends the frame: what follows, up to TX, RF, WF or EN, is the expected reply
///   VA  one byte of the data buffer: sent from it, or received into it whatever it is
///   RF, WF  reserved: three byte tokens follow and are dropped
///   EN  ends the script
namespace k520::scriptText {

/// The seven bytes are the text "PROGRAM"; a radio that is ready answers both frames with 06.
inline constexpr std::string_view handshake = "TX50524F4752414DRX06TX06RX06EN";
/// The radio expects these seven bytes after a read and answers nothing.
inline constexpr std::string_view endOfRead = "TX455AA5322345F2EN";
inline constexpr std::string_view endOfWrite = "TX06RX06EN";

/// Bytes of a whole block.
inline constexpr int blockLength = modIicDat::blockLength;
/// The highest address that the four digits can hold.
inline constexpr int highestAddress = 16383;

/// Progress in percent: after the handshake, the most that a block shows, after the last step.
inline constexpr std::int16_t handshakePercent = 3;
inline constexpr std::int16_t highestBlockPercent = 97;
inline constexpr std::int16_t endPercent = 100;

/// A block's address as the radio expects it, four digits: bits 13..10, bits 9..8, bits 7..4, bits
/// 3..0. So it is not the plain hexadecimal address: 0x0400 is "1000", 0x1FF0 is "73F0". Raises 5
/// outside 0..16383, where the first digit would be none.
[[nodiscard]] std::string addressText(int address);

/// The script of a block of 1 to 16 bytes: the request and the reply that repeats its header, or
/// the block and its answer 06. Raises 5 as addressText does.
[[nodiscard]] std::string readBlock(int address, int length);
[[nodiscard]] std::string writeBlock(int address, int length);

/// How many blocks the percents of a range from `start` to `end`, both inclusive, are based on: a
/// sixteenth of their difference, rounded with ties to even, but not 0.
[[nodiscard]] int percentBlocks(int start, int end) noexcept;

/// Progress after step `step` (2 for the first block) of a list with so many blocks; ties to even.
[[nodiscard]] std::int16_t blockPercent(int step, int blocks) noexcept;

/// The script cut into tokens of two characters; a last odd character is a token of its own.
[[nodiscard]] std::vector<std::string> tokens(std::string_view script);

/// The value of a byte token; 0 where it is not hexadecimal. Both letter cases count.
[[nodiscard]] std::uint8_t byteOfToken(std::string_view token) noexcept;

}  // namespace k520::scriptText
