// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/Fault.h"
#include "channels/channelTable.h"
#include "channels/columnDefinition.h"
#include "image/MemoryImage.h"

/// The channel codec over values: a record of the image (see channelRecord.h) to a channel and
/// back. Nothing process-wide is read or written, and nothing is logged: what went wrong comes back
/// beside the value. Channels count from 1.
namespace k520::channelCodec {

using modChMem::Channel;

/// What decoding needs beside the image.
struct Columns {
    /// The definition of column k is at k - 1; an empty channel takes its values from there.
    std::span<const modChMem::ColumnDefinition> definitions;
    int last = 0;              ///< the number of the last column in use
    std::string_view offText;  ///< the text of a tone that is off
};

/// The parts of a record, in the order in which they are coded.
enum class Part : std::uint8_t { parameters, receive, transmit, decodeTone, encodeTone };
inline constexpr std::array parts{Part::parameters, Part::receive, Part::transmit, Part::decodeTone,
                                  Part::encodeTone};

/// The procedure that decodes or encodes a part: "modChMem->IcRxFreSol", "modChMem->CiRxFreSol".
[[nodiscard]] std::string_view decoderOf(Part part) noexcept;
[[nodiscard]] std::string_view encoderOf(Part part) noexcept;

/// Decodes one part into the channel. A part that fails keeps its value: 13 for a frequency whose
/// bytes are not digits, 9 where the image is too short. Above channel 16 the parameters fail with
/// 9 after fields 5 and 6.
[[nodiscard]] Faults decode(Part part, const MemoryImage& image, int number,
                            std::string_view offText, Channel& channel);
/// Encodes one part into the image, which keeps what it held where the part fails: see
/// pairsOfDigits and toneCode::toneWord; 9 as above.
[[nodiscard]] Faults encode(Part part, const Channel& channel, int number, std::string_view offText,
                            MemoryImage& image);

struct Decoded {
    Channel channel;
    Faults faults;
};

/// Decodes a whole channel. `before` gives what the image does not hold: field 0, the tones of an
/// empty channel, and the value of each part that fails.
[[nodiscard]] Decoded decode(const MemoryImage& image, int number, Channel before,
                             const Columns& columns);

/// Encodes a whole channel, whatever its field 0.
[[nodiscard]] Faults encode(const Channel& channel, int number, std::string_view offText,
                            MemoryImage& image);

/// Pairs of characters from the left, each read as a hexadecimal number: so decimal digits become
/// BCD bytes. Without padding, and 0 after the end of the text. Raises 9 above eight characters, 13
/// for what is not a number.
[[nodiscard]] std::array<std::uint8_t, 4> pairsOfDigits(std::string_view text);

/// The bit of the shared word for index 0 to 15; raises 9 outside them.
[[nodiscard]] std::uint16_t sharedBit(int index);

}  // namespace k520::channelCodec
