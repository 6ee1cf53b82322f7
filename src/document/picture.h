// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "document/decoded.h"
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

/// A channel of that number in a band of these limits.
[[nodiscard]] ChannelPicture channelPicture(int number, const modChMem::Channel& channel,
                                            bandCodec::Limits limits);

/// What the core holds now. The tables are taken as they stand. Raises 9 for an image that ends
/// before the band.
[[nodiscard]] Picture currentPicture();

/// An image with what it means. Raises 9 for one that ends before the model.
[[nodiscard]] Picture pictureOf(const MemoryImage& image, const Configuration& configuration);

/// An image as a radio of the settings in force would hold it. The configuration that is being
/// edited does not count and stays as it is; nothing is logged.
[[nodiscard]] Picture pictureOf(const MemoryImage& image);

/// MHz in the shortest decimal form, or an empty text for nothing.
[[nodiscard]] std::string frequencyText(const std::optional<std::int32_t>& frequency);

/// "2026-11-21 13:05", or an empty text for nothing.
[[nodiscard]] std::string stampText(const std::optional<DateTime>& stamp);

}  // namespace k520::document
