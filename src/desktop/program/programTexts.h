// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// What k520 says on a terminal or before it has a window, and why its helpers fail.
namespace k520::texts {

inline constexpr Text programDescription{"K520 对讲机写频软件。",
                                         "Programming software for the K520 two-way radio."};
inline constexpr Text folderOptionHelp{"设置文件、默认数据和数据文件所在的文件夹。",
                                       "Where settings, default image and data files are."};
inline constexpr Text fileArgumentHelp{"要打开的数据文件。", "A data file to open."};
inline constexpr Text noDisplay{"没有显示器；k520-cli 不用显示器也能完成同样的工作",
                                "there is no display; k520-cli does the same without one"};
inline constexpr Text oneFileOnly{"一次只能打开一个数据文件", "name one data file only"};
inline constexpr Text emptyFolderOption{"--program-folder 的值为空；请给出一个文件夹",
                                        "--program-folder is empty; give a folder"};

inline constexpr Text noSuchFile{"没有此文件", "there is no such file"};
inline constexpr Text noProgramOpens{"没有能打开它的程序；请安装浏览器",
                                     "no program opens it; install a web browser"};
inline constexpr Text printerFails{"打印机报告错误；请检查打印机",
                                   "the printer reports an error; check the printer"};

}  // namespace k520::texts
