// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// What help says of k520-cli and its commands. Names of commands, options and values are the same
/// in both languages. Details are laid out by hand for 80 columns.
namespace k520::texts {

// The frame
inline constexpr Text programSummary{
    "K520 对讲机写频：读取、修改并写入对讲机和数据文件",
    "K520 radio programming: reads, edits and writes radios and data files"};
inline constexpr Text usageTitle{"用法：", "Usage: "};
inline constexpr Text argumentsTitle{"参数：", "Arguments:"};
inline constexpr Text optionsTitle{"选项：", "Options:"};
inline constexpr Text commandsTitle{"命令：", "Commands:"};
inline constexpr Text exampleTitle{"示例：", "Example: "};
inline constexpr Text explainsCommand{"用 k520-cli {}COMMAND --help 查看一个命令的说明。",
                                      "k520-cli {}COMMAND --help explains a command."};
inline constexpr Text exitCodes{
    "退出码：0 完成或没有差别，1 失败或发现差别，2 命令行有误。",
    "Exit codes: 0 done or no difference, 1 failed or a difference found, 2 wrong\n"
    "command line."};
inline constexpr Text helpOfHelp{"显示此帮助后结束", "Print this help and end"};
inline constexpr Text helpOfVersion{"显示版本后结束", "Print the version and end"};
inline constexpr Text helpOfFolder{
    "设置文件、默认数据和模拟对讲机的内存所在的文件夹",
    "Folder of the settings file, the default image and the simulated radio's memory"};

// Arguments of several commands
inline constexpr Text helpOfFile{"数据文件（.dat）", "A data file (.dat)"};
inline constexpr Text helpOfJson{"输出 JSON", "Print JSON"};
inline constexpr Text helpOfPort{
    "端口号 1 到 16、设备路径，或 virtual（程序内的模拟对讲机）",
    "A port number 1 to 16, a device path, or \"virtual\" for the simulated radio inside the "
    "program"};
inline constexpr Text helpOfTrace{
    "把收发的全部通信数据保存到 FILE（- 为标准输出）；没有数据时 FILE 保持不变",
    "Store all bytes sent and received in FILE (- for stdout); when there are none FILE stays as "
    "it is"};
inline constexpr Text helpOfOtherOutput{"保存到这里，FILE 保持不变",
                                        "Save here and leave FILE as it is"};
inline constexpr Text helpOfReadBack{"写完后回读并比较", "Read back after the write and compare"};
inline constexpr Text helpOfSection{"节名，例如 Setting", "A section, such as Setting"};
inline constexpr Text helpOfKey{"该节中的键名", "A key in that section"};

// new
inline constexpr Text newSummary{"用默认数据新建数据文件",
                                 "Makes a data file from the default image"};
inline constexpr Text newFile{"要新建的数据文件；已有的文件会被替换",
                              "The data file to make; an existing one is replaced"};

// show
inline constexpr Text showSummary{"显示数据文件的机型、频段、写频时间、信道和整机设置",
                                  "Shows model, band, time of the last write, channels and options "
                                  "of a data file"};
inline constexpr Text showWords{"每个信道用一句话说明；有 --json 时不起作用",
                                "Say each channel as a sentence; without effect with --json"};

// set
inline constexpr Text setSummary{"修改数据文件，规则与软件窗口中的输入相同",
                                 "Edits a data file, by the same rules as typing into the window"};
inline constexpr Text setEdits{"要修改的内容，按顺序执行", "What to change, in order"};
inline constexpr Text setDetails{
    "KEY 可以是：\n"
    "  chN.rx, chN.tx          频率，单位 MHz；空值表示清除（rx：删除信道；\n"
    "                          tx：不发射）。新信道的发射频率等于接收频率。\n"
    "                          tx 还可以是“=”（与接收频率相同）、“=+7.6”或“=-7.6”\n"
    "                          （比接收频率高或低 7.6 MHz）。\n"
    "  chN.decode, chN.encode  模拟亚音（CTCSS）或数字亚音（DCS）：88.5、D023N、\n"
    "                          D023I、023；空值表示关闭\n"
    "  chN.NAME, chN.pK        信道的一项参数，例如 Power（K 为列号，从 5 起）：\n"
    "                          选项文字或序号\n"
    "  band                    频段序号 0 到 10，或 LOW-HIGH（单位 MHz）；信道不变\n"
    "  option.NAME             整机设置：tot, squelch, volume, voice,\n"
    "                          broadcast_squelch, broadcast_volume, battery_save,\n"
    "                          beep, emergency_alarm, voice_chip, crystal, pre_tot,\n"
    "                          vox_level, vox_delay, vox_inhibit_rx, low_battery_tx：\n"
    "                          选项文字或序号\n"
    "频率会调整到 5 kHz 或 6.25 kHz 的步进。全部修改都能执行时才保存。",
    "Keys:\n"
    "  chN.rx, chN.tx          a frequency in MHz; empty clears it (rx: deletes the\n"
    "                          channel, tx: no transmission). A new channel transmits\n"
    "                          on its receive frequency. For tx also \"=\" (the receive\n"
    "                          frequency), \"=+7.6\" or \"=-7.6\" (so many MHz above or\n"
    "                          below)\n"
    "  chN.decode, chN.encode  a tone: 88.5, D023N, D023I, 023; empty for off\n"
    "  chN.NAME, chN.pK        a parameter of the channel, such as Power (K counts\n"
    "                          columns from 5): its text or index\n"
    "  band                    an entry 0 to 10, or LOW-HIGH in MHz; channels stay\n"
    "  option.NAME             tot, squelch, volume, voice, broadcast_squelch,\n"
    "                          broadcast_volume, battery_save, beep, emergency_alarm,\n"
    "                          voice_chip, crystal, pre_tot, vox_level, vox_delay,\n"
    "                          vox_inhibit_rx, low_battery_tx: its text or index\n"
    "Frequencies go to the nearest step of 5 or 6.25 kHz.\n"
    "All edits are made, or none."};

// export, import
inline constexpr Text exportSummary{"把数据文件中的信道导出为 CSV",
                                    "Exports the channels of a data file as CSV"};
inline constexpr Text exportOutput{"保存到这里，而不是标准输出", "Write here instead of stdout"};
inline constexpr Text importSummary{"从 CSV 文件导入信道，规则与手工输入相同",
                                    "Imports channels from a CSV file, by the same rules as typing "
                                    "them"};
inline constexpr Text importCsv{"信道表，格式与 export 的输出相同",
                                "Channels, as export writes them"};
inline constexpr Text importDetails{
    "CSV 文件用 UTF-8 编码，各值之间用逗号分隔。第一行是列名，与 export 的输出相同；\n"
    "必须有 channel 列，没有的列和信道保持不变。rx 为空则删除该信道。\n"
    "全部行都能导入时才保存。",
    "The CSV file is UTF-8 text with commas between the values. The first line names\n"
    "the columns as export does. The column channel is needed; a missing column or\n"
    "channel stays as it is. An empty rx deletes the channel. All lines are taken, or\n"
    "none."};

// diff, hex
inline constexpr Text diffSummary{"列出两个数据文件的差别",
                                  "Says what differs between two data files"};
inline constexpr Text diffFirst{"一个数据文件", "A data file"};
inline constexpr Text diffSecond{"另一个数据文件", "Another one"};
inline constexpr Text diffDetails{
    "比较信道、整机设置、频段和其余的字节。写频时间会显示，但不算差别。\n"
    "退出码：0 没有差别，1 有差别。",
    "Compares channels, options, band and the remaining bytes. The time of the last\n"
    "write is shown and does not count.\n"
    "Exit code 0: no difference, 1: a difference."};
inline constexpr Text hexSummary{"以十六进制表格显示数据文件的内存数据",
                                 "Prints the bytes of a data file as a hexadecimal table"};
inline constexpr Text hexFrom{"起始地址，十六进制（默认 0）",
                              "First address, hexadecimal (default 0)"};
inline constexpr Text hexTo{"结束地址，十六进制（默认到末尾）",
                            "Last address, hexadecimal (default the end)"};
inline constexpr Text hexDetails{"地址是对讲机内存的地址。",
                                 "Addresses are those of the radio's memory."};

// config, ports
inline constexpr Text configSummary{"读取或修改设置", "Reads or changes the settings"};
inline constexpr Text configGetSummary{"显示设置文件中的一项设置",
                                       "Prints one value of the settings file"};
inline constexpr Text configDefault{"没有该键时显示 TEXT", "Print this where the key is missing"};
inline constexpr Text configSetSummary{
    "修改设置文件中的一项设置，其他行保持不变",
    "Writes one value of the settings file; every other line stays"};
inline constexpr Text configValue{"新的值", "The new value"};
inline constexpr Text portsSummary{"列出十六个端口：设备、说明、能否使用及原因",
                                   "Lists the sixteen ports: device, description, usable or why "
                                   "not"};
inline constexpr Text portsDetails{"每个端口号对应的设备由设置文件的 Ports 一节决定。",
                                   "Section Ports of the settings file says which device a number "
                                   "stands for."};

// read
inline constexpr Text readSummary{"读取对讲机并保存为数据文件", "Reads a radio into a data file"};
inline constexpr Text readOutput{"要保存的数据文件", "The data file to save"};
inline constexpr Text readTwice{"读两遍，两次数据一致才保存",
                                "Read twice, and save only when both agree"};
inline constexpr Text readKeepCopy{
    "同时在 Data/Backups 中保留一份副本，以日期和时间命名",
    "Also keep what was read in Data/Backups, named by date and time"};
inline constexpr Text readDetails{
    "请先打开对讲机，插好写频线，并关闭占用端口的其他程序。按 Ctrl-C 结束通信。",
    "First switch the radio on, plug the cable in, and close other programs that use\n"
    "the port. Ctrl-C ends the session."};

// write
inline constexpr Text writeSummary{"把数据文件写入对讲机", "Writes a data file to a radio"};
inline constexpr Text writeBackup{"先读取对讲机，备份到此数据文件",
                                  "First read the radio into this data file"};
inline constexpr Text writeKeepCopy{
    "先读取对讲机，备份到 Data/Backups，以日期和时间命名",
    "First read the radio into Data/Backups, named by date and time"};
inline constexpr Text writeDetails{
    "FILE 保持不变；写入对讲机的数据还包含写入的日期和时间。\n"
    "写入失败时会说明对讲机的状态；用 restore 可以写回备份。\n"
    "OUT 原有的内容保留在旁边，名为 OUT.~1~ 等。",
    "FILE stays as it is; the radio gets the date and time of the write as well.\n"
    "A write that fails says what state the radio is in; restore writes the backup\n"
    "back. What OUT held before is kept beside it, as OUT.~1~ and so on."};

// restore
inline constexpr Text restoreSummary{"把备份逐字节写回对讲机",
                                     "Writes a backup back to a radio, byte for byte"};
inline constexpr Text restoreFrom{
    "要写回的备份或数据文件（默认：按对讲机中的数据找到它需要的备份，见下）",
    "This backup, or any data file (default: the backup that the radio needs, found by what it "
    "holds; see below)"};
inline constexpr Text restoreList{"只列出中断的写入之前的备份",
                                  "Only list the backups from before writes that broke off"};
inline constexpr Text restoreForget{
    "不再为此备份提示恢复：对讲机已不需要它；备份本身保留",
    "No radio needs this backup any more: stop asking for its restore. The backup stays"};
inline constexpr Text restoreDetails{
    "Data/Backups 中的备份按从对讲机读到的范围写回；其他数据文件写到写入范围，\n"
    "但不含地址 0400 到 040F，因为数据文件不保存这些字节。不改变写频时间。\n"
    "没有 --from 时先读取对讲机，再与所有带 --keep-copy 的写入（包括没有完成的）\n"
    "的记录比较，写回相符的那次写入之前的备份。没有相符的记录，或有几个备份都可能\n"
    "属于它时，不写入任何数据，并列出备份。\n"
    "使用 --list 或 --forget 时不需要端口，其他情况须给出端口。",
    "A backup in Data/Backups is written as far as it came from a radio. Any other\n"
    "data file is written over the write range, without the bytes 0400 to 040F, which\n"
    "it does not hold. The time of the last write is not changed.\n"
    "Without --from the radio is read first and compared with the notes of all writes\n"
    "with --keep-copy, those that did not finish included. The backup from before the\n"
    "write that fits is put back. When none fits, or several backups are possible,\n"
    "nothing is written, and the backups are listed.\n"
    "A port is needed, except for --list and --forget."};

// verify
inline constexpr Text verifySummary{"读取对讲机并与数据文件比较",
                                    "Reads a radio and compares it with a data file"};
inline constexpr Text verifyDetails{"不比较写频时间。退出码：0 没有差别，1 有差别。",
                                    "The time of the last write is not compared.\n"
                                    "Exit code 0: no difference, 1: a difference."};

// simulate
inline constexpr Text simulateSummary{"在伪终端上模拟一台对讲机",
                                      "Simulates a radio on a pseudo-terminal"};
inline constexpr Text simulateImage{"从此数据文件开始，而不是默认数据",
                                    "Start from this data file instead of the default image"};
inline constexpr Text simulateLink{"建立指向该设备的符号链接",
                                   "Make a symbolic link to the device"};
inline constexpr Text simulateSave{
    "每次写入完成后以及结束时，把内存保存为数据文件",
    "Store the memory as a data file after each completed write and at the end"};
inline constexpr Text simulateBaud{"线路速率，决定字节时间（默认 9600）",
                                   "Line speed for the byte times (default 9600)"};
inline constexpr Text simulateLose{"故障：丢失第 N 个应答字节", "Fault: lose reply byte N"};
inline constexpr Text simulateCorrupt{"故障：改变第 N 个应答字节",
                                      "Fault: flip bits of reply byte N"};
inline constexpr Text simulateAdd{"故障：第 N 个应答字节发两次", "Fault: send reply byte N twice"};
inline constexpr Text simulateDelay{
    "故障：第 N 个应答字节晚发 MS 毫秒（默认 100）",
    "Fault: send reply byte N late, by MS milliseconds (default 100)"};
inline constexpr Text simulateLoseRequest{"故障：丢失第 N 个请求字节",
                                          "Fault: lose request byte N"};
inline constexpr Text simulateCorruptRequest{"故障：改变第 N 个请求字节",
                                             "Fault: flip bits of request byte N"};
inline constexpr Text simulateForget{
    "故障：应答写入的第 N 个数据块，但不保存",
    "Fault: acknowledge the Nth written block and do not store it"};
inline constexpr Text simulateBabble{
    "故障：从第 N 次收发起在线路上发出杂乱数据（1：立即）",
    "Fault: fill the line with noise from exchange N on (1: at once)"};
inline constexpr Text simulateSilent{"故障：从第 N 次收发起不再应答",
                                     "Fault: answer nothing from exchange N on"};
inline constexpr Text simulateFailFirst{"故障：前 K 次尝试都不应答",
                                        "Fault: answer nothing in the first K attempts"};
inline constexpr Text simulateUnplug{
    "故障：第 N 次收发后断开，如同拔掉写频线",
    "Fault: go away after exchange N, as if the cable were pulled"};
inline constexpr Text simulateDetails{
    "标准输出的第一行是“port: DEVICE”：把该设备交给 read 和 write 使用。\n"
    "按 Ctrl-C 结束。字节、数据块和收发次数都从 1 开始计数。",
    "The first line of stdout is \"port: DEVICE\": give that device to read and write.\n"
    "Ends on Ctrl-C. Bytes, blocks and exchanges count from 1."};

}  // namespace k520::texts
