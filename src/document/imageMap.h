// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Which bits of the memory image mean what: every field that this program knows, in one list. The
/// addresses are written where the codecs are (channelRecord.h, optionTable, bandCodec.h, stamp.h);
/// this list collects them. Whoever asks whose a byte is asks here.
namespace k520::imageMap {

enum class Owner : std::uint8_t { channel, option, model, band, stamp };

/// The same bits of one or more bytes in a row.
struct Field {
    Owner owner = Owner::channel;
    int number = 0;  ///< a channel's, from 1, or an option's, from 0; else 0
    int column = 0;  ///< of a channel: the grid's column; 0 for bits of its record that are kept
    int address = 0;
    int length = 1;
    std::uint8_t mask = 0xFF;  ///< in each of the bytes
    std::string_view codec;    ///< what reads it: a module; empty for bits that are only kept

    /// Whether some of these bits of the byte at an address belong to the field.
    [[nodiscard]] bool touches(int byteAddress, int bits) const noexcept {
        return byteAddress >= address && byteAddress < address + length && (mask & bits) != 0;
    }
};

/// All fields for the channels in force: channel by channel their records, then the word that they
/// share, options, model, band and stamp.
[[nodiscard]] std::vector<Field> fields();

/// Those of `all` that some bits of a byte belong to, in the same order. Kept bits of a record
/// count only where nothing else of that record is touched.
[[nodiscard]] std::vector<Field> at(const std::vector<Field>& all, int address, int bits);

/// The key of a field: "ch3.rx", "ch3.Power", "ch3" for kept bits, "option.tot", "model", "band",
/// "stamp".
[[nodiscard]] std::string name(const Field& field);

/// What the field is called in the window, in the language in force: "Channel 3 Receive", an
/// option's caption.
[[nodiscard]] std::string caption(const Field& field);

}  // namespace k520::imageMap
