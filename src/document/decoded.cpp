// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/decoded.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "channels/modChMem.h"
#include "settings/optionCodec.h"

namespace k520::document {

namespace {

void append(Faults more, Faults& faults) {
    std::ranges::move(more, std::back_inserter(faults));
}

}  // namespace

std::vector<modChMem::Channel> channelsInForce() {
    const auto& table = modChMem::state();
    std::vector<modChMem::Channel> channels;
    const int last = std::clamp<int>(table.ChNum, 0, modChMem::tableChannels);
    channels.reserve(static_cast<std::size_t>(last));
    for (int n = 1; n <= last; ++n) {
        channels.push_back(table.ChInfo(n));
    }
    return channels;
}

Basis basisInForce() {
    return {modChMem::columnsInForce(), modChMem::state().ChNum, modSysSet::OptDef()};
}

Decoded decode(const MemoryImage& image, const Basis& basis, Configuration before) {
    Decoded result{std::move(before), {}};
    auto& [channels, options, band] = result.configuration;
    channels.resize(static_cast<std::size_t>(std::max(0, basis.channels)));
    int number = 0;
    for (auto& channel : channels) {
        auto decoded = channelCodec::decode(image, ++number, std::move(channel), basis.columns);
        channel = std::move(decoded.channel);
        append(std::move(decoded.faults), result.faults);
    }
    auto decodedOptions = optionCodec::decode(image, options, basis.optionDefaults);
    options = decodedOptions.values;
    append(std::move(decodedOptions.faults), result.faults);
    auto decodedBand = bandCodec::decode(image);
    band = decodedBand.selected.value_or(band);
    append(std::move(decodedBand.faults), result.faults);
    return result;
}

}  // namespace k520::document
