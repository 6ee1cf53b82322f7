// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/bandCodec.h"

#include <algorithm>

#include "base/Bcd.h"
#include "base/Checked.h"
#include "channels/cellText.h"
#include "channels/codecTexts.h"
#include "channels/frequency.h"

namespace k520::bandCodec {

namespace {

constexpr Band mhz(std::string_view name, std::int32_t low, std::int32_t high) {
    return {name, {low * frequency::perMhz, high * frequency::perMhz}};
}

constexpr std::array<Band, bandCount> bandTable{
    mhz("136 - 174 MHz", 136, 174), mhz("136 - 150 MHz", 136, 150), mhz("150 - 174 MHz", 150, 174),
    mhz("200 - 260 MHz", 200, 260), mhz("245 - 246 MHz", 245, 246), mhz("400 - 470 MHz", 400, 470),
    mhz("400 - 440 MHz", 400, 440), mhz("440 - 480 MHz", 440, 480), mhz("470 - 520 MHz", 470, 520),
    mhz("400 - 520 MHz", 400, 520), mhz("120 - 520 MHz", 120, 520), mhz("", 0, 0)};

constexpr std::int32_t perTenth = frequency::perMhz / 10;

void writeLimit(int address, std::int32_t limit, MemoryImage& image) {
    for (const std::uint8_t byte : bcdOfTenths(tenthsOf(limit))) {
        image(address++) = byte;
    }
}

/// A limit as the image holds it; nothing where its bytes are not digits.
std::optional<std::int32_t> readLimit(const MemoryImage& image, int address) {
    const auto tenths = tenthsOfBcd({image(address), image(address + 1)});
    return tenths ? std::optional(*tenths * perTenth) : std::nullopt;
}

int bandOf(const MemoryImage& image) {
    const auto low = readLimit(image, bandAddress);
    const auto high = readLimit(image, bandAddress + bandLength / 2);
    const auto found = std::ranges::find_if(bandTable, [&](const Band& band) {
        return low == band.limits.low && high == band.limits.high;
    });
    return std::min(static_cast<int>(found - bandTable.begin()), customBand);
}

/// A limit within the whole range; nothing for any other text.
std::optional<std::int32_t> customLimit(std::string_view text) {
    const auto number = cellText::megahertz(text);
    const double limit = roundHalfEven(number.value_or(0) * frequency::perMhz);
    const auto& whole = bandTable[wholeBand].limits;
    return limit >= whole.low && limit <= whole.high
               ? std::optional(static_cast<std::int32_t>(limit))
               : std::nullopt;
}

}  // namespace

std::span<const Band, bandCount> bands() noexcept {
    return bandTable;
}

Decoded decode(const MemoryImage& image) {
    try {
        const int band = bandOf(image);
        const int limits = band == customBand ? wholeBand : band;
        return {Selected{band, bandTable[static_cast<std::size_t>(limits)].limits}, {}};
    } catch (const RuntimeError& error) {
        return {std::nullopt, {{"frmChMem->selectBandFromImage", error}}};
    }
}

void encode(Limits limits, MemoryImage& image) {
    writeLimit(bandAddress, limits.low, image);
    writeLimit(bandAddress + bandLength / 2, limits.high, image);
}

std::optional<Limits> customLimits(std::string_view low, std::string_view high) {
    const auto lower = customLimit(low);
    const auto upper = customLimit(high);
    return lower && upper && *lower <= *upper ? std::optional(Limits{*lower, *upper})
                                              : std::nullopt;
}

std::array<std::uint8_t, 2> bcdOfTenths(int tenths) {
    if (tenths < 0 || tenths > 9999) {
        throw RuntimeError(errNum::overflow, say(texts::notFourDigits, tenths));
    }
    return {bcd::byteOf(tenths / 100), bcd::byteOf(tenths % 100)};
}

std::optional<int> tenthsOfBcd(std::array<std::uint8_t, 2> bytes) noexcept {
    const auto hundreds = bcd::numberOf(bytes[0]);
    const auto rest = bcd::numberOf(bytes[1]);
    return hundreds && rest ? std::optional(*hundreds * 100 + *rest) : std::nullopt;
}

int tenthsOf(std::int32_t limit) {
    return toInt32(static_cast<double>(limit) / perTenth);
}

}  // namespace k520::bandCodec
