// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/plausibility.h"

#include <algorithm>
#include <optional>

#include "base/Bcd.h"
#include "channels/bandCodec.h"
#include "channels/channelRecord.h"
#include "channels/frequency.h"
#include "channels/toneCode.h"
#include "image/datFile.h"
#include "settings/optionTable.h"

namespace k520::plausibility {

namespace {

using namespace channelRecord;

constexpr std::uint8_t erased = 0xFF;
constexpr std::uint16_t toneOff = 0xFFFF;
/// Radios of this kind work somewhere between these, in MHz.
constexpr int lowestMhz = 100;
constexpr int highestMhz = 600;

struct Count {
    int all = 0;
    int senseless = 0;

    void add(bool makesSense) {
        ++all;
        senseless += makesSense ? 0 : 1;
    }
};

/// A frequency of a record, or the mark that there is none.
bool isFrequency(const MemoryImage& image, int address) {
    int digits = 0;
    for (int i = frequencyLength; i-- > 0;) {
        const auto pair = bcd::numberOf(image(address + i));
        if (!pair) {
            const std::uint8_t top = image(address + frequencyLength - 1);
            return i == frequencyLength - 1 && top == erased;
        }
        digits = digits * 100 + *pair;
    }
    return digits == 0 ||
           (digits >= lowestMhz * frequency::perMhz && digits <= highestMhz * frequency::perMhz);
}

bool isTone(const MemoryImage& image, int address) {
    const auto word = static_cast<std::uint16_t>(image(address + 1) * 256 + image(address));
    return word == toneOff || word == 0 || !toneCode::toneText(word, "").empty();
}

bool isBand(const MemoryImage& image) {
    using bandCodec::bandAddress;
    const auto limit = [&](int address) {
        return bandCodec::tenthsOfBcd({image(address), image(address + 1)}).value_or(0) / 10;
    };
    const int low = limit(bandAddress);
    const int high = limit(bandAddress + bandCodec::bandLength / 2);
    return low >= lowestMhz && low <= high && high <= highestMhz;
}

Count countValues(const MemoryImage& image) {
    Count count;
    for (int channel = 1; channel <= codecChannels; ++channel) {
        const int record = address(channel);
        for (const int place : {offset::rx, offset::tx}) {
            count.add(isFrequency(image, record + place));
        }
        for (const int place : {offset::decode, offset::encode}) {
            count.add(isTone(image, record + place));
        }
    }
    for (const auto& option : optionTable::options()) {
        if (option.validMax) {
            count.add(optionTable::decode(option, image).has_value());
        }
    }
    return count;
}

}  // namespace

bool looksLikeConfiguration(const MemoryImage& image) {
    constexpr int tolerated = 4;
    if (image.size() <= datFile::leastDatNum) {
        return true;
    }
    const Count count = countValues(image);
    return isBand(image) && count.senseless * tolerated < count.all;
}

}  // namespace k520::plausibility
