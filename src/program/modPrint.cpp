// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/modPrint.h"

#include <fmt/format.h>

#include <iterator>
#include <string_view>
#include <vector>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/generalDate.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "link/session/radioInfo.h"
#include "program/modFileCmd.h"
#include "program/printTexts.h"
#include "settings/optionPanel.h"
#include "settings/optionTable.h"

namespace k520::modPrint {

namespace {

std::string escaped(std::string_view text) {
    std::string html;
    for (const char letter : text) {
        switch (letter) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            default:
                html += letter;
        }
    }
    return html;
}

/// One line between the cells.
constexpr std::string_view ruledTable =
    R"(<table width="100%" border="1" cellspacing="0" cellpadding="3" )"
    R"(style="border-collapse:collapse; border-style:solid; border-color:#808080">)";
/// More channels than this fill a page: the options then begin the next one.
constexpr int channelsBesideOptions = 24;

using optionTable::Group;
using optionTable::Option;

const std::string& cellText(int row, int column) {
    return modChMem::state().vsfgGridCh.text(row, column);
}

constexpr std::string_view headingGround = "#e8e8e8";

std::string titleRow() {
    std::string html = "<tr>";
    for (int column = 0; column < modChMem::state().vsfgGridCh.columns(); ++column) {
        html +=
            fmt::format(R"(<th bgcolor="{}">{}</th>)", headingGround, escaped(cellText(0, column)));
    }
    return html + "</tr>";
}

std::string channelRow(int number) {
    std::string html = "<tr>";
    for (int column = 0; column < modChMem::state().vsfgGridCh.columns(); ++column) {
        html += fmt::format(R"(<td align="center">{}</td>)", escaped(cellText(number, column)));
    }
    return html + "</tr>";
}

std::vector<int> printedChannels() {
    std::vector<int> channels;
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        if (modChMem::ChInfo()(n).present()) {
            channels.push_back(n);
        }
    }
    return channels;
}

/// The titles are repeated on every page.
std::string channelTable(const std::vector<int>& channels) {
    std::string html = fmt::format("{}<thead>{}</thead>", ruledTable, titleRow());
    for (const int n : channels) {
        html += channelRow(n);
    }
    return html + "</table>";
}

std::string shownValue(const optionPanel::OptionControl& control) {
    if (control.items.empty()) {
        return modSoftFace::text(control.checked ? SoftText::on : SoftText::off);
    }
    return control.selected < 0 ? std::string()
                                : checkedAt(control.items, control.selected, "option entry");
}

std::string groupRows(Group group) {
    std::string html = fmt::format(R"(<tr><td colspan="2" bgcolor="{}"><b>{}</b></td></tr>)",
                                   headingGround, escaped(optionTable::groupText(group)));
    for (const Option* option : optionTable::optionsOf(group)) {
        const auto& control =
            checkedAt(optionPanel::state().controls, option->number, "option control");
        html += fmt::format("<tr><td>{}</td><td>{}</td></tr>", escaped(control.caption),
                            escaped(shownValue(control)));
    }
    return html;
}

/// Two tables of groups beside each other, as in the window of the options.
std::string optionTables() {
    constexpr int inFirst = optionTable::groupCount / 2;
    std::string html = R"(<table width="100%" cellspacing="0" cellpadding="0"><tr>)";
    for (const int first : {0, inFirst}) {
        html += fmt::format(R"(<td width="50%" style="padding-right:8px">{})", ruledTable);
        for (int group = first; group < first + inFirst; ++group) {
            html += groupRows(static_cast<Group>(group));
        }
        html += "</table></td>";
    }
    return html + "</tr></table>";
}

/// What the printed data is: its file, or where it came from while it is in none.
std::string sourceText() {
    const std::string origin = modFileCmd::shownOrigin();
    return origin.empty() ? modFileCmd::state().currentFilePath : origin;
}

std::string headRow(const Text& caption, const std::string& value) {
    return fmt::format(R"(<tr><td style="padding-right:16px">{}</td><td>{}</td></tr>)",
                       escaped(say(caption)), escaped(value));
}

std::string head() {
    const auto& band = modModel::state();
    return "<table>" + headRow(texts::printedFile, sourceText()) +
           headRow(texts::printedBand, fmt::format("{} - {} MHz", frequency::mhzText(band.bandLow),
                                                   frequency::mhzText(band.bandHigh))) +
           headRow(texts::printedStamp, radioInfo::lastWriteText()) +
           headRow(texts::printedOn, generalDate::text(theClock().dateTime())) + "</table>";
}

std::string heading(SoftText text, bool newPage) {
    return fmt::format("<h3{}>{}</h3>", newPage ? R"( style="page-break-before:always")" : "",
                       escaped(modSoftFace::text(text)));
}

}  // namespace

std::string documentHtml() {
    const auto channels = printedChannels();
    const bool full = std::ssize(channels) > channelsBesideOptions;
    return fmt::format(R"(<body style="font-size:9pt"><h2>{}</h2>{}{}{}{}{}</body>)",
                       escaped(modSoftFace::text(SoftText::model)), head(),
                       heading(SoftText::channels, false), channelTable(channels),
                       heading(SoftText::options, full), optionTables());
}

void Print() {
    if (!guarded("mdifrmMain->Print", [] { theDialogs().print(documentHtml()); })) {
        theDialogs().tell(BoxIcon::critical, modSoftFace::text(SoftText::notice),
                          modSoftFace::text(SoftText::printFailed));
    }
}

}  // namespace k520::modPrint
