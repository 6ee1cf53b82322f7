// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/imageDifferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "app/modSoftFace.h"
#include "channels/channelRecord.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "document/differenceTexts.h"
#include "image/stamp.h"
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

/// The channel that has its record at an address; 0 where none has.
int channelAt(int address) {
    const int channel = (address - channelRecord::firstAddress) / channelRecord::size + 1;
    return address >= channelRecord::firstAddress && channel <= modChMem::state().ChNum ? channel
                                                                                        : 0;
}

/// The channels that bits of the shared word belong to.
std::vector<int> channelsSharing(int address, int bits) {
    std::vector<int> channels;
    if (holds(channelRecord::sharedWord, channelRecord::codecChannels / 8, address)) {
        for (int bit = 0; bit < 8; ++bit) {
            if ((bits >> bit & 1) != 0) {
                channels.push_back((address - channelRecord::sharedWord) * 8 + bit + 1);
            }
        }
    }
    return channels;
}

bool owns(const optionTable::Option& option, int address, int bits) {
    return std::ranges::any_of(optionTable::ownedBits(option),
                               [&](const optionTable::ImageBits& own) {
                                   return own.address == address && (own.mask & bits) != 0;
                               });
}

void addChannelOwners(int address, int bits, std::vector<std::string>& owners) {
    const int channel = channelAt(address);
    if (channel == 0) {
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

/// Adds what a difference belongs to; whether it belongs to anything.
bool addOwners(const ByteDifference& difference, Summary& summary) {
    const int bits = difference.a ^ difference.b;
    const int address = difference.address;
    auto channels = channelsSharing(address, bits);
    if (const int channel = channelAt(address); channel != 0) {
        channels.push_back(channel);
    }
    summary.channels.insert(summary.channels.end(), channels.begin(), channels.end());
    bool owned = !channels.empty();
    for (const auto& option : optionTable::options()) {
        if (owns(option, address, bits)) {
            summary.options.push_back(option.number);
            owned = true;
        }
    }
    const bool ofBand = holds(modModel::bandAddress, modModel::bandLength, address);
    const bool ofModel = address == modModel::modelAddress;
    summary.band = summary.band || ofBand;
    summary.model = summary.model || ofModel;
    return owned || ofBand || ofModel;
}

void makeUnique(std::vector<int>& numbers) {
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// Ascending numbers, neighbours drawn together: "1-3, 7".
std::string numbersText(const std::vector<int>& numbers) {
    std::vector<std::string> parts;
    for (auto first = numbers.begin(); first != numbers.end();) {
        auto last = first;
        while (std::next(last) != numbers.end() && *std::next(last) == *last + 1) {
            ++last;
        }
        parts.push_back(first == last ? fmt::format("{}", *first)
                                      : fmt::format("{}-{}", *first, *last));
        first = std::next(last);
    }
    return fmt::format("{}", fmt::join(parts, say(texts::numbersBetween)));
}

std::string optionsText(const std::vector<int>& numbers) {
    std::vector<std::string> captions;
    for (const int number : numbers) {
        captions.push_back(optionTable::captionText(optionTable::optionAt(number)));
    }
    return fmt::format("{}", fmt::join(captions, say(texts::numbersBetween)));
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
    for (const int channel : channelsSharing(difference.address, bits)) {
        owners.push_back(channelText(channel, channelRecord::sharedField));
    }
    for (const auto& option : optionTable::options()) {
        if (owns(option, difference.address, bits)) {
            owners.push_back(optionTable::captionText(option));
        }
    }
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

Summary summaryOf(std::span<const ByteDifference> differences) {
    Summary summary;
    for (const auto& difference : differences) {
        if (!holds(stamp::address, stamp::length, difference.address)) {
            ++summary.bytes;
            summary.otherBytes += addOwners(difference, summary) ? 0 : 1;
        }
    }
    makeUnique(summary.channels);
    makeUnique(summary.options);
    return summary;
}

std::string summaryText(const Summary& summary) {
    std::vector<std::string> parts;
    if (!summary.channels.empty()) {
        parts.push_back(
            say(summary.channels.size() == 1 ? texts::oneChannelDiffers : texts::channelsDiffer,
                numbersText(summary.channels)));
    }
    if (!summary.options.empty()) {
        parts.push_back(say(texts::optionsDiffer, optionsText(summary.options)));
    }
    if (summary.band) {
        parts.push_back(say(texts::bandDiffers));
    }
    if (summary.model) {
        parts.push_back(say(texts::modelDiffers));
    }
    if (summary.otherBytes > 0) {
        parts.push_back(say(texts::otherBytesDiffer, summary.otherBytes));
    }
    return parts.empty() ? say(texts::nothingDiffers)
                         : fmt::format("{}", fmt::join(parts, say(texts::areasBetween)));
}

}  // namespace k520::imageDifferences
