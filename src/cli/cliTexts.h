// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// What the commands of k520-cli say, but for help (helpTexts.h). A failure is one line after
/// "k520-cli: ", so it begins with a small letter and has no full stop.
namespace k520::texts {

inline constexpr Text warning{"警告：", "warning: "};

// A wrong command line; {1} is a command, for its help
inline constexpr Text seeHelp{"{}；用法见 {} --help", "{}; see {} --help"};
inline constexpr Text commandMissing{"缺少命令", "a command is missing"};
inline constexpr Text noCommand{"没有命令 {}", "there is no command {}"};
inline constexpr Text wordNotExpected{"此处不能有 {}", "{} is not expected here"};
inline constexpr Text valueMissing{"{} 后面缺少值", "{} needs a value"};
inline constexpr Text givenTwice{"{} 只能给出一次", "{} is given more than once"};
inline constexpr Text argumentMissing{"缺少 {}", "{} is missing"};
inline constexpr Text takesNoValue{"{} 不带值", "{} takes no value"};
inline constexpr Text notUnderstood{"无法理解命令行（{}）",
                                    "the command line cannot be understood ({})"};
inline constexpr Text folderEmpty{"--program-folder 的值为空；请给出一个文件夹",
                                  "--program-folder is empty; give a folder"};
inline constexpr Text bracketsNotEdit{
    "“{}”不是 KEY=VALUE；请把每项修改写成单独的一个词",
    "\"{}\" is not KEY=VALUE; give each edit as a word of its own"};

// Settings that cannot work
inline constexpr Text settingsFileSays{"设置文件 {}：{}", "the settings file {}: {}"};
inline constexpr Text settingOutOfRange{
    "[{0}] {1} = {2}，但{3}须为 {4} 到 {5}；修正命令：{6}",
    "[{0}] {1} = {2}, but {3} has to be {4} to {5}; fix it with: {6}"};
inline constexpr Text defaultNotEntry{
    "[ChInfo] {0} = {1} 不是列 {2} 的选项；修正命令：{3}",
    "[ChInfo] {0} = {1} is not an entry of the column {2}; fix it with: {3}"};
inline constexpr Text noSettings{"没有设置文件 {}，也没有随软件安装的设置文件；请重新安装软件",
                                 "there is no settings file {}, and none is installed; install the "
                                 "program again"};
inline constexpr Text foreignSettings{
    "其中没有 [Setting] DatNum，因此不是本软件的设置文件；请移走它，"
    "软件会使用随软件安装的设置文件",
    "it has no [Setting] DatNum, so it is not one of this program; move it away, and the shipped "
    "one is used"};
inline constexpr Text settingsUnreadable{"无法读取设置：{}", "the settings cannot be read: {}"};
inline constexpr Text highestAddress{"内存数据的最高地址", "the image's highest address"};
inline constexpr Text channelCount{"信道数", "the number of channels"};
inline constexpr Text columnCount{"列数", "the number of columns"};
inline constexpr Text shortDefault{"默认数据 {0} 只有 {1} 字节（应为 {2} 字节），其余为 0",
                                   "the default image {0} holds {1} of {2} bytes; the rest is 0"};
inline constexpr Text defaultUnusable{"无法使用默认数据", "the default image cannot be used"};

// Data files
inline constexpr Text dataFileEmpty{"{}：文件是空的", "{}: the file is empty"};
inline constexpr Text shortFileWarned{
    "{}：文件只有 {} 字节（应为 {} 字节）；其余取自默认数据",
    "{}: the file holds {} of {} bytes; the rest comes from the default image"};
inline constexpr Text shortFileRefused{
    "{}：文件只有 {} 字节（应为 {} 字节）；太短，不能修改或写入",
    "{}: the file holds {} of {} bytes; it is too short to be changed or sent"};
inline constexpr Text previousStays{"；保留打开文件之前的值",
                                    "; the value from before the file is kept"};
inline constexpr Text cannotEncode{"没有保存：信道和整机设置无法转换为内存数据",
                                   "nothing saved: the channels and options cannot be encoded"};
inline constexpr Text savingFailed{"保存失败", "saving failed"};
inline constexpr Text sameFile{"{} 和 {} 是同一个文件；请给出不同的文件",
                               "{} and {} are the same file; name two different ones"};

// set, export and import
inline constexpr Text seeSetHelp{"；请参阅 k520-cli set --help", "; see k520-cli set --help"};
inline constexpr Text csvTooLarge{"{}：文件太大，不是信道列表",
                                  "{}: too large for a list of channels"};
inline constexpr Text fileWithReason{"{}：{}", "{}: {}"};

// show
inline constexpr Text modelTitle{"机型", "Model type"};
inline constexpr Text bandTitle{"频段", "Frequency [MHz]"};
inline constexpr Text stampTitle{"写频时间", "Last written"};
inline constexpr Text noStamp{"没有", "none"};
inline constexpr Text optionalFeatures{"整机设置", "Optional features"};
inline constexpr Text keyTitle{"键名", "Key"};
inline constexpr Text outsideBand{"超出频段的信道：", "Outside the band: "};

// diff and other comparisons
inline constexpr Text whatTitle{"项目", "What"};
inline constexpr Text diffModel{"机型", "model"};
inline constexpr Text diffBand{"频段", "band"};
inline constexpr Text diffChannel{"信道", "channel"};
inline constexpr Text diffOption{"整机设置", "option"};
inline constexpr Text diffByte{"字节", "byte"};
inline constexpr Text diffStamp{"写频时间", "stamp"};
inline constexpr Text doesNotCount{"（不算差别）", "(does not count)"};
inline constexpr Text oneDifference{"1 处差别", "1 difference"};
inline constexpr Text someDifferences{"{} 处差别", "{} differences"};
inline constexpr Text differencesBetween{"{1} 和 {2} 有 {0}", "{0} between {1} and {2}"};

// hex
inline constexpr Text notAnAddress{"--{} {} 不是地址；请给出十六进制数字，0 到 7FFF",
                                   "--{} {} is not an address; give hexadecimal digits, 0 to 7FFF"};
inline constexpr Text addressesOutside{
    "地址 {:04X} 到 {:04X} 不在 0000 到 {:04X} 之内",
    "the addresses {:04X} to {:04X} are not within 0000 to {:04X}"};

// ports
inline constexpr Text numberTitle{"序号", "No."};
inline constexpr Text portTitle{"端口", "Port"};
inline constexpr Text deviceTitle{"设备", "Device"};
inline constexpr Text descriptionTitle{"说明", "Description"};
inline constexpr Text stateTitle{"状态", "State"};
inline constexpr Text portUsable{"可用", "usable"};

// The progress line, by stage
inline constexpr Text readingNow{"正在读取", "Reading"};
inline constexpr Text backingUpNow{"正在备份", "Backing up"};
inline constexpr Text writingNow{"正在写入", "Writing"};
inline constexpr Text restoringNow{"正在恢复", "Restoring"};
inline constexpr Text comparingNow{"正在比较", "Comparing"};

}  // namespace k520::texts
