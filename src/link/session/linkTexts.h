// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the radio link: what a session is about to do, and how it ended.
namespace k520::texts {

// What a session is about to do, and what it does
inline constexpr Text readyToRead{"准备读取对讲机", "Ready to read the radio"};
inline constexpr Text readyToWrite{"准备写入对讲机", "Ready to write to the radio"};
inline constexpr Text readyHint{
    "请打开对讲机，插好写频线，然后按“{}”。端口：COM{}。",
    "Switch the radio on, plug in the programming cable, then press {}. Port: COM{}."};
inline constexpr Text secondsLeft{"约剩 {} 秒", "About {} s left"};
inline constexpr Text minutesLeft{"约剩 {} 分钟", "About {} min left"};

// How a session ended: the line above the advice
inline constexpr Text notRead{"对讲机没有读取成功。", "The radio was not read."};
inline constexpr Text readWithoutCopy{"对讲机已读取，但没有保留副本。",
                                      "The radio was read, but no copy was kept."};
inline constexpr Text passesDiffer{"两次读取的数据不同。", "The two reads differ."};
inline constexpr Text nothingWritten{"没有写入任何数据。", "Nothing was written."};
inline constexpr Text partlyWritten{"对讲机只写入了一部分！", "The radio is only partly written!"};
inline constexpr Text perhapsPartlyWritten{"对讲机可能只写入了一部分！",
                                           "The radio may be partly written!"};
inline constexpr Text writtenNotCompared{"数据已写入，但没有比较完。",
                                         "The radio is written, but not compared."};
inline constexpr Text writtenOtherwise{"对讲机中的数据与写入的不同！",
                                       "The radio does not hold what was sent!"};
inline constexpr Text unfinishedBefore{"上次写入没有完成！", "The last write did not finish!"};
inline constexpr Text unfinishedHint{
    "{} 写入的那台对讲机可能只写入了一部分：使用前请按“恢复”写回写入前的数据，或重新写入。",
    "The radio written on {} may be partly written. Before you use it, press Restore to put back "
    "what it held, or write it again."};

// How a session ended
inline constexpr Text readDone{"对讲机已读取：{} 个数据块。", "Radio read: {} blocks."};
inline constexpr Text writeDone{"对讲机已写入：{} 个数据块。", "Radio written: {} blocks."};
inline constexpr Text doneButLogged{"但出现错误：{}", "But an error was reported: {}"};
inline constexpr Text sessionStopped{"通信已停止。", "Stopped on request."};
inline constexpr Text portMissing{
    "该端口没有接设备（{1}）。请插好写频线并安装驱动程序，或选择其他端口。",
    "There is no device at the port ({1}). Plug in the programming cable and see that its driver "
    "is there, or choose another port."};
inline constexpr Text portDenied{"无法使用端口。{0}",
                                 "You do not have permission to use the port. {0}"};
inline constexpr Text portInUse{
    "端口已被占用（{0}）。请关闭占用它的程序，或选择其他端口。",
    "Another program is using the port ({0}). Close that program, or choose another port."};
inline constexpr Text portNotSerial{"这不是串口（{1}）。请选择其他端口。",
                                    "This is not a serial port ({1}). Choose another port."};
inline constexpr Text portTroubleOther{
    "端口无法打开（{0}）。请检查写频线，或选择其他端口。",
    "The port cannot be opened ({0}). Check the cable, or choose another port."};
inline constexpr Text contactLost{
    "通信中途端口断开（{0}）。请重新插好写频线，再试一次。",
    "The connection was lost during communication ({0}). Plug the cable in again, then start once "
    "more."};
inline constexpr Text rangeUnusable{
    "地址范围不可用（{0}）。请检查“详细信息”中的起始和结束地址。",
    "The address range cannot be used ({0}). Check its first and last address under "
    "Details."};
inline constexpr Text endedByError{"通信因错误结束：{0}。",
                                   "The session ended with an error: {0}."};
inline constexpr Text radioSilent{
    "尝试 {} "
    "次，对讲机没有有效应答。请检查：对讲机是否开机，写频线两端是否插好，端口是否正确，型号是否相符"
    "。",
    "No valid answer from a radio in {} attempts. Is it switched on, is the cable plugged in at "
    "both ends, is it the right port and the right kind of radio?"};
inline constexpr Text radioUnclear{
    "对讲机有应答，但 {} 次尝试均中断。请检查插头、电池和周围的干扰，再试一次。",
    "The radio answered, but each of {} attempts broke off. Check plugs and battery, keep away "
    "from sources of noise, then start once more."};
inline constexpr Text noValidAnswer{"尝试 {} 次，对讲机没有有效应答",
                                    "no valid answer from a radio in {} attempts"};
inline constexpr Text attemptsBrokeOff{"对讲机有应答，但 {} 次尝试均中断",
                                       "the radio answered, but each of {} attempts broke off"};
inline constexpr Text imageUnchanged{"软件窗口中的数据没有改变。", "The data here is unchanged."};
inline constexpr Text imageMixed{
    "软件窗口中的数据现在新旧混杂（已读到地址 {:04X}）：请重新读取，或重新打开文件。",
    "The data here is now a mixture of old and new (read up to {:04X}): read again, or open your "
    "file again."};
inline constexpr Text radioUnchanged{"对讲机的数据没有改变。", "The radio is unchanged."};
inline constexpr Text radioTouched{
    "对讲机可能已被部分写入：使用前请重新写入。",
    "The radio may be partly written: write again before it is used."};
inline constexpr Text radioPartlyWritten{
    "对讲机只写入了一部分（写到地址 {:04X}）：使用前请重新写入。",
    "The radio is only partly written (up to {:04X}): write again before it is used."};

// Safeguards: the backups to choose from, the stages, and what is said of them at the end
inline constexpr Text restoreTip{"选择一个备份，写回对讲机。",
                                 "Choose a backup to write back to the radio."};
inline constexpr Text restoreNone{"还没有备份。", "There is no backup yet."};
inline constexpr Text madeByRead{"读取时", "by a read"};
inline constexpr Text madeBeforeWrite{"写入前", "before a write"};
inline constexpr Text madeBeforeUnfinished{"写入前（该次写入没有完成）",
                                           "before a write that did not finish"};
inline constexpr Text backupUnreadable{"未知：无法读取（{}）", "unknown: it cannot be read ({})"};
inline constexpr Text otherAddresses{"未知：上次写入的是其他地址",
                                     "unknown: the last write covered other addresses"};
inline constexpr Text comparedWithSent{"与上次写入对讲机的数据比较。",
                                       "Compared with what was last written to a radio."};
inline constexpr Text comparedWithImage{"与软件窗口中的数据比较。",
                                        "Compared with the data in this program."};
inline constexpr Text stageRead{"读取", "Read"};
inline constexpr Text stageReadAgain{"再次读取并比较", "Read again and compare"};
inline constexpr Text stageBackUp{"备份", "Backup"};
inline constexpr Text stageWrite{"写入", "Write"};
inline constexpr Text stageRestore{"恢复", "Restore"};
inline constexpr Text stageReadBack{"回读并比较", "Compare"};
inline constexpr Text backupLies{"写入前的备份：Data/Backups/{}。",
                                 "The backup made before is Data/Backups/{}."};
inline constexpr Text copyLies{"副本：Data/Backups/{}。", "A copy is kept in Data/Backups/{}."};
inline constexpr Text restoreOffered{
    "写入前的数据在 Data/Backups/{} 中，按“恢复”可写回对讲机。",
    "What the radio held before is in Data/Backups/{}: Restore puts it back."};
inline constexpr Text earlierOffered{
    "此前有一次写入中断，那次写入之前的数据在 Data/Backups/{} 中，按“恢复”可写回对讲机。",
    "An earlier write broke off; what the radio held before that one is in Data/Backups/{}: "
    "Restore puts it back."};
inline constexpr Text earlierSeveral{
    "此前有 {} 次写入中断，其中一次可能就是这台对讲机的；最近一次写入之前的数据在 Data/Backups/{} "
    "中，“恢复”或 k520-cli restore --list 会列出全部。",
    "{} earlier writes broke off, and any of them may be of this radio; what a radio held before "
    "the latest one is in Data/Backups/{}: Restore or k520-cli restore --list shows them all."};
inline constexpr Text earlierNotCovered{
    "此前中断的写入可能还有一部分留在对讲机中，那次写入之前的数据在 Data/Backups/{} "
    "中，按“恢复”可写回对讲机。",
    "Part of an earlier write that broke off may still be in the radio. What the radio held before "
    "that "
    "one is in Data/Backups/{}: Restore puts it back."};
inline constexpr Text copyNotStored{"数据已读取，但副本无法保存（{}）。",
                                    "The radio was read, but no copy could be kept ({})."};
inline constexpr Text backupNotStored{
    "备份无法保存（{}），因此没有写入任何数据。",
    "The backup could not be stored ({}), so nothing was written."};
inline constexpr Text backupNotReadable{"备份无法读取（{}），因此没有写入任何数据。",
                                        "The backup cannot be read ({}), so nothing was written."};
inline constexpr Text backUpFailed{
    "备份没有完成，因此没有写入任何数据：对讲机的数据没有改变。",
    "The backup failed, so nothing was written. The radio is unchanged."};
inline constexpr Text bothReadsAgree{"两次读取的数据一致。", "Both passes agree."};
inline constexpr Text radioHoldsAll{"回读的数据与写入的一致。",
                                    "Read back: the radio holds what was sent."};
inline constexpr Text radioRestored{"备份已写回对讲机。",
                                    "The backup was written back to the radio."};
inline constexpr Text restoreAgain{
    "对讲机中还不是备份的数据：使用前请再次恢复。",
    "The radio does not hold the backup yet: restore once more before it is used."};
inline constexpr Text restoreDiffers{
    "对讲机中有 {} 个字节与备份不同（见“详细信息”中的列表）。",
    "The radio differs from the backup (bytes listed under Details: {})."};
inline constexpr Text readsDiffer{
    "两次读取有 {} 个字节不同（见“详细信息”中的列表），其中必有一次有误。请检查写频线后重新读取。",
    "Two passes over the radio differ, so one of them is wrong (bytes listed under Details: {}). "
    "Check the "
    "cable and read again."};
inline constexpr Text radioDiffers{
    "对讲机中有 {} 个字节与写入的不同（见“详细信息”中的列表）。使用前请重新写入。",
    "The radio does not hold what was sent (bytes listed under Details: {}). Write again before it "
    "is "
    "used."};
inline constexpr Text notCompared{
    "数据已写入，但没有比较完：使用前请重新写入或读取检查。",
    "The radio is written but not compared: write again, or read it to check."};

// Port dialog: why a port cannot be chosen
inline constexpr Text portMissingShort{"没有设备", "no device"};
inline constexpr Text portDeniedShort{"没有权限", "no permission"};
inline constexpr Text portInUseShort{"已被占用", "in use"};
inline constexpr Text portNotSerialShort{"不是串口", "not a serial port"};
inline constexpr Text portNotUsable{"不可用", "not usable"};

}  // namespace k520::texts
