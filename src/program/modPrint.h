// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

/// The configuration on paper.
namespace k520::modPrint {

/// The channels and options as they are shown now, as a document: model, file, band, the time of
/// the last write and that of printing; a table of the channels that exist; the options in their
/// groups. HTML, UTF-8, in the language in force.
[[nodiscard]] std::string documentHtml();

/// The Print command: hands the document to the system's print dialog. A failure shows box 106.
/// Label "mdifrmMain->Print".
void Print();

}  // namespace k520::modPrint
