// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string_view>

namespace k520 {

/// A named procedure whose failures somebody looks for: one constant, which the procedure's guard
/// and the one who looks share. It is itself that counts, not its label.
class Procedure {
  public:
    consteval explicit Procedure(std::string_view label) : label_(label) {}
    Procedure(const Procedure&) = delete;
    Procedure& operator=(const Procedure&) = delete;
    ~Procedure() = default;

    /// Module, "->", procedure.
    [[nodiscard]] constexpr std::string_view label() const noexcept { return label_; }

  private:
    std::string_view label_;
};

}  // namespace k520
