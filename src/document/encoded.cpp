// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/encoded.h"

#include <algorithm>

#include "channels/channelCodec.h"
#include "channels/modCtdcs.h"
#include "image/stamp.h"
#include "settings/optionCodec.h"

namespace k520::document {

namespace {

/// Field 0 of a channel that is never encoded.
constexpr int keptAsItIs = -1;

}  // namespace

MemoryImage encoded(const Document& document) {
    MemoryImage image = document.image;
    int number = 0;
    for (const auto& channel : document.channels) {
        ++number;
        if (channel.field(0) != keptAsItIs) {
            static_cast<void>(
                channelCodec::encode(channel, number, modCtdcs::state().CtdcsOffText, image));
        }
    }
    static_cast<void>(optionCodec::encode(document.options, image));
    return image;
}

MemoryImage encodedWithoutStamp(const Document& document) {
    auto image = encoded(document);
    const auto bytes = image.bytes();
    if (bytes.size() >= stamp::address + stamp::length) {
        std::ranges::fill(bytes.subspan(stamp::address, stamp::length), std::uint8_t{0});
    }
    return image;
}

}  // namespace k520::document
