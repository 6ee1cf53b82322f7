// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Partial fill: one value for a range of the memory image.
namespace k520::partialFill {

/// The fields that a user fills in, in the order in which they are looked at.
enum class Field : std::uint8_t { from, to, value };

/// What the fields hold, as hexadecimal texts.
struct Texts {
    std::string from;
    std::string to;
    std::string value;
};

/// A field whose text cannot be taken, and why, for the user.
struct Refusal {
    Field field = Field::from;
    std::string reason;
};

/// What the fields show first: the range of the last fill, at the start the whole table; no value.
[[nodiscard]] Texts initial();

/// Fills the addresses from `from` to `to`, both inclusive, with `value` and keeps the range for
/// the next time. The memory grid follows and marks the bytes that have changed. As with a typed
/// byte, the tables do not follow. Returns the first field that cannot be taken; nothing has
/// changed then. Label "frmMemDat->cmdPartFill_Click".
[[nodiscard]] std::optional<Refusal> fill(const Texts& texts);

}  // namespace k520::partialFill
