// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Whose a byte is, and in short what differs between two images.
namespace k520::texts {

// Owners of bytes
inline constexpr Text modelByte{"机型", "Model"};
inline constexpr Text bandBytes{"频段", "Band"};
inline constexpr Text stampBytes{"写频时间", "Programming stamp"};
inline constexpr Text channelNumber{"信道 {}", "Channel {}"};

// What differs
inline constexpr Text nothingDiffers{"没有不同", "nothing"};
inline constexpr Text channelsDiffer{"信道 {}", "channels {}"};
inline constexpr Text oneChannelDiffers{"信道 {}", "channel {}"};
inline constexpr Text optionsDiffer{"整机设置：{}", "optional features: {}"};
inline constexpr Text bandDiffers{"频段", "band"};
inline constexpr Text modelDiffers{"机型", "model"};
inline constexpr Text otherBytesDiffer{"其他 {} 个字节", "other bytes: {}"};
inline constexpr Text areasBetween{"；", "; "};
inline constexpr Text numbersBetween{"、", ", "};

}  // namespace k520::texts
