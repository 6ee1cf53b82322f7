// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Why an image, a data file or a backup cannot be used; most stand after a file's name and a
/// colon.
namespace k520::texts {

inline constexpr Text fileTooShort{"文件只有 {} 个字节，需要 {} 个字节",
                                   "the file has {} bytes and needs {}"};
inline constexpr Text rangeOutsideImage{
    "地址 {:04X} 到 {:04X} 不在 {} 个字节的内存映像之内",
    "addresses {:04X} to {:04X} do not lie within the memory image of {} bytes"};
inline constexpr Text fileTooLarge{"文件太大，不是数据文件", "too large to be a data file"};
inline constexpr Text longerThanAnyData{
    "有 {} 个字节，不是数据文件（数据文件最多 {} 个字节）",
    "has {} bytes and is not a data file (a data file has at most {})"};
inline constexpr Text notADataFile{
    "不是数据文件（数据文件的字节 {:04X} 到 {:04X} 全部是 FF）",
    "is not a data file (in a data file the bytes {:04X} to {:04X} are all FF)"};

}  // namespace k520::texts
