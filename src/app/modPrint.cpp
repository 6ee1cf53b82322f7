// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modPrint.h"

#include <fmt/format.h>

#include <string_view>

#include "app/Checked.h"
#include "app/Dialogs.h"
#include "app/Guard.h"
#include "app/modFileCmd.h"
#include "app/modSoftFace.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "settings/optionPanel.h"

namespace k520::modPrint {

namespace {

constexpr int offText = 220;
constexpr int onText = 221;
constexpr int printErrorText = 106;

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

std::string gridRow(int row, std::string_view tag) {
    const CellGrid& grid = modChMem::state().vsfgGridCh;
    std::string html = "<tr>";
    for (int column = 0; column < grid.columns(); ++column) {
        html += fmt::format("<{0}>{1}</{0}>", tag, escaped(grid.text(row, column)));
    }
    return html + "</tr>";
}

std::string channelTable() {
    std::string html = gridRow(0, "th");
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        if (modChMem::ChInfo()(n).present()) {
            html += gridRow(n, "td");
        }
    }
    return html;
}

std::string shownValue(const optionPanel::OptionControl& control) {
    if (control.items.empty()) {
        return modSoftFace::text(control.checked ? onText : offText);
    }
    return control.selected < 0 ? std::string()
                                : checkedAt(control.items, control.selected, "option entry");
}

/// What the printed data is: its file, or where it came from while it is in none.
std::string sourceText() {
    const std::string origin = modFileCmd::shownOrigin();
    return origin.empty() ? modFileCmd::state().currentFilePath : origin;
}

std::string optionRows() {
    std::string html;
    for (const auto& control : optionPanel::state().controls) {
        html += fmt::format("<tr><td>{}</td><td>{}</td></tr>", escaped(control.caption),
                            escaped(shownValue(control)));
    }
    return html;
}

}  // namespace

std::string documentHtml() {
    constexpr auto* tableStart =
        R"(<table border="1" cellspacing="0" cellpadding="3" style="font-size:8pt">)";
    const auto& band = modModel::state();
    return fmt::format(
        "<h2>{}</h2><p>{}<br>{} - {} MHz</p><h3>{}</h3>{}{}</table><h3>{}</h3>{}{}</table>",
        escaped(modSoftFace::text(modSoftFace::modelText)), escaped(sourceText()),
        frequency::mhzText(band.bandLow), frequency::mhzText(band.bandHigh),
        escaped(modSoftFace::text(modSoftFace::channelsText)), tableStart, channelTable(),
        escaped(modSoftFace::text(modSoftFace::optionsText)), tableStart, optionRows());
}

void Print() {
    if (!guarded("mdifrmMain->Print", [] { theDialogs().print(documentHtml()); })) {
        theDialogs().tell(BoxIcon::critical, modSoftFace::text(modSoftFace::noticeText),
                          modSoftFace::text(printErrorText));
    }
}

}  // namespace k520::modPrint
