// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "app/modSoftFace.h"
#include "channels/bandCodec.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "settings/modSysSet.h"

namespace k520::document {

namespace {

std::optional<std::int32_t> optionalFrequency(std::int32_t value) {
    return value == frequency::none ? std::nullopt : std::optional(value);
}

std::string toneOrOff(const std::string& tone) {
    return tone.empty() ? modCtdcs::state().CtdcsOffText : tone;
}

std::vector<ParameterPicture> parametersOf(const modChMem::Channel& channel) {
    const auto& grid = modChMem::state().vsfgGridCh;
    std::vector<ParameterPicture> parameters;
    for (int k = modChMem::firstParameter; k <= modChMem::state().ColNum; ++k) {
        if (k == modChMem::column::reserved) {
            continue;
        }
        const auto& definition = modChMem::columnOf(k);
        const auto value = channel.field(k);
        const auto texts = definition.texts();
        const bool known = value >= 0 && static_cast<std::size_t>(value) < texts.size();
        parameters.push_back({k, definition.key(), grid.text(0, k), value,
                              known ? texts[static_cast<std::size_t>(value)] : std::string()});
    }
    return parameters;
}

/// Interface language 2 has no numbered texts, but a table and a script need a name.
std::string nameOr(const std::string& name, SoftText text) {
    return name.empty() ? std::string(modSoftFace::textIn(TextLanguage::english, text)) : name;
}

BandPicture bandPicture(const bandCodec::Selected& band) {
    const auto& names = modModel::state().cboFrequency.items;
    return {band.band, nameOr(names.at(static_cast<std::size_t>(band.band)), SoftText::customBand),
            band.limits.low, band.limits.high};
}

/// The tables as they stand, with the entry that the image selects and the limits in force.
Configuration configurationNow() {
    Configuration now{channelsInForce(), modSysSet::OptNow(), {}};
    const auto [selected, faults] = bandCodec::decode(modIicDat::IicDat());
    if (!selected) {
        throw faults.front().error;
    }
    now.band = {selected->band, modModel::limits()};
    return now;
}

}  // namespace

ChannelPicture channelPicture(int number, const modChMem::Channel& channel,
                              bandCodec::Limits limits) {
    ChannelPicture picture;
    picture.channel = number;
    picture.rx = optionalFrequency(channel.rxFre());
    if (!picture.rx) {
        return picture;
    }
    picture.tx = optionalFrequency(channel.txFre());
    picture.inBand = limits.contain(*picture.rx) && (!picture.tx || limits.contain(*picture.tx));
    picture.decode = toneOrOff(channel.decodeTone);
    picture.encode = toneOrOff(channel.encodeTone);
    picture.parameters = parametersOf(channel);
    return picture;
}

Picture pictureOf(const MemoryImage& image, const Configuration& configuration) {
    Picture picture;
    picture.image = image;
    picture.model = image(bandCodec::modelAddress);
    const auto& models = modModel::state().cboModel.items;
    if (static_cast<std::size_t>(picture.model) < models.size()) {
        picture.modelName =
            nameOr(models[static_cast<std::size_t>(picture.model)], SoftText::model);
    }
    picture.band = bandPicture(configuration.band);
    picture.stamp = stamp::read(image);
    for (const auto& channel : configuration.channels) {
        picture.channels.push_back(channelPicture(static_cast<int>(picture.channels.size()) + 1,
                                                  channel, configuration.band.limits));
    }
    std::copy_n(configuration.options.begin(), picture.options.size(), picture.options.begin());
    return picture;
}

Picture pictureOf(const MemoryImage& image) {
    return pictureOf(image, decode(image, basisInForce()).configuration);
}

Picture currentPicture() {
    return pictureOf(modIicDat::IicDat(), configurationNow());
}

std::string frequencyText(const std::optional<std::int32_t>& frequency) {
    return frequency ? frequency::mhzText(*frequency) : std::string();
}

std::string stampText(const std::optional<DateTime>& stamp) {
    return stamp ? fmt::format("{:04}-{:02}-{:02} {:02}:{:02}", stamp->year, stamp->month,
                               stamp->day, stamp->hour, stamp->minute)
                 : std::string();
}

}  // namespace k520::document
