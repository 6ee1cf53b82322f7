// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "base/Checked.h"
#include "channels/channelRecord.h"
#include "channels/frequency.h"

namespace k520::modChMem {

/// The table's capacity, the number of channels that the radio's memory can hold of them, and the
/// fields of a channel.
inline constexpr int tableChannels = 260;
inline constexpr int codecChannels = channelRecord::codecChannels;
inline constexpr int firstParameter = 5;
inline constexpr int lastField = 20;

/// Columns of the channel grid. Fields 1, 2 and 5.. of a channel are shown in the columns of the
/// same number; the settings have to list their columns in this order.
namespace column {
inline constexpr int rx = channelRecord::rxPart.column;
inline constexpr int tx = channelRecord::txPart.column;
inline constexpr int decode = channelRecord::decodePart.column;
inline constexpr int encode = channelRecord::encodePart.column;
/// Never drawn as a parameter, never stepped.
inline constexpr int reserved = 11;
}  // namespace column

/// One channel as it is edited. An empty channel (no receive frequency) keeps its parameter values
/// and may keep tone texts; neither is shown.
class Channel {
  public:
    Channel() { rxFre() = txFre() = frequency::none; }

    /// Field 0 to 20; raises 9 outside them.
    [[nodiscard]] std::int32_t& field(int number) { return fields_(number, "ChInfo field"); }
    [[nodiscard]] std::int32_t field(int number) const { return fields_(number, "ChInfo field"); }

    /// Field 0: 0 at first, 1 after an edit or a deletion. -1 would keep the channel from being
    /// encoded.
    [[nodiscard]] std::int32_t& modified() { return field(0); }
    /// Fields 1 and 2: frequencies in 10 Hz, -1 for none.
    [[nodiscard]] std::int32_t& rxFre() { return field(1); }
    [[nodiscard]] std::int32_t rxFre() const { return field(1); }
    [[nodiscard]] std::int32_t& txFre() { return field(2); }
    [[nodiscard]] std::int32_t txFre() const { return field(2); }
    // Fields 3 and 4 are 0 in an empty channel and have no use. Fields 5 to ColNum are parameter
    // values: each is the index of a text of its column.

    [[nodiscard]] bool present() const { return rxFre() != frequency::none; }
    [[nodiscard]] bool transmits() const { return txFre() != frequency::none; }

    /// Tone texts (see toneCode.h); empty or the off text for off.
    std::string decodeTone;
    std::string encodeTone;
    /// What was typed into columns that are not lists (a name, an offset), by column. The radio's
    /// memory has no place for them.
    std::map<int, std::string> texts;
    /// Switched on by the command "Open channel", and its frequency not edited since.
    bool opened = false;
    /// The frequency edited last lies outside the band.
    bool outOfBand = false;

    friend bool operator==(const Channel&, const Channel&) = default;

  private:
    BoundedArray<std::int32_t, 0, lastField> fields_;
};

/// Channels 1 to 260, of which 1 to ChNum are used. A value: a copy remembers all channels.
class ChannelTable {
  public:
    /// Raises 9 outside 1 to 260.
    [[nodiscard]] Channel& operator()(int channel) { return rows_(channel, "ChInfo"); }
    [[nodiscard]] const Channel& operator()(int channel) const { return rows_(channel, "ChInfo"); }

    friend bool operator==(const ChannelTable&, const ChannelTable&) = default;

  private:
    BoundedArray<Channel, 1, tableChannels> rows_;
};

}  // namespace k520::modChMem
