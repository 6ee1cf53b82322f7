// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string_view>

/// The two streams on which a program answers.
namespace k520 {

enum class Stream : std::uint8_t { out, err };

/// Whether a person sits at the other end.
[[nodiscard]] bool isTerminal(Stream stream) noexcept;

/// Writes past the buffer of the stream, so that a reader who has gone does no harm to what follows
/// in the buffer. False where that failed.
[[nodiscard]] bool writeAtOnce(Stream stream, std::string_view text) noexcept;

}  // namespace k520
