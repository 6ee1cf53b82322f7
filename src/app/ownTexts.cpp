// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/ownTexts.h"

#include <algorithm>
#include <iterator>

#include "app/RuntimeError.h"
#include "app/mdimoduMain.h"
#include "app/modSoftFace.h"

namespace k520 {

namespace {

struct Row {
    OwnText text;
    std::string chinese;
    std::string english;
};

// clang-format off
const Row rows[] = {
    // Main window
    {OwnText::menuView, "视图(&V)", "&View"},
    {OwnText::viewErrorList, "错误列表(&E)", "&Error List"},
    {OwnText::viewTree, "导航树(&T)", "Navigation &Tree"},
    {OwnText::treeTitle, "导航", "Navigation"},
    {OwnText::toolbarTitle, "工具栏", "Toolbar"},
    {OwnText::helpCannotOpen, "没有能打开帮助文件的程序:", "There is no program to open the help file:"},
    {OwnText::fileSaved, "已保存", "Saved"},
    {OwnText::fileNotSaved, "没有保存: {}", "NOT saved: {}"},
    {OwnText::shortFile, "文件只有 {} 字节（应为 {}），其余数据保持不变",
     "The file holds only {} of {} bytes; the rest is as it was"},
    // Channel window
    {OwnText::outOfBandTip, "频率超出频段 {} - {} MHz，对讲机可能无法工作。",
     "Outside the band {} - {} MHz: the radio may not work on it."},
    {OwnText::openedTip, "新开启的信道，请输入频率。", "A channel just opened: type its frequency."},
    {OwnText::cutCells, "剪切(&T)", "Cu&t"},
    {OwnText::pasteCells, "粘贴(&P)", "&Paste"},
    // Communication dialog
    {OwnText::stopSession, "停止通信(&S)", "&Stop"},
    {OwnText::showMemDat, "显示内存数据(&M)", "Show &memory data"},
    {OwnText::dataList, "通信数据(&A)", "D&ata"},
    {OwnText::addressRanges, "地址范围（十六进制）", "Address ranges (hexadecimal)"},
    {OwnText::maxAddress, "最大地址(&X)", "Ma&ximum"},
    {OwnText::readFrom, "读起始(&F)", "Read &from"},
    {OwnText::readTo, "读结束(&T)", "Read &to"},
    {OwnText::writeFrom, "写起始(&O)", "Write fr&om"},
    {OwnText::writeTo, "写结束(&I)", "Wr&ite to"},
    {OwnText::badAddressTip, "不是十六进制地址 (0000 - FFFF)，仍使用 {:04X}。",
     "Not a hexadecimal address (0000 to FFFF): {:04X} stays in force."},
    {OwnText::communLight, "通信指示灯", "Communication light"},
    {OwnText::closeWindow, "关闭(&C)", "&Close"},
    // How a session ended
    {OwnText::readDone, "对讲机已读取：{} 个数据块。", "Radio read: {} blocks."},
    {OwnText::writeDone, "对讲机已写入：{} 个数据块。", "Radio written: {} blocks."},
    {OwnText::doneButLogged, "但出现错误：{}", "But an error was reported: {}"},
    {OwnText::sessionStopped, "通信已停止。", "Stopped on request."},
    {OwnText::portMissing, "端口没有设备 ({1})。请插好写频线并安装驱动程序，或选择其他端口。",
     "There is no device at the port ({1}). Plug in the programming cable and see that its driver "
     "is there, or choose another port."},
    {OwnText::portDenied, "没有使用端口的权限。{0}", "You may not use the port. {0}"},
    {OwnText::portInUse, "端口已被占用 ({0})。请关闭占用它的程序，或选择其他端口。",
     "The port is taken ({0}). Close the program that has it, or choose another port."},
    {OwnText::portNotSerial, "这不是串口 ({1})。请选择其他端口。",
     "This is no serial port ({1}). Choose another port."},
    {OwnText::portTroubleOther, "端口无法打开 ({0})。请检查写频线，或选择其他端口。",
     "The port cannot be opened ({0}). Check the cable, or choose another port."},
    {OwnText::contactLost, "通信中途端口断开 ({0})。请重新插好写频线，再试一次。",
     "The port broke off in the middle ({0}). Plug the cable in again, then start once more."},
    {OwnText::rangeUnusable, "地址范围不可用 ({0})。请检查下面的起始和结束地址。",
     "The address range cannot be used ({0}). Check its first and last address below."},
    {OwnText::endedByError, "通信因错误结束：{0}。", "An error ended it: {0}."},
    {OwnText::radioSilent,
     "尝试 {} 次，对讲机没有有效应答。请检查：对讲机是否开机，写频线两端是否插好，端口是否正确，型号是否相符。",
     "No valid answer from a radio in {} attempts. Is it switched on, is the cable plugged in at "
     "both ends, is it the right port and the right kind of radio?"},
    {OwnText::radioUnclear, "对讲机有应答，但 {} 次尝试均中断。请检查插头、电池和周围的干扰，再试一次。",
     "The radio answered, but each of {} attempts broke off. Check plugs and battery, keep away "
     "from sources of noise, then start once more."},
    {OwnText::imageUnchanged, "这里的数据没有改变。", "The data here is unchanged."},
    {OwnText::imageMixed, "这里的数据现在新旧混杂（已读到 {:04X}）：请重新读取，或重新打开文件。",
     "The data here is now a mixture of old and new (read up to {:04X}): read again, or open your "
     "file again."},
    {OwnText::radioUnchanged, "对讲机的数据没有改变。", "The radio is unchanged."},
    {OwnText::radioTouched, "对讲机可能已被部分写入：使用前请重新写入。",
     "The radio may be partly written: write again before it is used."},
    {OwnText::radioPartlyWritten, "对讲机只写入了一部分（到 {:04X}）：使用前请重新写入。",
     "The radio is only partly written (up to {:04X}): write again before it is used."},
    // Safeguards: the boxes, the stages, and what is said of them at the end
    {OwnText::keepCopy, "保留所读数据的副本(&K)", "&Keep a copy of what was read"},
    {OwnText::backUpFirst, "写入前先备份对讲机(&B)", "&Back up the radio before writing"},
    {OwnText::readBack, "回读并比较(&P)", "Read back and com&pare"},
    {OwnText::restoreRadio, "恢复(&E)", "R&estore"},
    {OwnText::restoreQuestion, "将备份 {} 写回对讲机吗?", "Write the backup {} back to the radio?"},
    {OwnText::restoreTip, "将写入前的备份写回对讲机：{}",
     "Writes the backup made before the write back to the radio: {}"},
    {OwnText::restoreNone, "还没有写入前的备份。", "There is no backup made before a write yet."},
    {OwnText::stageRead, "读取", "Read"},
    {OwnText::stageReadAgain, "再次读取并比较", "Read again and compare"},
    {OwnText::stageBackUp, "备份", "Backup"},
    {OwnText::stageWrite, "写入", "Write"},
    {OwnText::stageRestore, "恢复", "Restore"},
    {OwnText::stageReadBack, "回读并比较", "Compare"},
    {OwnText::backupLies, "写入前的备份：Data/Backups/{}。", "The backup made before is Data/Backups/{}."},
    {OwnText::copyLies, "副本：Data/Backups/{}。", "A copy is kept in Data/Backups/{}."},
    {OwnText::restoreOffered, "写入前的数据在 Data/Backups/{} 中，按“恢复”可写回对讲机。",
     "What the radio held before is in Data/Backups/{}: Restore puts it back."},
    {OwnText::earlierOffered,
     "此前有一次写入中断，那次写入之前的数据在 Data/Backups/{} 中，按“恢复”可写回对讲机。",
     "An earlier write broke off; what the radio held before that one is in Data/Backups/{}: "
     "Restore puts it back."},
    {OwnText::copyNotStored, "数据已读取，但副本无法保存 ({})。",
     "The radio was read, but no copy could be kept ({})."},
    {OwnText::backupNotStored, "备份无法保存 ({})，因此没有写入任何数据。",
     "The backup could not be stored ({}), so nothing was written."},
    {OwnText::backupNotReadable, "备份无法读取 ({})，因此没有写入任何数据。",
     "The backup cannot be read ({}), so nothing was written."},
    {OwnText::backUpFailed, "备份没有完成，因此没有写入任何数据：对讲机的数据没有改变。",
     "Without a backup nothing was written: the radio is unchanged."},
    {OwnText::bothReadsAgree, "两次读取的数据一致。", "Both passes agree."},
    {OwnText::radioHoldsAll, "回读的数据与写入的一致。", "Read back: the radio holds what was sent."},
    {OwnText::radioRestored, "备份已写回对讲机。", "The backup was written back to the radio."},
    {OwnText::restoreAgain, "对讲机中还不是备份的数据：使用前请再次恢复。",
     "The radio does not hold the backup yet: restore once more before it is used."},
    {OwnText::restoreDiffers, "对讲机中有 {} 个字节与备份不同（见下面的列表）。",
     "The radio differs from the backup (bytes listed below: {})."},
    {OwnText::readsDiffer, "两次读取有 {} 个字节不同（见下面的列表），其中必有一次有误。请检查写频线后重新读取。",
     "Two passes over the radio differ, so one of them is wrong (bytes listed below: {}). Check the "
     "cable and read again."},
    {OwnText::radioDiffers, "对讲机中有 {} 个字节与写入的不同（见下面的列表）。使用前请重新写入。",
     "The radio does not hold what was sent (bytes listed below: {}). Write again before it is "
     "used."},
    {OwnText::notCompared, "数据已写入，但没有比较完：使用前请重新写入或读取检查。",
     "The radio is written but not compared: write again, or read it to check."},
    {OwnText::modelByte, "机型", "Model"},
    {OwnText::bandBytes, "频段", "Band"},
    {OwnText::stampBytes, "写频时间", "Programming stamp"},
    {OwnText::channelNumber, "信道 {}", "Channel {}"},
    // Port dialog: why a port cannot be chosen
    {OwnText::portMissingShort, "没有设备", "no device"},
    {OwnText::portDeniedShort, "没有权限", "no permission"},
    {OwnText::portInUseShort, "已被占用", "in use"},
    {OwnText::portNotSerialShort, "不是串口", "not a serial port"},
    {OwnText::portNotUsable, "不可用", "not usable"},
    {OwnText::simulatedRadio, "模拟对讲机", "simulated radio"},
    // Option panel
    {OwnText::groupTransmit, "发射", "Transmit"},
    {OwnText::groupReceiver, "接收", "Receiver"},
    {OwnText::groupVoice, "语音与提示音", "Voice and tones"},
    {OwnText::groupPower, "电源", "Power"},
    {OwnText::groupVox, "声控 (VOX)", "VOX"},
    {OwnText::groupBroadcast, "收音机", "Broadcast receiver"},
    {OwnText::neverStoredTip, "对讲机的硬件特性，不会写入对讲机。",
     "A property of the radio's hardware; it is never stored in the radio."},
    // Memory data window
    {OwnText::memDatTitle, "内存数据", "Memory data"},
    {OwnText::fillGrid, "重新填充(&F)", "Re&fill"},
    {OwnText::clearMarks, "清除标记(&C)", "&Clear marks"},
    {OwnText::badByteTip, "请输入两位十六进制数 00 - FF。", "Two hexadecimal digits, 00 to FF."},
    {OwnText::goToAddress, "地址(&A)", "&Address"},
    {OwnText::goToTip, "十六进制地址，按回车键跳转。", "A hexadecimal address; Enter goes there."},
    {OwnText::tablesFirst, "保存或写频时，信道和整机设置会重新写入各自的字节。",
     "Saving and writing put channels and optional features over their bytes."},
    // Error list
    {OwnText::errorListTitle, "错误列表", "Error list"},
    {OwnText::copyLines, "复制(&C)", "&Copy"},
    {OwnText::copyAll, "全部复制(&A)", "Copy &all"},
    {OwnText::errorListEmpty, "没有错误。", "No errors."},
};
// clang-format on

}  // namespace

const std::string& ownText(OwnText text) {
    const auto* row = std::ranges::find(rows, text, &Row::text);
    if (row == std::end(rows)) {
        throw RuntimeError(errNum::subscript, "own text");
    }
    const bool chinese = modSoftFace::state().language == mdimoduMain::languageChinese;
    return chinese ? row->chinese : row->english;
}

}  // namespace k520
