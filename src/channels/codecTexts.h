// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Why the image's bytes and the channel table do not fit together. These stand in the error list,
/// in the middle of a sentence.
namespace k520::texts {

inline constexpr Text receiveFrequencyOf{"信道 {} 的接收频率", "channel {}, receive frequency"};
inline constexpr Text transmitFrequencyOf{"信道 {} 的发射频率", "channel {}, transmit frequency"};
inline constexpr Text toneOutOfRange{"亚音 {} Hz 超出范围", "the tone {} Hz is out of range"};
inline constexpr Text toneUnreadable{"“{}”不是亚音", "\"{}\" is not a tone"};
inline constexpr Text charactersOf{"“{}”的字符", "characters of \"{}\""};
inline constexpr Text notFourDigits{"{} 不能用四位数字表示", "{} does not fit into four digits"};
inline constexpr Text defaultOfColumn{"列 {} 的默认值", "default of column {}"};

}  // namespace k520::texts
