// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/Text.h"

/// Texts of the memory data window.
namespace k520::texts {

inline constexpr Text memDatTitle{"内存数据", "Memory data"};
inline constexpr Text fillGrid{"重新填充(&F)", "Re&fill"};
inline constexpr Text clearMarks{"清除标记(&C)", "&Clear marks"};
inline constexpr Text badByteTip{"请输入两位十六进制数 00 - FF。",
                                 "Two hexadecimal digits, 00 to FF."};
inline constexpr Text goToAddress{"地址(&A)", "&Address"};
inline constexpr Text goToTip{"十六进制地址，按回车键跳转。",
                              "A hexadecimal address; Enter goes there."};
inline constexpr Text tablesFirst{
    "保存或写频时，信道和整机设置会重新写入各自的字节。",
    "Saving and writing put channels and optional features over their bytes."};

}  // namespace k520::texts
