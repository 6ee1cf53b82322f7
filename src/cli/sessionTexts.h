// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the commands that talk to a radio, and of the one that simulates one.
namespace k520::texts {

// Before a session
inline constexpr Text noSuchPort{"没有端口 {}；端口号为 1 到 {}",
                                 "there is no port {}; there are 1 to {}"};
inline constexpr Text rangeNotUsable{
    "设置文件中 {0}StartAddr 为 {1:04X}，{0}EndAddr 为 {2:04X}；但从第一个到最后一个 {3} "
    "字节的数据块必须在 0000 到 {4:04X} 之内。修改方法：{5} 和 {6}",
    "the settings file gives {0}StartAddr {1:04X} and {0}EndAddr {2:04X}, but blocks of {3} bytes "
    "from the first to the last have to lie within 0000 to {4:04X}; fix it with: {5} and {6}"};
inline constexpr Text oneBackupOnly{
    "--backup 和 --keep-copy 都会做备份；请只用其中一个",
    "--backup and --keep-copy both make the backup; give one of them"};
inline constexpr Text notEncoded{"信道和整机设置无法编码",
                                 "the channels and options cannot be encoded"};

// What a session that failed has left
inline constexpr Text restoreAgainFirst{"使用前请再次恢复", "restore again before it is used"};
inline constexpr Text writeAgainFirst{"使用前请重新写入", "write again before it is used"};
inline constexpr Text readFailed{"读取失败，没有保存任何数据", "read failed, nothing saved"};
inline constexpr Text backUpReadFailed{"读取失败，对讲机的数据没有改变",
                                       "read failed, the radio is untouched"};
inline constexpr Text secondReadFailed{"第二次读取失败，没有保存任何数据",
                                       "second read failed, nothing saved"};
inline constexpr Text restoredNotCompared{
    "读取失败，备份已写回，但没有比较", "read failed, the backup is written back but not compared"};
inline constexpr Text writeNotCompared{
    "读取失败，对讲机已写入，但没有比较；请运行 verify",
    "read failed, the radio is written but not compared; run verify"};
inline constexpr Text writeFailedUntouched{"写入失败，对讲机的数据没有改变",
                                           "write failed, the radio is untouched"};
inline constexpr Text writeFailedUnknown{"写入失败，对讲机可能已被部分写入；{}",
                                         "write failed, the radio may be partly written; {}"};
inline constexpr Text writeFailedPartly{
    "写入失败，对讲机只写入了一部分，到地址 {1:04X}；{0}",
    "write failed, the radio is partly written, up to address {1:04X}; {0}"};
inline constexpr Text withCause{"{}：{}", "{}: {}"};

// Why
inline constexpr Text endOtherProgram{
    "；请先关闭占用它的程序，或选择其他端口（k520-cli ports）",
    "; end that program first, or take another port (k520-cli ports)"};
inline constexpr Text takeOtherPort{"；请选择其他端口（k520-cli ports）",
                                    "; take another port (k520-cli ports)"};
inline constexpr Text stoppedOnRequest{"已按要求停止", "stopped on request"};
inline constexpr Text noAnswerAtPort{
    "{} 上的对讲机在 {} 次尝试中没有有效应答；对讲机是否开机，写频线两端是否插好，端口是否正确"
    "（k520-cli ports）？--trace 可显示收到的数据",
    "no valid answer from a radio at {} in {} attempts; is the radio on, is the cable plugged in "
    "at both ends, is it the right port (k520-cli ports)? --trace shows what was received"};
inline constexpr Text noBackupNoWrite{"没有备份，因此没有写入",
                                      "no backup, so nothing was written"};
inline constexpr Text noCopyNoSave{"没有保存：副本无法保存",
                                   "nothing saved: no copy could be kept"};
inline constexpr Text nothingSent{"没有写入任何数据", "nothing was written"};

// What differs
inline constexpr Text sideSent{"写入的数据", "sent"};
inline constexpr Text sideRadio{"对讲机", "radio"};
inline constexpr Text sideFirst{"第一次", "first"};
inline constexpr Text sideSecond{"第二次", "second"};
inline constexpr Text onlyTheStamp{"写频时间", "the programming stamp"};
inline constexpr Text radioHoldsOther{"对讲机中的数据与写入的不同；{}",
                                      "the radio does not hold what was sent; {}"};
inline constexpr Text twoReadsDiffer{
    "两次读取的数据不同，其中必有一次有误；没有保存；请检查写频线后重新读取",
    "two reads of the radio differ, so one of them is wrong; nothing saved; check the cable and "
    "read again"};
inline constexpr Text radioAndFileDiffer{"对讲机与 {} 不同{}", "the radio and {} differ{}"};
inline constexpr Text lostBytesHint{"（数据文件不能保存字节 {:04X} 到 {:04X}）",
                                    " (bytes {:04X} to {:04X} have no place in a data file)"};

// Ways back
inline constexpr Text putBackBy{"；写入前的数据可用此命令写回：{}",
                                "; what it held before is put back by: {}"};
inline constexpr Text backupIs{"；备份为 {}", "; its backup is {}"};
inline constexpr Text earlierPutBackBy{"；此前有一次写入失败，那次写入之前的数据：{}",
                                       "; what it held before an earlier write that failed: {}"};
inline constexpr Text restPutBackBy{
    "此前失败的写入可能还有一部分留在对讲机中；那次写入之前的数据可用此命令写回：{}",
    "part of an earlier write that failed may still be in the radio; what it held before that one "
    "is "
    "put back by: {}"};
inline constexpr Text keptBeside{"{} 已存在；原来的内容保存在 {}",
                                 "{} was there already; what it held is kept in {}"};
inline constexpr Text noNotes{
    "{} 中没有使用 --keep-copy 的写入记录，不知道对讲机需要哪个备份；没有写入任何数据；请用 --from "
    "指定备份",
    "{} has no note of a write with --keep-copy, so which backup the radio needs is not known; "
    "nothing was written; name the backup with --from"};
inline constexpr Text matchesNoNote{
    "对讲机中的数据既不是备份，也不是使用 --keep-copy 写入的数据；没有写入任何数据；请用 --from "
    "指定正确的备份",
    "the radio matches neither the backup nor the data of a write with --keep-copy; nothing was "
    "written; name the right backup with --from"};
inline constexpr Text severalPossible{
    "列出的几个备份都可能属于这台对讲机；没有写入任何数据；请用 --from 指定正确的备份",
    "each of the listed backups may be the one that this radio needs; nothing was written; name "
    "the right one with --from"};
inline constexpr Text latestListed{"（已列出最近的备份）", " (the latest ones are listed)"};
inline constexpr Text unfinishedMark{"  （写入未完成）", "  (unfinished write)"};
inline constexpr Text oneWishOnly{
    "--list 和 --forget 须单独使用，否则须给出 -p PORT；用法见 k520-cli restore --help",
    "give --list or --forget alone, or else a port with -p PORT; see k520-cli restore --help"};
inline constexpr Text nothingUnfinished{"没有中断的写入。", "No write broke off."};
inline constexpr Text notUnfinished{
    "{} 不是中断的写入之前的备份；restore --list 会列出这些备份",
    "{} is not a backup from before a write that broke off; restore --list shows those"};
inline constexpr Text notForgotten{"没有忘记 {}", "{} is not forgotten"};
inline constexpr Text backupForgotten{"不再提示恢复；备份保留：{}",
                                      "Not asked for any more; the backup stays: {}"};
inline constexpr Text lookingForBackup{"正在读取对讲机，查找它需要的备份",
                                       "Reading the radio to find the backup that it needs"};
inline constexpr Text restoringFile{"正在恢复 {}", "Restoring {}"};
inline constexpr Text writtenBack{"已写回：{}", "Written back: {}"};
inline constexpr Text writtenBackCompared{"已写回并比较：{}", "Written back and compared: {}"};

// The data list
inline constexpr Text traceNotKept{"通信数据没有保存：{}", "the data list is not kept: {}"};
inline constexpr Text traceNotPrinted{
    "通信数据无法继续输出；通信继续进行",
    "the data list cannot be printed any more; the session goes on"};

// The simulated radio
inline constexpr Text notANumberFromOne{"--{} {} 不是从 1 开始的数字",
                                        "--{} {} is not a number from 1"};
inline constexpr Text notADelay{"--delay {} 不是 N 或 N:MS", "--delay {} is not N or N:MS"};
inline constexpr Text baudTooHigh{"--baud {} 超过 {}", "--baud {} is above {}"};
inline constexpr Text memoryNotStored{"内存数据没有保存：{}", "the memory is not stored: {}"};
inline constexpr Text protocolComplaint{"k520-cli: 协议：{}\n", "k520-cli: protocol: {}\n"};
inline constexpr Text simulatorCounts{
    "k520-cli: {} 次尝试，{} 次读取，{} 次写入，{} 次违反协议\n",
    "k520-cli: {} attempts, {} reads, {} writes, {} violations\n"};

}  // namespace k520::texts
