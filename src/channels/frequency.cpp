// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frequency.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>

#include "base/Bcd.h"
#include "base/Checked.h"
#include "base/causeTexts.h"

namespace k520::frequency {

namespace {

// The two rasters, in 10 Hz units.
constexpr double raster5kHz = 500;
constexpr double raster6kHz25 = 625;

double nearestPoint(std::int32_t frequency, double raster) {
    return roundHalfEven(frequency / raster) * raster;
}

}  // namespace

std::string fixedMhzText(std::int32_t frequency) {
    const auto parts = std::div(static_cast<long long>(frequency), static_cast<long long>(perMhz));
    return fmt::format("{}{}.{:05}", frequency < 0 ? "-" : "", std::abs(parts.quot),
                       std::abs(parts.rem));
}

std::string mhzText(std::int32_t frequency) {
    std::string text = fixedMhzText(frequency);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::int32_t fromMhz(double mhz) {
    return toInt32(mhz * perMhz);
}

std::int32_t snapToRaster(std::int32_t frequency) {
    const double point5 = nearestPoint(frequency, raster5kHz);
    const double point6 = nearestPoint(frequency, raster6kHz25);
    const bool nearer5 = std::abs(frequency - point5) < std::abs(frequency - point6);
    return toInt32(nearer5 ? point5 : point6);
}

std::int32_t fromBcd(std::span<const std::uint8_t, 4> bytes) {
    std::int32_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        const auto pair = bcd::numberOf(bytes[i]);
        if (!pair) {
            throw RuntimeError(
                errNum::typeMismatch,
                say(texts::notANumber, fmt::format("{:02X}{:02X}{:02X}{:02X}", bytes[3], bytes[2],
                                                   bytes[1], bytes[0])));
        }
        value = value * 100 + *pair;
    }
    return value;
}

void toBcd(std::int32_t frequency, std::span<std::uint8_t, 4> bytes) {
    for (std::uint8_t& byte : bytes) {
        byte = bcd::byteOf(frequency % 100);
        frequency /= 100;
    }
}

}  // namespace k520::frequency
