// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Checked.h"

namespace k520 {

/// A copy of the radio's configuration memory: one byte an address, addresses 0..size()-1. Every
/// access raises 9 outside them.
class MemoryImage {
  public:
    MemoryImage() = default;
    /// `size` bytes, all 0.
    explicit MemoryImage(std::size_t size) : bytes_(size) {}

    [[nodiscard]] std::uint8_t& operator()(std::ptrdiff_t address) {
        return checkedAt(bytes_, address, "memory image");
    }
    [[nodiscard]] std::uint8_t operator()(std::ptrdiff_t address) const {
        return checkedAt(bytes_, address, "memory image");
    }

    [[nodiscard]] std::size_t size() const noexcept { return bytes_.size(); }
    [[nodiscard]] std::span<std::uint8_t> bytes() noexcept { return bytes_; }
    [[nodiscard]] std::span<const std::uint8_t> bytes() const noexcept { return bytes_; }

    friend bool operator==(const MemoryImage&, const MemoryImage&) = default;

  private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace k520
