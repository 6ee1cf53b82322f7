// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the memory data window.
namespace k520::texts {

inline constexpr Text memDatTitle{"内存数据", "Memory data"};
inline constexpr Text fillGrid{"刷新(&R)", "&Refresh"};
inline constexpr Text fillGridTip{"按当前数据重新显示，改变过的字节显示为红色。",
                                  "Shows the data as it is now; bytes that have changed are red."};
inline constexpr Text clearMarksTip{"去掉所有红色标记。", "Takes all red marks away."};
inline constexpr Text partFill{"部分填充(&L)…", "Partial fi&ll…"};
inline constexpr Text partFillTip{"把一段地址的字节都改为同一个值。",
                                  "Gives all bytes of an address range one value."};
// What was done, as the menu Edit names it after "Undo".
inline constexpr Text stepByte{"字节 {:04X}", "byte {:04X}"};
inline constexpr Text stepFill{"填充 {:04X} - {:04X}", "fill {:04X} to {:04X}"};
inline constexpr Text partFillTitle{"部分填充", "Partial fill"};
inline constexpr Text fillFrom{"起始地址(&S)：", "&Start address:"};
inline constexpr Text fillTo{"结束地址(&E)：", "&End address:"};
inline constexpr Text fillValue{"填充值(&V)：", "&Value:"};
inline constexpr Text fillNow{"填充(&F)", "&Fill"};
inline constexpr Text fillHint{"地址和值都是十六进制数，包括起始和结束地址。",
                               "All numbers are hexadecimal; both addresses are included."};
inline constexpr Text badFillAddress{"请输入十六进制地址 0000 - {:04X}。",
                                     "Please type a hexadecimal address from 0000 to {:04X}."};
inline constexpr Text fillEndsBeforeStart{"结束地址不能小于起始地址。",
                                          "The end address must not be below the start address."};
inline constexpr Text clearMarks{"清除标记(&C)", "&Clear marks"};
inline constexpr Text badByteTip{"请输入两位十六进制数 00 - FF。",
                                 "Two hexadecimal digits, 00 to FF."};
inline constexpr Text goToAddress{"地址(&A)", "&Address"};
inline constexpr Text goToTip{"十六进制地址，按回车键跳转。",
                              "A hexadecimal address; Enter goes there."};
inline constexpr Text tablesFirst{
    "保存和写频时，信道窗口和整机设置窗口中的值会覆盖这些字节。",
    "Save and Write overwrite these bytes with the values from the channel and option windows."};
inline constexpr Text characters{"字符", "Text"};
inline constexpr Text charactersTip{"各字节对应的 ASCII 字符；没有字符的字节显示为“.”。",
                                    "The bytes as ASCII characters; \".\" for those without one."};

}  // namespace k520::texts
