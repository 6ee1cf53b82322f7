// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <locale>
#include <string>

#include "base/Clock.h"

/// Date and time in the form that the user has chosen for the whole system.
namespace k520::generalDate {

/// The locale that the environment names; the classic one where that is not installed.
[[nodiscard]] std::locale systemLocale();

/// Date and time in the locale's own form, UTF-8. "2026-11-22 14:41:00" where the locale has no
/// form of its own, as the classic one, or gives bytes that are not UTF-8.
[[nodiscard]] std::string text(const DateTime& when, const std::locale& locale = systemLocale());

}  // namespace k520::generalDate
