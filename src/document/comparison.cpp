// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/comparison.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "app/Guard.h"
#include "channels/bandCodec.h"
#include "channels/channelRecord.h"
#include "document/decoded.h"
#include "document/edit.h"
#include "document/imageMap.h"
#include "settings/optionTable.h"

namespace k520::document {

namespace {

using Kind = Difference::Kind;
using imageMap::Field;
using imageMap::Owner;

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
    if (picture.band.index != bandCodec::customBand) {
        return picture.band.name;
    }
    const auto limit = [&](int address) {
        const auto tenths =
            bandCodec::tenthsOfBcd({picture.image(address), picture.image(address + 1)});
        return tenths ? fmt::format("{}.{}", *tenths / 10, *tenths % 10) : std::string("?");
    };
    return fmt::format("{} - {} MHz ({})", limit(bandCodec::bandAddress),
                       limit(bandCodec::bandAddress + 2), picture.band.name);
}

class Comparer {
  public:
    Comparer(const Picture& a, const Picture& b) : a_(a), b_(b), explained_(a.image.size()) {
        result_.stampA = a.stamp;
        result_.stampB = b.stamp;
        explain(fieldsOf(Owner::stamp));
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
    /// A channel's or an option's fields, of one column or of all; or those of an owner without a
    /// number.
    [[nodiscard]] std::vector<Field> fieldsOf(Owner owner, int number = 0,
                                              std::optional<int> column = {}) const {
        std::vector<Field> found;
        std::ranges::copy_if(map_, std::back_inserter(found), [&](const Field& field) {
            return field.owner == owner && field.number == number &&
                   field.column == column.value_or(field.column);
        });
        return found;
    }

    void add(Difference difference, const std::vector<Field>& fields) {
        result_.differences.push_back(std::move(difference));
        explain(fields);
    }

    void explain(const std::vector<Field>& fields) {
        for (const auto& field : fields) {
            for (int i = 0; i < field.length; ++i) {
                explained_(field.address + i) |= field.mask;
            }
        }
    }

    [[nodiscard]] bool differ(const std::vector<Field>& fields) const {
        return std::ranges::any_of(fields, [&](const Field& field) {
            const auto begin = field.address;
            for (int address = begin; address < begin + field.length; ++address) {
                if (((a_.image(address) ^ b_.image(address)) & field.mask) != 0) {
                    return true;
                }
            }
            return false;
        });
    }

    void compareModelAndBand() {
        if (const auto bits = fieldsOf(Owner::model); differ(bits)) {
            add({Kind::model, "", "", modelText(a_), modelText(b_)}, bits);
        }
        const auto bits = fieldsOf(Owner::band);
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
                fieldsOf(Owner::channel, a.channel));
            return;
        }
        if (!a.rx) {
            return;
        }
        for (const auto& [part, text] : partTexts) {
            if (text(a) != text(b)) {
                add({Kind::channel, number, nameOfColumn(part.column), text(a), text(b)},
                    fieldsOf(Owner::channel, a.channel, part.column));
            }
        }
        for (std::size_t i = 0; i < a.parameters.size(); ++i) {
            const auto& mine = a.parameters[i];
            if (mine.value != b.parameters[i].value) {
                add({Kind::channel, number, mine.key, mine.text, b.parameters[i].text},
                    fieldsOf(Owner::channel, a.channel, mine.field));
            }
        }
    }

    void compareOption(const optionTable::Option& option) {
        const auto index = static_cast<std::size_t>(option.number);
        if (a_.options[index] != b_.options[index]) {
            add({Kind::option, std::string(option.name), "",
                 optionTable::valueText(option, a_.options[index]),
                 optionTable::valueText(option, b_.options[index])},
                fieldsOf(Owner::option, option.number));
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
    std::vector<Field> map_ = imageMap::fields();
    MemoryImage explained_;
    Comparison result_;
};

}  // namespace

Comparison compare(const Picture& a, const Picture& b) {
    return Comparer(a, b).run();
}

Comparison compareImages(const MemoryImage& a, const MemoryImage& b) {
    const auto basis = basisInForce();
    const auto first = decode(a, basis);
    // A part of b that cannot be read counts as that of a: what differs in it are bytes.
    const auto second = decode(b, basis, first.configuration);
    logFaults(first.faults);
    logFaults(second.faults);
    return compare(pictureOf(a, first.configuration), pictureOf(b, second.configuration));
}

}  // namespace k520::document
