// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/gridCells.h"

#include <algorithm>

#include "base/Checked.h"
#include "channels/channelEdit.h"
#include "channels/channelTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"

namespace k520::gridCells {

namespace {

namespace column = modChMem::column;

constexpr const char* widestFrequency = "000.00000";
constexpr const char* widestTone = "D000N";

CellGrid& cells() {
    return modChMem::state().vsfgGridCh;
}

bool isFrequency(int col) {
    return col == column::rx || col == column::tx;
}

bool isTone(int col) {
    return col == column::decode || col == column::encode;
}

/// What the cell shows before an edit.
std::string shownText(int row, int col) {
    return modChMem::shownText(modChMem::ChInfo()(row), col);
}

std::string clearedText(int row, int col) {
    if (isFrequency(col) || shownText(row, col).empty()) {
        return {};
    }
    if (isTone(col)) {
        return modCtdcs::state().CtdcsOffText;
    }
    const auto& definition = modChMem::columnOf(col);
    return definition.textOf(definition.defaultValue());
}

}  // namespace

bool refuses(int row, int col) {
    if (modChEdit::locked() || modChEdit::vsfgGridCh_BeforeEdit(toInt16(row), toInt16(col))) {
        return true;
    }
    const Cell& cell = cells().cell(row, col);
    if (cell.editMode == EditMode::none && !isTone(col)) {
        // One that modChEdit leaves alone: every other cell was given a way.
        const auto texts = modChMem::columnOf(col).texts();
        cells().setEditing(row, col, EditMode::list, {texts.begin(), texts.end()});
    }
    return cell.editMode == EditMode::list && cell.choices.empty();
}

bool store(int row, int col, const std::string& text) {
    const bool nothingNew = text == shownText(row, col) && (text.empty() || !isFrequency(col));
    const bool noEntry = channelEdit::kindOf(col) == channelEdit::Kind::list &&
                         !modChMem::columnOf(col).meaningOf(text);
    if (modChEdit::locked() || nothingNew || noEntry) {
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

void clear(int row, int col) {
    if (!refuses(row, col)) {
        store(row, col, clearedText(row, col));
    }
}

bool empties(int row, int col) {
    return col == column::rx && modChMem::ChInfo()(row).present() && !refuses(row, col);
}

std::string tipOf(int row, int col) {
    const modChMem::Channel& channel = modChMem::ChInfo()(row);
    if (channel.present() && channel.opened) {
        return say(texts::openedTip);
    }
    if (!isFrequency(col) || !channel.present() || channel.field(col) == frequency::none ||
        modModel::inBand(channel.field(col))) {
        return {};
    }
    const auto& band = modModel::state();
    return say(texts::outOfBandTip, frequency::mhzText(band.bandLow),
               frequency::mhzText(band.bandHigh));
}

std::vector<std::string> possibleTexts(int col) {
    if (isFrequency(col)) {
        return {widestFrequency};
    }
    if (isTone(col)) {
        return {widestTone, modCtdcs::state().CtdcsOffText};
    }
    const auto texts = modChMem::columnOf(col).texts();
    return {texts.begin(), texts.end()};
}

}  // namespace k520::gridCells
