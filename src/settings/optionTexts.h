// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/Text.h"

/// Texts of the option panel.
namespace k520::texts {

inline constexpr Text groupTransmit{"发射", "Transmit"};
inline constexpr Text groupReceiver{"接收", "Receiver"};
inline constexpr Text groupVoice{"语音与提示音", "Voice and tones"};
inline constexpr Text groupPower{"电源", "Power"};
inline constexpr Text groupVox{"声控 (VOX)", "VOX"};
inline constexpr Text groupBroadcast{"收音机", "Broadcast receiver"};
inline constexpr Text neverStoredTip{
    "对讲机的硬件特性，不会写入对讲机。",
    "A property of the radio's hardware; it is never stored in the radio."};

}  // namespace k520::texts
