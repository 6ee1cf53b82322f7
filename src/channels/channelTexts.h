// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the channel window.
namespace k520::texts {

inline constexpr Text outOfBandTip{"频率超出频段 {} - {} MHz，对讲机可能无法工作。",
                                   "Outside the band {} - {} MHz: the radio may not work on it."};
inline constexpr Text openedTip{"新开启的信道，请输入频率。",
                                "A channel just opened: type its frequency."};

// Why a cell does not take a text; the text comes first.
inline constexpr Text notAFrequency{"“{}”不是以 MHz 为单位的频率（例如 446.00625）",
                                    "\"{}\" is not a frequency in MHz, such as 446.00625"};
inline constexpr Text notATone{
    "“{}”不是亚音。请输入模拟亚音（CTCSS，例如 88.5）、数字亚音（DCS，例如 D023N 或 D023I），"
    "或留空表示关闭",
    "\"{}\" is not a tone; give a CTCSS tone such as 88.5, a DCS code such as D023N or D023I, or "
    "nothing for off"};
inline constexpr Text notAnEntry{"“{}”不是有效的选项，请从以下各项中选择：{}",
                                 "\"{}\" is not a valid value; choose one of: {}"};
inline constexpr Text entriesBetween{"、", ", "};
inline constexpr Text notAName{
    "“{}”不能用作名称，只能使用 0-9、A-Z、空格和 - / + _",
    "\"{}\" is not a valid name; a name has 0-9, A-Z, blanks and - / + _"};
inline constexpr Text channelEmpty{"该信道为空，请先输入接收频率",
                                   "the channel is empty; enter its receive frequency first"};
inline constexpr Text noTransmission{
    "该信道不发射，没有发射亚音；请先输入发射频率",
    "the channel does not transmit; enter its transmit frequency first"};
inline constexpr Text noToneColumn{"第 {} 列不是亚音列", "column {} does not hold tones"};
// Remarks after an edit. They begin with the text that was typed.
inline constexpr Text limitedRemark{"{} 超出 {} - {} MHz，已改为 {} MHz",
                                    "{} is beyond {} - {} MHz; limited to {} MHz"};
inline constexpr Text noToneRemark{"{} 不是亚音，亚音已关闭",
                                   "{} is not a tone; the tone is off now"};
inline constexpr Text byIndexRemark{"{} 不是选项，已按第 {} 项处理：{}",
                                    "{} is not an entry; taken as entry number {}: {}"};
// Pasting.
inline constexpr Text nothingPasted{"没有粘贴任何内容。以下单元格无法接受：",
                                    "Nothing was pasted. These cells cannot be taken:"};
inline constexpr Text pastePlace{"信道 {}，{}：{}", "Channel {}, {}: {}"};
inline constexpr Text pasteRow{"第 {} 行：信道只有 1 至 {}",
                               "Line {}: there are channels 1 to {} only"};
inline constexpr Text pasteColumn{"第 {} 行：“{}”右侧没有更多列",
                                  "Line {}: there is no column for \"{}\""};
inline constexpr Text pasteMore{"……还有 {} 处", "... and {} more"};
inline constexpr Text titlesSkipped{"已跳过标题行", "The line with the titles was left out"};

// What was done, as the menu Edit names it after "Undo".
inline constexpr Text stepCell{"信道 {1} 的{0}", "{0} of channel {1}"};
inline constexpr Text stepReceive{"接收频率", "receive frequency"};
inline constexpr Text stepTransmit{"发射频率", "transmit frequency"};
inline constexpr Text stepDecode{"接收亚音", "receive tone"};
inline constexpr Text stepEncode{"发射亚音", "transmit tone"};
inline constexpr Text stepOpenChannel{"开启信道 {}", "open channel {}"};
inline constexpr Text stepDeleteChannel{"删除信道 {}", "delete channel {}"};
inline constexpr Text stepDeleteAll{"删除全部信道", "delete all channels"};
inline constexpr Text stepSaveAsDefault{"信道 {} 设为默认值", "channel {} as default"};
inline constexpr Text stepPaste{"粘贴", "paste"};
inline constexpr Text stepChannel{"信道 {}", "channel {}"};
inline constexpr Text stepModel{"机型", "model"};
inline constexpr Text stepBand{"频段", "band"};

inline constexpr Text cutCells{"剪切(&T)", "Cu&t"};
inline constexpr Text pasteCells{"粘贴(&P)", "&Paste"};
inline constexpr Text clearCells{"清除单元格(&D)", "&Delete cells"};
inline constexpr Text selectAllCells{"全选(&A)", "Select &all"};
inline constexpr Text emptyQuestion{"将删除 {} 个信道，是否继续？",
                                    "{} channels will be deleted. Go on?"};

// The sentences beside the grid
inline constexpr Text inWords{"文字说明", "In words"};

}  // namespace k520::texts
