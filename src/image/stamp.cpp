// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/stamp.h"

#include <array>
#include <chrono>

namespace k520::stamp {

namespace {

constexpr int toBcd(int value) noexcept {
    return value / 10 * 16 + value % 10;
}

std::optional<int> fromBcd(int byte) noexcept {
    const int tens = byte / 16;
    const int units = byte % 16;
    return tens > 9 || units > 9 ? std::nullopt : std::optional(tens * 10 + units);
}

bool isDate(int year, int month, int day) noexcept {
    return std::chrono::year_month_day(std::chrono::year(year),
                                       std::chrono::month(static_cast<unsigned>(month)),
                                       std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

}  // namespace

void write(MemoryImage& image, const DateTime& when) {
    const std::array values{toBcd(when.year % 100), toBcd(when.month), when.day, toBcd(when.hour),
                            toBcd(when.minute)};
    int target = address;
    for (const int value : values) {
        image(target++) = toByte(value);
    }
}

std::optional<DateTime> read(const MemoryImage& image) {
    if (image.size() < static_cast<std::size_t>(address) + length) {
        return std::nullopt;
    }
    const auto year = fromBcd(image(address));
    const auto month = fromBcd(image(address + 1));
    const int day = image(address + 2);
    const auto hour = fromBcd(image(address + 3));
    const auto minute = fromBcd(image(address + 4));
    if (!year || !month || !hour || !minute || *hour > 23 || *minute > 59 ||
        !isDate(2000 + *year, *month, day)) {
        return std::nullopt;
    }
    return DateTime{2000 + *year, *month, day, *hour, *minute, 0};
}

}  // namespace k520::stamp
