// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <vector>

#include "base/Fault.h"
#include "channels/bandCodec.h"
#include "channels/channelCodec.h"
#include "image/MemoryImage.h"
#include "settings/modSysSet.h"

/// What an image means, as values: the same codecs that modChMem::SoftDisplay applies to the
/// process-wide tables, without them.
namespace k520::document {

/// The channels from 1 on, the options and the band.
struct Configuration {
    std::vector<modChMem::Channel> channels;
    modSysSet::OptionSet options{};
    bandCodec::Selected band;
};

/// The channels of the table as they stand: as many as the settings ask for, and not more than
/// there are.
[[nodiscard]] std::vector<modChMem::Channel> channelsInForce();

/// What the settings in force add to an image.
struct Basis {
    channelCodec::Columns columns;
    int channels = 0;  ///< how many there are
    modSysSet::OptionSet optionDefaults{};
};
[[nodiscard]] Basis basisInForce();

struct Decoded {
    Configuration configuration;
    /// In the order and under the labels of modChMem::SoftDisplay.
    Faults faults;
};

/// Decodes a whole image. `before` gives what the image does not hold, and the value of each part
/// that fails (see channelCodec and optionCodec); no channels are empty ones.
[[nodiscard]] Decoded decode(const MemoryImage& image, const Basis& basis,
                             Configuration before = {});

}  // namespace k520::document
