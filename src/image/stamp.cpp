// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/stamp.h"

#include <array>
#include <chrono>
#include <cstdint>

#include "base/Bcd.h"

namespace k520::stamp {

namespace {

bool isDate(int year, int month, int day) noexcept {
    return std::chrono::year_month_day(std::chrono::year(year),
                                       std::chrono::month(static_cast<unsigned>(month)),
                                       std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

}  // namespace

void write(MemoryImage& image, const DateTime& when) {
    const std::array values{bcd::byteOf(when.year % 100), bcd::byteOf(when.month), toByte(when.day),
                            bcd::byteOf(when.hour), bcd::byteOf(when.minute)};
    int target = address;
    for (const std::uint8_t value : values) {
        image(target++) = value;
    }
}

std::optional<DateTime> read(const MemoryImage& image) {
    if (image.size() < static_cast<std::size_t>(address) + length) {
        return std::nullopt;
    }
    const auto year = bcd::numberOf(image(address));
    const auto month = bcd::numberOf(image(address + 1));
    const int day = image(address + 2);
    const auto hour = bcd::numberOf(image(address + 3));
    const auto minute = bcd::numberOf(image(address + 4));
    if (!year || !month || !hour || !minute || *hour > 23 || *minute > 59 ||
        !isDate(2000 + *year, *month, day)) {
        return std::nullopt;
    }
    return DateTime{2000 + *year, *month, day, *hour, *minute, 0};
}

}  // namespace k520::stamp
