// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/comparison.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "channels/channelRecord.h"
#include "channels/modModel.h"
#include "document/edit.h"
#include "image/stamp.h"
#include "settings/optionTable.h"

namespace k520::document {

namespace {

using Kind = Difference::Kind;
using optionTable::ImageBits;

std::vector<ImageBits> bytesAt(int address, int count) {
    std::vector<ImageBits> bits;
    for (int i = 0; i < count; ++i) {
        bits.push_back({static_cast<std::uint16_t>(address + i), 0xFF});
    }
    return bits;
}

/// A channel's bit in the word that all channels share.
ImageBits sharedBit(int channel) {
    return {static_cast<std::uint16_t>(channelRecord::sharedWord + (channel - 1) / 8),
            static_cast<std::uint8_t>(1U << ((channel - 1) % 8))};
}

std::vector<ImageBits> bitsOfParameter(int channel, int field) {
    if (field == channelRecord::sharedField) {
        return {sharedBit(channel)};
    }
    for (const auto& parameter : channelRecord::parameters) {
        if (parameter.field == field) {
            return {{static_cast<std::uint16_t>(channelRecord::address(channel) + parameter.offset),
                     parameter.mask}};
        }
    }
    return {};
}

std::vector<ImageBits> bitsOfChannel(int channel) {
    auto bits = bytesAt(channelRecord::address(channel), channelRecord::size);
    bits.push_back(sharedBit(channel));
    return bits;
}

/// A part of a channel's record as the two sides' texts.
struct PartText {
    channelRecord::Part part;
    std::string (*text)(const ChannelPicture&);
};

constexpr std::array partTexts{
    PartText{channelRecord::rxPart, [](const ChannelPicture& c) { return frequencyText(c.rx); }},
    PartText{channelRecord::txPart, [](const ChannelPicture& c) { return frequencyText(c.tx); }},
    PartText{channelRecord::decodePart, [](const ChannelPicture& c) { return c.decode; }},
    PartText{channelRecord::encodePart, [](const ChannelPicture& c) { return c.encode; }}};

/// The limits that the image holds, also those of a custom band.
std::string bandText(const Picture& picture) {
    if (picture.band.index != modModel::customBand) {
        return picture.band.name;
    }
    const auto limit = [&](int address) {
        const auto tenths =
            modModel::tenthsOfBcd({picture.image(address), picture.image(address + 1)});
        return tenths ? fmt::format("{}.{}", *tenths / 10, *tenths % 10) : std::string("?");
    };
    return fmt::format("{} - {} MHz ({})", limit(modModel::bandAddress),
                       limit(modModel::bandAddress + 2), picture.band.name);
}

class Comparer {
  public:
    Comparer(const Picture& a, const Picture& b) : a_(a), b_(b), explained_(a.image.size()) {
        result_.stampA = a.stamp;
        result_.stampB = b.stamp;
        explain(bytesAt(stamp::address, stamp::length));
    }

    Comparison run() {
        compareModelAndBand();
        for (std::size_t i = 0; i < a_.channels.size(); ++i) {
            compareChannels(a_.channels[i], b_.channels[i]);
        }
        for (const auto& option : optionTable::options()) {
            compareOption(option);
        }
        compareBytes();
        return std::move(result_);
    }

  private:
    void add(Difference difference, const std::vector<ImageBits>& bits) {
        result_.differences.push_back(std::move(difference));
        explain(bits);
    }

    void explain(const std::vector<ImageBits>& bits) {
        for (const auto& [address, mask] : bits) {
            explained_(address) |= mask;
        }
    }

    [[nodiscard]] bool differ(const std::vector<ImageBits>& bits) const {
        for (const auto& [address, mask] : bits) {
            if (((a_.image(address) ^ b_.image(address)) & mask) != 0) {
                return true;
            }
        }
        return false;
    }

    void compareModelAndBand() {
        if (const auto bits = bytesAt(modModel::modelAddress, 1); differ(bits)) {
            add({Kind::model, "", "", modelText(a_), modelText(b_)}, bits);
        }
        const auto bits = bytesAt(modModel::bandAddress, modModel::bandLength);
        if (differ(bits)) {
            add({Kind::band, "", "", bandText(a_), bandText(b_)}, bits);
        }
    }

    static std::string modelText(const Picture& picture) {
        return picture.modelName.value_or(fmt::format("{}", picture.model));
    }

    void compareChannels(const ChannelPicture& a, const ChannelPicture& b) {
        const auto number = fmt::format("{}", a.channel);
        if (a.rx.has_value() != b.rx.has_value()) {
            add({Kind::channel, number, "channel", frequencyText(a.rx), frequencyText(b.rx)},
                bitsOfChannel(a.channel));
            return;
        }
        if (!a.rx) {
            return;
        }
        for (const auto& [part, text] : partTexts) {
            if (text(a) != text(b)) {
                add({Kind::channel, number, nameOfColumn(part.column), text(a), text(b)},
                    bytesAt(channelRecord::address(a.channel) + part.offset, part.length));
            }
        }
        for (std::size_t i = 0; i < a.parameters.size(); ++i) {
            const auto& mine = a.parameters[i];
            if (mine.value != b.parameters[i].value) {
                add({Kind::channel, number, mine.key, mine.text, b.parameters[i].text},
                    bitsOfParameter(a.channel, mine.field));
            }
        }
    }

    void compareOption(const optionTable::Option& option) {
        const auto index = static_cast<std::size_t>(option.number);
        if (a_.options[index] != b_.options[index]) {
            add({Kind::option, std::string(option.name), "",
                 optionTable::valueText(option, a_.options[index]),
                 optionTable::valueText(option, b_.options[index])},
                optionTable::ownedBits(option));
        }
    }

    void compareBytes() {
        for (int address = 0; address < std::ssize(a_.image.bytes()); ++address) {
            const int unexplained = (a_.image(address) ^ b_.image(address)) & ~explained_(address);
            if (unexplained != 0) {
                result_.differences.push_back({Kind::byte, fmt::format("{:04X}", address), "",
                                               fmt::format("{:02X}", a_.image(address)),
                                               fmt::format("{:02X}", b_.image(address))});
            }
        }
    }

    const Picture& a_;
    const Picture& b_;
    MemoryImage explained_;
    Comparison result_;
};

}  // namespace

Comparison compare(const Picture& a, const Picture& b) {
    return Comparer(a, b).run();
}

}  // namespace k520::document
