// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/picture.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>

#include "app/modSoftFace.h"
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

BandPicture bandPicture() {
    const auto& model = modModel::state();
    const int index = modModel::bandOfImage();
    return {
        index,
        nameOr(model.cboFrequency.items.at(static_cast<std::size_t>(index)), SoftText::customBand),
        model.bandLow, model.bandHigh};
}

}  // namespace

ChannelPicture channelPicture(int number) {
    const auto& channel = modChMem::ChInfo()(number);
    ChannelPicture picture;
    picture.channel = number;
    picture.rx = optionalFrequency(channel.rxFre());
    if (!picture.rx) {
        return picture;
    }
    picture.tx = optionalFrequency(channel.txFre());
    picture.inBand =
        modModel::inBand(*picture.rx) && (!picture.tx || modModel::inBand(*picture.tx));
    picture.decode = toneOrOff(channel.decodeTone);
    picture.encode = toneOrOff(channel.encodeTone);
    picture.parameters = parametersOf(channel);
    return picture;
}

Picture currentPicture() {
    Picture picture;
    picture.image = modIicDat::IicDat();
    picture.model = picture.image(modModel::modelAddress);
    const auto& models = modModel::state().cboModel.items;
    if (static_cast<std::size_t>(picture.model) < models.size()) {
        picture.modelName =
            nameOr(models[static_cast<std::size_t>(picture.model)], SoftText::model);
    }
    picture.band = bandPicture();
    picture.stamp = stamp::read(picture.image);
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        picture.channels.push_back(channelPicture(n));
    }
    for (std::size_t i = 0; i < picture.options.size(); ++i) {
        picture.options[i] = modSysSet::OptNow()[i];
    }
    return picture;
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
