// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Why a port, a session or the simulated radio failed. Most stand after a device's name and a
/// colon, so they begin with a small letter and have no full stop.
namespace k520::texts {

// Serial ports
inline constexpr Text inUseBy{"被{}占用", "in use by {}"};
inline constexpr Text isAFolder{"是文件夹，不是串口设备", "is a folder, not a serial device"};
inline constexpr Text isAFile{"是普通文件，不是串口设备", "is a plain file, not a serial device"};
inline constexpr Text isNotSerial{"不是串口设备", "is not a serial device"};
inline constexpr Text permissionNeeded{"没有使用端口的权限。{}", "permission denied; {}"};
inline constexpr Text joinGroup{
    "请在终端执行 `sudo usermod -aG {0} {1}`，然后注销并重新登录。",
    "members of group {0} may use it: run sudo usermod -aG {0} {1} in a terminal, then log out and "
    "in again"};
inline constexpr Text onlyUser{"只有用户 {} 能使用此端口。", "only user {} may use it"};
inline constexpr Text noSuchDevice{"没有此设备；写频线插好了吗？",
                                   "no such device; is the cable plugged in?"};
inline constexpr Text folderClosed{"没有权限查看设备所在的文件夹",
                                   "no permission to look into its folder"};
inline constexpr Text portNotOpen{"端口没有打开", "the port is not open"};
inline constexpr Text portGone{"端口已断开；写频线还插着吗？",
                               "the port has gone away; is the cable still plugged in?"};
inline constexpr Text portTakesNothing{"端口不接受数据；请检查写频线，然后重试",
                                       "the port does not take bytes; check the cable and try "
                                       "again"};
inline constexpr Text noDeviceForPort{"没有设备对应此端口；请选择其他端口",
                                      "no device belongs to this port; choose another one"};

// Who holds a port
inline constexpr Text anotherProgram{"另一个程序", "another program"};
inline constexpr Text thisProgram{"本程序", "this program"};
inline constexpr Text programWithNumber{" {}（进程 {}）", "{} (process {})"};
inline constexpr Text someProgram{"某个程序", "a program"};

// The simulated radio
inline constexpr Text simulatedRadio{"模拟对讲机", "simulated radio"};
inline constexpr Text memoryNotKept{"模拟对讲机无法把内存保存到文件夹 {}：{}",
                                    "the simulated radio cannot keep its memory in the folder {}: "
                                    "{}"};
inline constexpr Text unknownAsleep{"未开始编程时收到未知数据", "unknown while asleep"};
inline constexpr Text unknownGreeted{"握手后收到未知数据", "unknown while greeted"};
inline constexpr Text unknownProgramming{"编程时收到未知数据", "unknown while programming"};
inline constexpr Text frameCutOff{"数据帧因停顿而中断", "frame cut off by a pause"};
inline constexpr Text badAddressForm{"地址格式不对", "bad address form"};
inline constexpr Text badLength{"长度不对", "bad length"};
inline constexpr Text outsideMemory{"超出内存范围", "outside the memory"};
inline constexpr Text pseudoTerminal{"伪终端", "pseudo-terminal"};
inline constexpr Text notALink{"已存在，而且不是符号链接；保持不变，请给出其他路径",
                               "exists and is not a symbolic link; it stays, give another path"};
inline constexpr Text linkInUse{
    "指向 {}，另一个模拟对讲机正在使用它；请先停止那个程序，或给出其他路径",
    "leads to {}, where another simulated radio runs; stop that one, or give another path"};
inline constexpr Text linkElsewhere{
    "指向 {}，那不是模拟对讲机；请删除该链接，或给出其他路径",
    "leads to {}, which is not a simulated radio; remove the link, or give another path"};

// Sessions
inline constexpr Text serialPortNotOpen{"串口没有打开", "the serial port is not open"};
inline constexpr Text addressOutside{"地址 {} 超出 0..{}", "address {} is outside 0..{}"};

}  // namespace k520::texts
