// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/frmChGridRules.h"

#include <fmt/format.h>

#include <QStringList>
#include <algorithm>

#include "app/Checked.h"
#include "app/mdimoduMain.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "desktop/qtText.h"

namespace k520::chGridRules {

namespace {

namespace column = modChMem::column;

constexpr const char* widestFrequency = "000.00000";
constexpr const char* widestTone = "D000N";

CellGrid& cells() {
    return modChMem::state().vsfgGridCh;
}

bool isTone(int col) {
    return col == column::decode || col == column::encode;
}

std::string clearedText(int row, int col) {
    if (col == column::rx || col == column::tx || cells().text(row, col).empty()) {
        return {};
    }
    if (isTone(col)) {
        return modCtdcs::state().CtdcsOffText;
    }
    const auto& definition = modChMem::columnOf(col);
    return definition.textOf(definition.defaultValue());
}

}  // namespace

bool locked() {
    return mdimoduMain::state().lockState == mdimoduMain::locked;
}

bool refuses(int row, int col) {
    if (locked() || modChEdit::vsfgGridCh_BeforeEdit(toInt16(row), toInt16(col))) {
        return true;
    }
    const Cell& cell = cells().cell(row, col);
    return cell.editMode == EditMode::list ? cell.choices.empty()
                                           : cell.editMode == EditMode::none && !isTone(col);
}

bool store(int row, int col, const std::string& text) {
    const Cell& cell = cells().cell(row, col);
    const auto isChoice = [&] { return std::ranges::count(cell.choices, text) != 0; };
    if (locked() || text == cell.text || (cell.editMode == EditMode::list && !isChoice())) {
        return false;
    }
    if (isTone(col)) {
        modChEdit::cboGridChCtdcs_LostFocus(toInt16(row), toInt16(col), text);
    } else {
        cells().setText(row, col, text);
        modChEdit::vsfgGridCh_AfterEdit(toInt16(row), toInt16(col));
    }
    return true;
}

void put(int row, int col, const std::string& text) {
    if (!refuses(row, col)) {
        store(row, col, text);
    }
}

void clear(int row, int col) {
    if (!refuses(row, col)) {
        store(row, col, clearedText(row, col));
    }
}

std::vector<std::vector<std::string>> blockOf(const QString& text) {
    QString lines = QString(text).remove(u'\r');
    if (lines.endsWith(u'\n')) {
        lines.chop(1);
    }
    std::vector<std::vector<std::string>> block;
    for (const QString& line : lines.split(u'\n')) {
        auto& cellTexts = block.emplace_back();
        for (const QString& cell : line.split(u'\t')) {
            cellTexts.push_back(stdText(cell.trimmed()));
        }
    }
    return block;
}

QString tipOf(int row, int col) {
    const modChMem::Channel& channel = modChMem::ChInfo()(row);
    if (channel.present() && channel.opened) {
        return ownQText(OwnText::openedTip);
    }
    if ((col != column::rx && col != column::tx) || !channel.present() ||
        channel.field(col) == frequency::none || modModel::inBand(channel.field(col))) {
        return {};
    }
    const auto& band = modModel::state();
    return qText(fmt::format(fmt::runtime(ownText(OwnText::outOfBandTip)),
                             frequency::mhzText(band.bandLow), frequency::mhzText(band.bandHigh)));
}

std::vector<std::string> possibleTexts(int col) {
    if (col == column::rx || col == column::tx) {
        return {widestFrequency};
    }
    if (isTone(col)) {
        return {widestTone, modCtdcs::state().CtdcsOffText};
    }
    const auto texts = modChMem::columnOf(col).texts();
    return {texts.begin(), texts.end()};
}

}  // namespace k520::chGridRules
