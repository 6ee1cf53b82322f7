// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Why something on the ground floor failed: numbers, files, settings, the program folder. They
/// stand after a file's name and a colon, or in the middle of a sentence, so they begin with a
/// small letter and have no full stop.
namespace k520::texts {

inline constexpr Text unknownFailure{"未知错误", "unknown failure"};

// What the system's words mean
inline constexpr Text withMeaning{"{}（{}）", "{} ({})"};
inline constexpr Text notThere{"文件或文件夹不存在", "there is no such file or folder"};
inline constexpr Text partNotAFolder{"路径中有一部分不是文件夹",
                                     "a part of the path is not a folder"};
inline constexpr Text pathIsAFolder{"这是文件夹", "this is a folder"};
inline constexpr Text accessDenied{"没有访问权限", "access denied"};
inline constexpr Text notAllowed{"系统不允许此操作", "the system does not allow this"};
inline constexpr Text readOnlyDisk{"磁盘是只读的", "the disk is read-only"};
inline constexpr Text alreadyThere{"已有同名文件", "the name is taken already"};
inline constexpr Text linksInACircle{"符号链接形成循环", "the symbolic links form a circle"};
inline constexpr Text nameTooLong{"名称太长", "the name is too long"};
inline constexpr Text noSpace{"磁盘空间不足", "the disk is full"};
inline constexpr Text tooLargeForDisk{"文件太大", "the file is too large"};
inline constexpr Text tooManyOpen{"打开的文件太多", "too many files are open"};
inline constexpr Text inUse{"正被占用", "it is in use"};
inline constexpr Text deviceNotThere{"没有这个设备", "there is no such device"};
inline constexpr Text noMemory{"内存不足", "there is not enough memory"};
inline constexpr Text notPossible{"此处不支持该操作", "this is not possible here"};
inline constexpr Text deviceFails{"设备读写错误", "the device does not work"};

// What to do about a failure that the system names
inline constexpr Text withRemedy{"{}；{}", "{}; {}"};
inline constexpr Text checkPath{"请检查名称和路径", "check the name and the path"};
inline constexpr Text checkRights{"请检查访问权限", "check the access rights"};
inline constexpr Text otherPlace{"请选择其他位置", "choose another place"};
inline constexpr Text nameAFile{"请给出文件，而不是文件夹", "name a file, not a folder"};
inline constexpr Text freeSpace{"请腾出磁盘空间", "free some disk space"};
inline constexpr Text shorterName{"请使用较短的名称", "use a shorter name"};
inline constexpr Text checkLinks{"请检查符号链接", "check the symbolic links"};
inline constexpr Text closeOthers{"请关闭其他程序", "close other programs"};

// Program folder
inline constexpr Text programFolder{"程序文件夹", "program folder"};
inline constexpr Text notAFolder{"{} {} 不是文件夹；请指定一个文件夹",
                                 "{} {} is not a folder; name a folder"};
inline constexpr Text folderMissing{"{} {} 不存在；现在使用随软件安装的设置",
                                    "{} {} does not exist; the shipped settings are used"};
inline constexpr Text executablesFolder{"本程序所在的文件夹", "the folder of this program"};

// Numbers
inline constexpr Text outOfRange{"{} 超出范围", "{} is out of range"};
inline constexpr Text notANumber{"“{}”不是数字", "\"{}\" is not a number"};
inline constexpr Text hexTooLarge{"十六进制数 {} 大于 FFFF", "hexadecimal {} is above FFFF"};
inline constexpr Text notHexadecimal{"“{}”不是十六进制数", "\"{}\" is not a hexadecimal number"};

// Files
inline constexpr Text notRegular{"不是普通文件；请选择其他文件",
                                 "not a regular file; choose another one"};
inline constexpr Text diskDoesNotConfirm{
    "{}：新内容已写入，但磁盘没有确认；请重新保存",
    "{}: the new content is in place, but the disk does not confirm it; save again"};
inline constexpr Text tooManyTemporary{"旁边有过多的 .k520-*.tmp 文件；请删除这些文件",
                                       "too many files .k520-*.tmp lie beside it; remove them"};
inline constexpr Text folderTakesNoFile{"{}：文件夹 {} 中不能新建文件",
                                        "{}: the folder {} takes no new file"};
inline constexpr Text folderLocked{"另一个程序一直锁定此文件夹；请稍候再试",
                                   "another program keeps this folder locked; try again later"};

// Settings
inline constexpr Text settingsTooLarge{"太大，不是设置文件；请移走它",
                                       "too large for a settings file; move it away"};
inline constexpr Text settingNeedsNames{"设置须有节名和键名",
                                        "a setting needs a section and a key"};
inline constexpr Text settingNotHoldable{"设置文件中不能有 [{}] {}={}",
                                         "[{}] {}={} cannot stand in a settings file"};

}  // namespace k520::texts
