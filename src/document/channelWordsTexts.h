// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// The parts of a channel's sentence.
namespace k520::texts {

inline constexpr Text wordsHears{"接收 {} MHz", "Hears {} MHz"};
inline constexpr Text wordsAnyTone{"不限亚音", "whatever the tone"};
inline constexpr Text wordsSends{"在 {} MHz 发射", "sends on {} MHz"};
inline constexpr Text wordsSendsSame{"在同一频率发射", "sends on the same frequency"};
inline constexpr Text wordsNoTone{"不带亚音", "without a tone"};
inline constexpr Text wordsOnlyHears{"不发射", "never sends"};
inline constexpr Text wordsWithTone{"模拟亚音 {} Hz", "with tone {} Hz"};
inline constexpr Text wordsWithCode{"数字亚音 {}", "with code {}"};
inline constexpr Text wordsWidth{"{}带", "{}"};
inline constexpr Text wordsPower{"{}功率", "{} power"};
inline constexpr Text wordsScanned{"扫描", "scanned"};
inline constexpr Text wordsBusyLock{"繁忙锁定：{}", "busy lock: {}"};
inline constexpr Text wordsBetween{"，", ", "};
inline constexpr Text wordsBeforeTone{"，", " "};
inline constexpr Text wordsOfRow{"{}：{}", "{}: {}"};

}  // namespace k520::texts
