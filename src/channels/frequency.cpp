// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frequency.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>

#include "app/Checked.h"

namespace k520::frequency {

namespace {

// The two rasters, in 10 Hz units.
constexpr double raster5kHz = 500;
constexpr double raster6kHz25 = 625;

double nearestPoint(std::int32_t frequency, double raster) {
    return roundHalfEven(frequency / raster) * raster;
}

}  // namespace

std::string mhzText(std::int32_t frequency) {
    const auto parts = std::div(static_cast<long long>(frequency), static_cast<long long>(perMhz));
    std::string text = fmt::format("{}{}.{:05}", frequency < 0 ? "-" : "", std::abs(parts.quot),
                                   std::abs(parts.rem));
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
    for (int i = 3; i >= 0; --i) {
        const int high = bytes[static_cast<std::size_t>(i)] >> 4;
        const int low = bytes[static_cast<std::size_t>(i)] & 0x0F;
        if (high > 9 || low > 9) {
            throw RuntimeError(errNum::typeMismatch,
                               fmt::format("\"{:02X}{:02X}{:02X}{:02X}\" is not a number", bytes[3],
                                           bytes[2], bytes[1], bytes[0]));
        }
        value = value * 100 + high * 10 + low;
    }
    return value;
}

}  // namespace k520::frequency
