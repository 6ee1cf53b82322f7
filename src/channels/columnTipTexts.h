// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// What the columns of the channel grid are for.
namespace k520::texts {

inline constexpr Text rxTip{"该信道接收的频率。没有接收频率就是空信道。",
                            "The frequency that the channel listens on. Without one it is empty."};
inline constexpr Text txTip{"该信道发射的频率。使用中继台时与接收频率不同；为空则只能接收。",
                            "The frequency that the channel sends on. For a repeater it differs "
                            "from the receive frequency; "
                            "without one the channel only receives."};
inline constexpr Text decodeTip{
    "接收亚音：只有带有该模拟亚音（CTCSS）或数字亚音（DCS）的信号才打开扬声器。",
    "Only a signal with this CTCSS or DCS tone opens the loudspeaker."};
inline constexpr Text encodeTip{"发射亚音：随发射送出，用于打开设有该亚音的对讲机或中继台。",
                                "This CTCSS or DCS tone is sent along. It opens the radios, or the "
                                "repeater, that wait for it."};
inline constexpr Text bandwidthTip{
    "宽用于 25 kHz 的信道，窄用于 12.5 kHz 的信道。同一信道上的对讲机必须一致。",
    "Wide for 25 kHz channels, narrow for 12.5 kHz channels. All radios on a channel need the "
    "same."};
inline constexpr Text powerTip{"高功率通话距离远，低功率省电。",
                               "High power reaches farther, low power saves the battery."};
inline constexpr Text scanTip{"开：对讲机扫描时包括该信道。",
                              "On: the radio looks at this channel when it scans."};
inline constexpr Text busyLockTip{
    "何时禁止发射。关：从不禁止；载波：收到任何信号时；亚音：收到带有该信道接收亚音的信号时。",
    "When the radio refuses to transmit. Off: never. Carrier: while it receives any signal. Tone: "
    "while it receives a signal with the decode tone of the channel."};

}  // namespace k520::texts
