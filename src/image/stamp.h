// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <optional>

#include "base/Clock.h"
#include "image/MemoryImage.h"

/// The programming stamp: when the radio was last written, five bytes of the image.
namespace k520::stamp {

/// Where the stamp begins, and its bytes from there: year mod 100 in BCD, month in BCD, day as a
/// plain binary number, hour in BCD, minute in BCD. The day's form is the radio's own.
inline constexpr int address = 816;
inline constexpr int length = 5;

/// Writes a date and time into the image; the seconds have no place. Raises 9 where the image is
/// too short.
void write(MemoryImage& image, const DateTime& when);

/// The stamp as a date and time of 2000..2099, or nothing where the bytes are not a date.
[[nodiscard]] std::optional<DateTime> read(const MemoryImage& image);

}  // namespace k520::stamp
