// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "app/Text.h"

/// Texts of the main window and its docks for which the numbered table (modSoftFace) has no row.
namespace k520::texts {

// Main window
inline constexpr Text menuView{"视图(&V)", "&View"};
inline constexpr Text viewErrorList{"错误列表(&E)", "&Error List"};
inline constexpr Text viewTree{"导航树(&T)", "Navigation &Tree"};
inline constexpr Text treeTitle{"导航", "Navigation"};
inline constexpr Text toolbarTitle{"工具栏", "Toolbar"};
inline constexpr Text helpCannotOpen{"没有能打开帮助文件的程序:",
                                     "There is no program to open the help file:"};
inline constexpr Text fileSaved{"已保存", "Saved"};
inline constexpr Text fileNotSaved{"没有保存: {}", "NOT saved: {}"};
inline constexpr Text shortFile{"文件只有 {} 字节（应为 {}），其余数据保持不变",
                                "The file holds only {} of {} bytes; the rest is as it was"};

// Error list
inline constexpr Text errorListTitle{"错误列表", "Error list"};
inline constexpr Text copyLines{"复制(&C)", "&Copy"};
inline constexpr Text copyAll{"全部复制(&A)", "Copy &all"};
inline constexpr Text errorListEmpty{"没有错误。", "No errors."};

}  // namespace k520::texts
