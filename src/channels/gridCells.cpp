// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/gridCells.h"

#include <algorithm>

#include "app/Checked.h"
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

std::string clearedText(int row, int col) {
    if (isFrequency(col) || cells().text(row, col).empty()) {
        return {};
    }
    if (isTone(col)) {
        return modCtdcs::state().CtdcsOffText;
    }
    const auto& definition = modChMem::columnOf(col);
    return definition.textOf(definition.defaultValue());
}

/// The frequency that opening a channel gave it counts as edited once it was typed.
bool awaitsFrequency(int row, int col) {
    return isFrequency(col) && modChMem::ChInfo()(row).opened;
}

/// Cuts a text at every `separator`; a text without any is one piece.
std::vector<std::string_view> pieces(std::string_view text, char separator) {
    std::vector<std::string_view> all;
    for (auto end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        all.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    all.push_back(text);
    return all;
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
    const Cell& cell = cells().cell(row, col);
    const auto isChoice = [&] { return std::ranges::count(cell.choices, text) != 0; };
    const bool nothingNew = text == cell.text && !awaitsFrequency(row, col);
    if (modChEdit::locked() || nothingNew || (cell.editMode == EditMode::list && !isChoice())) {
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

std::vector<std::vector<std::string>> blockOf(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::vector<std::vector<std::string>> block;
    for (std::string_view line : pieces(text, '\n')) {
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        auto& texts = block.emplace_back();
        for (const std::string_view cell : pieces(line, '\t')) {
            texts.emplace_back(trimBlanks(cell));
        }
    }
    return block;
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
