// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "base/Clock.h"

/// What can go wrong with the simulated radio and its line, on request.
namespace k520 {

/// What happens to one byte on a line.
enum class ByteFaultKind {
    lose,     ///< the byte does not arrive; its time on the line passes
    corrupt,  ///< it arrives changed: exclusive or with `value`
    add,      ///< the byte `value` comes after it
    repeat,   ///< it comes twice
    delay,    ///< it, and so what follows it, comes later by `by`
};

struct ByteFault {
    ByteFaultKind kind = ByteFaultKind::lose;
    /// Which byte, counted from 1 over the radio's life.
    std::uint32_t byte = 1;
    std::uint8_t value = 0xFF;
    Clock::Microseconds by{0};
};

/// Noise on the line to the computer: a byte whenever the radio itself has nothing to send.
struct Babble {
    /// While exchange `from` is awaited, and ever after until exchange `until` is awaited; 1 is
    /// from the beginning.
    std::uint32_t from = 1;
    std::uint32_t until = std::numeric_limits<std::uint32_t>::max();
    /// Always this byte; without one, bytes of all values.
    std::optional<std::uint8_t> value{};
};

/// An exchange is one complete frame that the radio has received, counted from 1 over its life:
/// the greeting is one, the acknowledgement after it the second.
struct SimFaults {
    /// Faults of the bytes that the radio sends. Several may meet on one byte.
    std::vector<ByteFault> replyBytes{};
    /// The faults of the bytes that the computer sends.
    std::vector<ByteFault> requestBytes{};
    /// From this exchange on the radio is as if switched off: it neither answers nor stores.
    std::optional<std::uint32_t> silentFrom{};
    /// The greetings of so many first attempts get no answer.
    std::uint32_t failAttempts = 0;
    /// Once this exchange has been answered, the cable comes out.
    std::optional<std::uint32_t> goneAfter{};
    /// This block of a write, counted from 1 over the radio's life, is answered and not stored.
    std::optional<std::uint32_t> forgottenBlock{};
    std::optional<Babble> babble{};
};

/// One byte as the line delivers it.
struct LineByte {
    std::uint8_t value = 0;
    bool lost = false;
    std::optional<std::uint8_t> extra;
    Clock::Microseconds late{0};
};

/// Sends byte number `number` through the faults of its line.
[[nodiscard]] LineByte throughFaults(std::span<const ByteFault> faults, std::uint32_t number,
                                     std::uint8_t value) noexcept;

}  // namespace k520
