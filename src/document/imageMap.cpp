// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/imageMap.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "channels/bandCodec.h"
#include "channels/channelRecord.h"
#include "channels/modChMem.h"
#include "document/differenceTexts.h"
#include "document/edit.h"
#include "image/stamp.h"
#include "settings/optionTable.h"

namespace k520::imageMap {

namespace {

constexpr std::string_view channelCodec = "modChMem";
constexpr std::uint8_t wholeByte = 0xFF;

/// The bits of each byte of a record that a column has.
constexpr std::array<std::uint8_t, channelRecord::size> usedBits() {
    std::array<std::uint8_t, channelRecord::size> used{};
    for (const auto& part : channelRecord::parts) {
        for (int i = 0; i < part.length; ++i) {
            const int place = part.offset + i;
            used[static_cast<std::size_t>(place)] = wholeByte;
        }
    }
    for (const auto& parameter : channelRecord::parameters) {
        used[static_cast<std::size_t>(parameter.offset)] |= parameter.mask;
    }
    return used;
}

void addRecord(int channel, std::vector<Field>& fields) {
    const int start = channelRecord::address(channel);
    for (const auto& part : channelRecord::parts) {
        fields.push_back({Owner::channel, channel, part.column, start + part.offset, part.length,
                          wholeByte, channelCodec});
    }
    for (const auto& parameter : channelRecord::parameters) {
        fields.push_back({Owner::channel, channel, parameter.field, start + parameter.offset, 1,
                          parameter.mask, channelCodec});
    }
    constexpr auto used = usedBits();
    for (std::size_t i = 0; i < used.size(); ++i) {
        if (used[i] != wholeByte) {
            fields.push_back({Owner::channel, channel, 0, start + static_cast<int>(i), 1,
                              static_cast<std::uint8_t>(~used[i]), ""});
        }
    }
}

void addSharedWord(std::vector<Field>& fields) {
    for (int channel = 1; channel <= channelRecord::codecChannels; ++channel) {
        const int bit = channel - 1;
        fields.push_back({Owner::channel, channel, channelRecord::sharedField,
                          channelRecord::sharedWord + bit / 8, 1,
                          static_cast<std::uint8_t>(1U << (bit % 8)), channelCodec});
    }
}

void addOption(const optionTable::Option& option, std::vector<Field>& fields) {
    for (const auto& place : optionTable::ownedBits(option)) {
        fields.push_back(
            {Owner::option, option.number, 0, place.address, 1, place.mask, "optionTable"});
    }
}

std::string columnTitle(int column) {
    const auto& grid = modChMem::state().vsfgGridCh;
    return column > 0 && column < grid.columns() ? grid.text(0, column) : std::string();
}

}  // namespace

std::vector<Field> fields() {
    std::vector<Field> all;
    for (int channel = 1; channel <= modChMem::state().ChNum; ++channel) {
        addRecord(channel, all);
    }
    addSharedWord(all);
    for (const auto& option : optionTable::options()) {
        addOption(option, all);
    }
    all.push_back({Owner::model, 0, 0, bandCodec::modelAddress, 1, wholeByte, "modModel"});
    all.push_back(
        {Owner::band, 0, 0, bandCodec::bandAddress, bandCodec::bandLength, wholeByte, "modModel"});
    all.push_back({Owner::stamp, 0, 0, stamp::address, stamp::length, wholeByte, "stamp"});
    return all;
}

std::vector<Field> at(const std::vector<Field>& all, int address, int bits) {
    std::vector<Field> found;
    for (const auto& field : all) {
        const bool second = field.codec.empty() && !found.empty() &&
                            found.back().owner == field.owner &&
                            found.back().number == field.number;
        if (!second && field.touches(address, bits)) {
            found.push_back(field);
        }
    }
    return found;
}

std::string name(const Field& field) {
    switch (field.owner) {
        case Owner::channel:
            return field.column == 0
                       ? fmt::format("ch{}", field.number)
                       : fmt::format("ch{}.{}", field.number, document::nameOfColumn(field.column));
        case Owner::option:
            return fmt::format("option.{}", optionTable::optionAt(field.number).name);
        case Owner::model:
            return "model";
        case Owner::band:
            return "band";
        case Owner::stamp:
            break;
    }
    return "stamp";
}

std::string caption(const Field& field) {
    switch (field.owner) {
        case Owner::channel: {
            const auto title = columnTitle(field.column);
            const auto channel = say(texts::channelNumber, field.number);
            return title.empty() ? channel : channel + " " + title;
        }
        case Owner::option:
            return optionTable::captionText(optionTable::optionAt(field.number));
        case Owner::model:
            return say(texts::modelByte);
        case Owner::band:
            return say(texts::bandBytes);
        case Owner::stamp:
            break;
    }
    return say(texts::stampBytes);
}

}  // namespace k520::imageMap
