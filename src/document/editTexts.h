// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// What an edit or a file of channels is refused for, and what an edit remarks.
namespace k520::texts {

// Keys and values.
inline constexpr Text keyUnknown{"没有键“{}”", "there is no key \"{}\""};
inline constexpr Text keyNotOfChannel{"没有键“{}”；信道的键形如 ch1.rx",
                                      "there is no key \"{}\"; channel keys look like ch1.rx"};
inline constexpr Text keyWithoutValue{"“{}”不是 KEY=VALUE 的形式", "\"{}\" is not KEY=VALUE"};
inline constexpr Text keyOutOfRange{"{}：信道只有 1 至 {}", "{}: there are channels 1 to {}"};
inline constexpr Text optionUnknown{"没有选项“{}”", "there is no option \"{}\""};
inline constexpr Text optionNotStored{"option.{} 是对讲机的硬件特性，不会保存",
                                      "option.{} is fixed in the radio and is never stored"};
inline constexpr Text columnNotStored{
    "{}：对讲机的存储器中没有该列的位置，不会保存",
    "{}: the radio's memory has no place for it; it is not stored"};
inline constexpr Text keyWithReason{"{}：{}", "{}: {}"};
inline constexpr Text cannotSetEmpty{"无法设置 {}：信道 {} 为空；请先设置 ch{}.rx",
                                     "{} cannot be set: channel {} is empty; set ch{}.rx first"};
inline constexpr Text cannotSetSilent{
    "无法设置 {}：信道 {} 不发射；请先设置 ch{}.tx",
    "{} cannot be set: channel {} does not transmit; set ch{}.tx first"};
inline constexpr Text bandNotARange{"band：“{}”不是以 MHz 为单位的“下限-上限”（例如 400-470）",
                                    "band: \"{}\" is not LOW-HIGH in MHz, such as 400-470"};
inline constexpr Text bandUnknown{
    "band：“{}”既不是 0 至 {} 的序号，也不是以 MHz 为单位的“下限-上限”",
    "band: \"{}\" is neither an entry 0 to {} nor LOW-HIGH in MHz"};
inline constexpr Text bandWidened{
    "band={}：不在 120 至 520 MHz 之内，或上下限颠倒；频段现为 120 - 520 MHz",
    "band={}: not within 120 to 520 MHz, or reversed; the band is now 120 - 520 MHz"};

// Files of channels. A line stands before what is wrong in it.
inline constexpr Text csvLineReason{"第 {} 行：{}", "line {}: {}"};
inline constexpr Text csvTitleUnknown{"没有名为“{}”的列", "there is no column \"{}\""};
inline constexpr Text csvTitleTwice{"列“{}”出现了两次", "the column \"{}\" appears twice"};
inline constexpr Text csvTitleMissing{"缺少列“{}”", "the column \"{}\" is missing"};
inline constexpr Text csvNoTitles{"没有标题行", "there is no line with titles"};
inline constexpr Text csvNoChannel{"“{}”不是信道；信道只有 1 至 {}",
                                   "\"{}\" is not a channel; there are channels 1 to {}"};
inline constexpr Text csvChannelTwice{"信道 {} 出现了两次", "channel {} appears twice"};
inline constexpr Text csvCellCount{"有 {} 个单元格，而标题有 {} 个", "{} cells under {} titles"};
inline constexpr Text csvAfterQuote{"右引号之后还有文字", "text after a closing quote"};
inline constexpr Text csvOpenQuote{"引号没有结束", "a quote is never closed"};

}  // namespace k520::texts
