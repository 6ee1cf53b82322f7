// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>

/// The language of the interface.
namespace k520::mdimoduMain {

/// Interface languages, as the settings file numbers them.
inline constexpr std::int16_t languageChinese = 1;
inline constexpr std::int16_t languageTraditional = 2;
inline constexpr std::int16_t languageEnglish = 3;

struct State {
    std::int16_t Language = languageEnglish;
};

[[nodiscard]] State& state();

/// Replaces a language outside 1..3 by 3, for the rest of the run.
void correctLanguage() noexcept;

}  // namespace k520::mdimoduMain
