// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the main window and its docks for which the numbered table (modSoftFace) has no row.
namespace k520::texts {

// Main window
inline constexpr Text menuEdit{"编辑(&E)", "&Edit"};
inline constexpr Text menuView{"视图(&V)", "&View"};
inline constexpr Text recentFiles{"最近的文件(&R)", "&Recent files"};
inline constexpr Text noRecentFiles{"（无）", "(none)"};
inline constexpr Text viewMemory{"内存数据(&M)", "&Memory Data"};
inline constexpr Text viewErrorList{"错误列表(&E)", "&Error List"};
inline constexpr Text viewTree{"导航树(&T)", "Navigation &Tree"};
inline constexpr Text viewWords{"用文字说明信道(&W)", "Channels in &Words"};
inline constexpr Text treeTitle{"导航", "Navigation"};
inline constexpr Text toolbarTitle{"工具栏", "Toolbar"};
inline constexpr Text tipNew{"从默认数据开始新的配置",
                             "Start a new configuration from the defaults"};
inline constexpr Text tipOpen{"打开数据文件", "Open a data file"};
inline constexpr Text tipSave{"把信道和整机设置保存到数据文件",
                              "Save channels and optional features in a data file"};
inline constexpr Text tipRead{"从对讲机读出全部数据", "Read the data from the radio"};
inline constexpr Text tipWrite{"把信道和整机设置写入对讲机",
                               "Write the data shown here to the radio"};
inline constexpr Text tipPort{"选择写频线所接的串口",
                              "Choose the port that the cable is plugged into"};
inline constexpr Text tipPrint{"打印信道和整机设置", "Print channels and optional features"};
inline constexpr Text tipHelp{"打开使用说明", "Open the help"};
inline constexpr Text tipExit{"退出本软件", "Leave the program"};
inline constexpr Text helpCannotOpen{"没有能打开帮助文件的程序：",
                                     "There is no program to open the help file:"};
inline constexpr Text fileSaved{"已保存", "Saved"};
inline constexpr Text fileSavedKept{"已保存；{} 原来的内容保留为 {}",
                                    "Saved; what {} held before is kept as {}"};
inline constexpr Text fileNotSaved{"没有保存：{}", "NOT saved: {}"};
inline constexpr Text notKept{"{} 原来的内容无法保留，因此没有覆盖该文件",
                              "what {} holds could not be kept, so it was not overwritten"};
inline constexpr Text fileNotOpened{"没有打开文件：{}", "Not opened: {}"};
inline constexpr Text fileMissing{"没有这个文件：\n{}\n\n请检查路径和文件名。",
                                  "There is no such file:\n{}\n\nCheck the path and the name."};
inline constexpr Text readNotSaved{"从对讲机读出，尚未保存", "Read from the radio, not saved"};
inline constexpr Text readNotSavedTip{
    "显示的数据是从对讲机读出的，还不在任何文件中。请用“另存为”保存。",
    "What is shown was read from the radio and is in no file yet. Save it with Save As."};

// Undo and redo. The names of the steps follow after the colon.
inline constexpr Text undo{"撤销(&U)", "&Undo"};
inline constexpr Text redo{"重做(&R)", "&Redo"};
inline constexpr Text undoStep{"撤销(&U)：{}", "&Undo: {}"};
inline constexpr Text redoStep{"重做(&R)：{}", "&Redo: {}"};
inline constexpr Text stepNew{"新建", "new configuration"};
inline constexpr Text stepOpen{"打开 {}", "open {}"};
inline constexpr Text stepRead{"从对讲机读出", "read from the radio"};
inline constexpr Text stepRange{"自定义频段", "custom band"};

inline constexpr Text stepRecovered{"恢复 {}", "recover {}"};

// Unsaved work of a program that did not end cleanly
inline constexpr Text recover{
    "上次程序没有正常结束，{} 有尚未保存的更改。与该文件不同的有：{}。\n\n"
    "是否打开这些更改？选择“否”时，它们会保留为 {}。",
    "The program did not end cleanly, and {} has changes that were not saved. They differ from the "
    "file in: {}.\n\nOpen them? With No they are kept as {}."};
inline constexpr Text recoverNew{
    "上次程序没有正常结束，还有从未保存过的数据（{}）。\n\n是否打开？选择“否”时，它会保留为 {}。",
    "The program did not end cleanly, and there is work that was never saved ({}).\n\nOpen it? "
    "With No it is kept as {}."};

inline constexpr Text recoveredName{"{} 恢复.dat", "{} recovered.dat"};
inline constexpr Text recoveredNameNumbered{"{} 恢复 {}.dat", "{} recovered {}.dat"};

// Unsaved changes
inline constexpr Text changedTitle{"{}* - {}", "{}* - {}"};
inline constexpr Text unchangedTitle{"{} - {}", "{} - {}"};
inline constexpr Text saveButton{"保存(&S)", "&Save"};
inline constexpr Text dontSaveButton{"不保存(&D)", "&Don't save"};
inline constexpr Text cancelButton{"取消", "Cancel"};
inline constexpr Text changesOf{"{} 中的更改尚未保存。", "The changes to {} are not saved."};
inline constexpr Text changedMeanwhile{
    "{} 在此处打开或保存之后已被其他程序改动。与当前数据不同的有：{}。\n\n"
    "是否覆盖？该文件现在的内容会保留在它旁边。",
    "Another program has changed {} since it was opened or saved here. It differs from what is "
    "shown in: {}.\n\nOverwrite it? What it holds now is kept beside it."};
inline constexpr Text leftAsItIs{"{} 保持原样", "{} was left as it is"};
inline constexpr Text tooLargeToKeep{"{} 太大，不是配置文件；请选择其他文件名",
                                     "{} is too large for a configuration; choose another name"};
inline constexpr Text savedValueTip{"已保存的值：{}", "As saved: {}"};
inline constexpr Text savedValueEmpty{"（空）", "(empty)"};

// What is unusual about an opened file
inline constexpr Text emptyFile{"文件是空的：显示的仍是打开之前的数据。",
                                "The file is empty: what is shown is still the data from before."};
inline constexpr Text shortFile{
    "文件只有 {} 字节（应为 {}）：缺少的部分保持原来的值。",
    "The file holds only {} of {} bytes: the missing part keeps its previous values."};
inline constexpr Text longFile{
    "文件有 {} 字节，比配置（{} 字节）长：只读取了开头部分，保存时多出的部分保持不变。",
    "The file holds {} bytes, more than a configuration ({}): only its beginning was read, and "
    "saving leaves the rest as it is."};
inline constexpr Text noConfiguration{
    "文件内容不像本机的配置：显示的值可能没有意义，也可能仍是打开之前的值。请不要写入对讲机。",
    "This does not look like a configuration of this radio: what is shown may make no sense, or "
    "still be from before. Do not write it to a radio."};

// Error list
inline constexpr Text errorListTitle{"错误列表", "Error list"};
inline constexpr Text copyLines{"复制(&C)", "&Copy"};
inline constexpr Text copyAll{"全部复制(&A)", "Copy &all"};
inline constexpr Text errorListEmpty{"没有错误。", "No errors."};

}  // namespace k520::texts
