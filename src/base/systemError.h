// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <system_error>

/// What the system means by an error of its own.
namespace k520::systemError {

/// The error that all systems know and that is nearest to this one.
[[nodiscard]] std::errc kind(const std::error_code& error);

/// The system's own words for it, UTF-8.
[[nodiscard]] std::string words(const std::error_code& error);

}  // namespace k520::systemError
