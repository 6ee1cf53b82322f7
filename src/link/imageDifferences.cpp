// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/imageDifferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "app/modSoftFace.h"
#include "channels/channelRecord.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "image/stamp.h"
#include "link/linkTexts.h"
#include "settings/optionTable.h"

namespace k520::imageDifferences {

namespace {

/// Bytes that have one meaning as a whole.
struct Area {
    int address;
    int length;
    Text name;
};

constexpr std::array areas{
    Area{modModel::modelAddress, 1, texts::modelByte},
    Area{modModel::bandAddress, modModel::bandLength, texts::bandBytes},
    Area{stamp::address, stamp::length, texts::stampBytes},
};

bool holds(int first, int length, int address) {
    return address >= first && address < first + length;
}

std::string channelText(int channel, int column) {
    const auto& grid = modChMem::state().vsfgGridCh;
    const auto title = column > 0 && column < grid.columns() ? grid.text(0, column) : std::string();
    const auto name = say(texts::channelNumber, channel);
    return title.empty() ? name : name + " " + title;
}

void addChannelOwners(int address, int bits, std::vector<std::string>& owners) {
    const int channel = (address - channelRecord::firstAddress) / channelRecord::size + 1;
    if (address < channelRecord::firstAddress || channel > modChMem::state().ChNum) {
        return;
    }
    const int offset = address - channelRecord::address(channel);
    const auto before = owners.size();
    for (const auto& part : channelRecord::parts) {
        if (holds(part.offset, part.length, offset)) {
            owners.push_back(channelText(channel, part.column));
        }
    }
    for (const auto& parameter : channelRecord::parameters) {
        if (parameter.offset == offset && (parameter.mask & bits) != 0) {
            owners.push_back(channelText(channel, parameter.field));
        }
    }
    if (owners.size() == before) {
        owners.push_back(channelText(channel, 0));
    }
}

void addSharedOwners(int address, int bits, std::vector<std::string>& owners) {
    if (!holds(channelRecord::sharedWord, channelRecord::codecChannels / 8, address)) {
        return;
    }
    for (int bit = 0; bit < 8; ++bit) {
        if ((bits >> bit & 1) != 0) {
            const int channel = (address - channelRecord::sharedWord) * 8 + bit + 1;
            owners.push_back(channelText(channel, channelRecord::sharedField));
        }
    }
}

void addOptionOwners(int address, int bits, std::vector<std::string>& owners) {
    for (const auto& option : optionTable::options()) {
        const auto owned = optionTable::ownedBits(option);
        if (std::ranges::any_of(owned, [&](const optionTable::ImageBits& own) {
                return own.address == address && (own.mask & bits) != 0;
            })) {
            owners.push_back(optionTable::captionText(option));
        }
    }
}

}  // namespace

std::vector<ByteDifference> find(const MemoryImage& a, const MemoryImage& b,
                                 modIicDat::AddressRange range) {
    const int end = std::min(
        {static_cast<int>(a.size()), static_cast<int>(b.size()), static_cast<int>(range.end) + 1});
    std::vector<ByteDifference> differences;
    for (int address = std::max<int>(range.start, 0); address < end; ++address) {
        if (a(address) != b(address)) {
            differences.push_back({address, a(address), b(address)});
        }
    }
    return differences;
}

std::string ownerText(const ByteDifference& difference) {
    const int bits = difference.a ^ difference.b;
    std::vector<std::string> owners;
    addChannelOwners(difference.address, bits, owners);
    addSharedOwners(difference.address, bits, owners);
    addOptionOwners(difference.address, bits, owners);
    for (const auto& area : areas) {
        if (holds(area.address, area.length, difference.address)) {
            owners.push_back(say(area.name));
        }
    }
    return fmt::format("{}", fmt::join(owners, ", "));
}

std::string lineText(const ByteDifference& difference) {
    const auto owner = ownerText(difference);
    return fmt::format("{:04X}: {:02X} / {:02X}{}{}", difference.address, difference.a,
                       difference.b, owner.empty() ? "" : "  ", owner);
}

}  // namespace k520::imageDifferences
