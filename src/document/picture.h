// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "image/MemoryImage.h"
#include "settings/optionTable.h"

/// An image as the program understands it, as plain values: what show prints and what comparisons
/// compare.
namespace k520::document {

/// A parameter of a channel: one of the grid's columns from 5 on.
struct ParameterPicture {
    int field = 0;           ///< the column's number
    std::string key;         ///< its key in the settings file
    std::string title;       ///< its title in the grid
    std::int32_t value = 0;  ///< the index of its text
    std::string text;
};

struct ChannelPicture {
    int channel = 0;
    std::optional<std::int32_t> rx;  ///< 10 Hz units; nothing = the channel is empty
    std::optional<std::int32_t> tx;  ///< 10 Hz units; nothing = it does not transmit
    bool inBand = true;              ///< all its frequencies lie within the band
    std::string decode;              ///< tone texts, the off text for off
    std::string encode;
    std::vector<ParameterPicture> parameters;
};

struct BandPicture {
    int index = 0;  ///< the entry that the image selects
    std::string name;
    std::int32_t low = 0;  ///< limits in force, 10 Hz units
    std::int32_t high = 0;

    friend bool operator==(const BandPicture&, const BandPicture&) = default;
};

struct Picture {
    MemoryImage image;
    int model = 0;
    std::optional<std::string> modelName;  ///< nothing for a number that no model has
    BandPicture band;
    std::optional<DateTime> stamp;
    std::vector<ChannelPicture> channels;
    std::array<std::int16_t, optionTable::optionCount> options{};
};

/// A channel as its table row stands now. Raises 9 outside the table.
[[nodiscard]] ChannelPicture channelPicture(int number);

/// What the core holds now. The tables are taken as they stand.
[[nodiscard]] Picture currentPicture();

/// MHz in the shortest decimal form, or an empty text for nothing.
[[nodiscard]] std::string frequencyText(const std::optional<std::int32_t>& frequency);

/// "2026-11-21 13:05", or an empty text for nothing.
[[nodiscard]] std::string stampText(const std::optional<DateTime>& stamp);

}  // namespace k520::document
