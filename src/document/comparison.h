// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "document/picture.h"

/// Comparing two images.
namespace k520::document {

/// One thing that differs, in the program's terms or, where it has none, as a byte.
struct Difference {
    enum class Kind : std::uint8_t { model, band, channel, option, byte };

    Kind kind = Kind::byte;
    std::string what;  ///< a channel's number, an option's name, an address; else empty
    std::string part;  ///< of a channel: "rx", "decode", a column's key, or "channel"; else empty
    std::string a;     ///< the texts of both sides; empty for what is not there
    std::string b;
};

struct Comparison {
    std::vector<Difference> differences;
    /// Shown, and no difference.
    std::optional<DateTime> stampA;
    std::optional<DateTime> stampB;

    [[nodiscard]] bool equal() const noexcept { return differences.empty(); }
};

/// Compares channels, options, model and band of two equally long images, and then the bits that
/// none of the differences found explains. The programming stamp is left out.
[[nodiscard]] Comparison compare(const Picture& a, const Picture& b);

/// Compares two images as a radio of the settings in force would hold them. The configuration that
/// is being edited does not count and stays as it is. What cannot be decoded is logged.
[[nodiscard]] Comparison compareImages(const MemoryImage& a, const MemoryImage& b);

}  // namespace k520::document
