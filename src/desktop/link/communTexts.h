// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the communication dialog and of the one that chooses a backup.
namespace k520::texts {

// Communication dialog
inline constexpr Text stopSession{"停止通信(&S)", "&Stop"};
inline constexpr Text showMemDat{"显示内存数据(&M)", "Show &memory data"};
inline constexpr Text communLight{"通信指示灯", "Communication light"};
inline constexpr Text closeWindow{"关闭(&C)", "&Close"};
inline constexpr Text details{"详细信息(&D)", "&Details"};
inline constexpr Text keepCopy{"保留所读数据的副本(&K)", "&Keep a copy of what was read"};
inline constexpr Text backUpFirst{"写入前先备份对讲机(&B)", "&Back up the radio before writing"};
inline constexpr Text readBack{"回读并比较(&P)", "Read back and com&pare"};
inline constexpr Text restoreRadio{"恢复(&E)", "R&estore"};
inline constexpr Text restoreQuestion{"将备份 {} 写回对讲机吗？",
                                      "Write the backup {} back to the radio?"};

// While a session is on
inline constexpr Text stageUnderWay{"第 {0} 步，共 {1} 步：{2}", "Step {0} of {1}: {2}"};
inline constexpr Text keepConnected{"通信期间请勿关闭对讲机，请勿拔下写频线。",
                                    "Leave the radio on and the cable plugged in."};
inline constexpr Text notStoppableYet{
    "通信不能取消；第六次尝试失败后可勾选“停止通信”。",
    "A session cannot be cancelled. Stop can be ticked after the sixth failed attempt."};
inline constexpr Text stoppableNow{"勾选“停止通信”可结束通信。", "Tick Stop to end the session."};
inline constexpr Text cannotCloseNow{"通信正在进行，现在不能关闭。",
                                     "A session is running. It cannot be closed now."};

// Details
inline constexpr Text dataList{"通信数据(&A)", "D&ata"};
inline constexpr Text addressRanges{"地址范围（十六进制）", "Address ranges (hexadecimal)"};
inline constexpr Text maxAddress{"最大地址(&X)", "Ma&ximum"};
inline constexpr Text readFrom{"读起始地址(&F)", "Read &from"};
inline constexpr Text readTo{"读结束地址(&T)", "Read &to"};
inline constexpr Text writeFrom{"写起始地址(&O)", "Write fr&om"};
inline constexpr Text writeTo{"写结束地址(&I)", "Wr&ite to"};
inline constexpr Text badAddressTip{
    "不是十六进制地址（0000 - FFFF），仍使用 {:04X}。",
    "Not a hexadecimal address (0000 to FFFF): {:04X} is still used."};

// The backups to choose from
inline constexpr Text chooseBackup{"要写回对讲机的备份(&B)", "&Backup to write back to the radio"};
inline constexpr Text backupTime{"时间", "Time"};
inline constexpr Text backupMade{"备份原因", "Made"};
inline constexpr Text backupChanges{"恢复会改变", "A restore would change"};
inline constexpr Text forgetBackup{"不再提醒(&N)", "&No longer needed"};
inline constexpr Text forgetTip{"那台对讲机已经正常，不再提醒。备份会保留。",
                                "The radio of that write is all right again. The backup is kept."};
inline constexpr Text forgetQuestion{
    "那台对讲机已经正常了吗？备份 {} 会保留，但不再提醒。",
    "Is the radio of that write all right again? The backup {} is kept, but you are not reminded "
    "of it any more."};
inline constexpr Text cancelRestore{"取消(&C)", "&Cancel"};

}  // namespace k520::texts
