// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modChEdit.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/Guard.h"
#include "app/interfaceLock.h"
#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "base/ModuleState.h"
#include "channels/channelEdit.h"
#include "channels/channelTexts.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"

namespace k520::modChEdit {

namespace {

namespace column = modChMem::column;
using channelEdit::Kind;
using modChMem::Channel;
using modChMem::columnOf;

/// A cell that some rules leave out or treat in another way.
bool isExceptedCell(int row, int col) {
    return row == 100 && col == 10;
}

Channel& channelAt(int row) {
    return modChMem::state().ChInfo(row);
}

CellGrid& grid() {
    return modChMem::state().vsfgGridCh;
}

/// A column of parameters whose cells hold one of a list of texts.
bool isListColumn(int col) {
    return col >= modChMem::firstParameter && channelEdit::kindOf(col) == Kind::list;
}

/// What a menu calls the edit of a cell.
std::string stepOf(int row, int col) {
    const auto* const name = col == column::rx       ? &texts::stepReceive
                             : col == column::tx     ? &texts::stepTransmit
                             : col == column::decode ? &texts::stepDecode
                             : col == column::encode ? &texts::stepEncode
                                                     : nullptr;
    return say(texts::stepCell, name != nullptr ? say(*name) : grid().text(0, col), row);
}

// Before an edit.

EditMode editModeOf(int col) {
    switch (channelEdit::kindOf(col)) {
        case Kind::tone:
            return EditMode::none;
        case Kind::list:
            return EditMode::list;
        default:
            return EditMode::keyboard;
    }
}

bool refusesEdit(int row, int col) {
    grid().setEditing(row, col, editModeOf(col));
    if (channelEdit::refusalOf(channelAt(row), col)) {
        return true;
    }
    if (isListColumn(col)) {
        const auto texts = columnOf(col).texts();
        grid().setEditing(row, col, EditMode::list, {texts.begin(), texts.end()});
    }
    return false;
}

// After an edit.

void remark(std::string words) {
    state() = {std::move(words), documentOrigin::state().now};
}

void storeCell(int row, int col, std::string_view text) {
    Channel& channel = channelAt(row);
    channel.modified() = 1;
    try {
        remark(channelEdit::type(channel, col, text));
    } catch (const RuntimeError& error) {
        // The row shows what was there before: without a word a user would not know why.
        if (error.number() == errNum::invalidCall) {
            remark(error.source());
        }
        throw;
    }
}

void stepValue(int row, int col) {
    const auto& definition = columnOf(col);
    Channel& channel = channelAt(row);
    std::int32_t& value = channel.field(col);
    const auto count = static_cast<std::int32_t>(definition.texts().size());
    value = isExceptedCell(row, col) || value >= count - 1 ? 0 : value + 1;
    channel.modified() = 1;
    grid().setText(row, col, definition.textOf(value));
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::string shownRemark() {
    const auto& [text, said] = state();
    const auto& now = documentOrigin::state().now;
    return now.document == said.document && now.edit - said.edit <= 1 ? text : std::string();
}

bool locked() {
    return interfaceLock::state().lockState == interfaceLock::locked;
}

bool vsfgGridCh_BeforeEdit(std::int16_t row, std::int16_t col) {
    if (isExceptedCell(row, col) || locked() || row == 0 || col == 0) {
        return false;
    }
    bool refused = true;
    guarded("frmChMem->vsfgGridCh_BeforeEdit:", [&] { refused = refusesEdit(row, col); });
    return refused;
}

void vsfgGridCh_AfterEdit(std::int16_t row, std::int16_t col) {
    if (locked()) {
        return;
    }
    remark({});
    guarded("frmChMem->vsfgGridCh_AfterEdit:",
            [&] { storeCell(row, col, std::string(grid().text(row, col))); });
    modChMem::showChannel(row);
    documentOrigin::edited(stepOf(row, col));
}

void takeChannel(std::int16_t row, modChMem::Channel channel, std::string words) {
    if (locked()) {
        return;
    }
    guarded("frmChMem->vsfgGridCh_AfterEdit:", [&] {
        remark(std::move(words));
        channel.modified() = 1;
        channelAt(row) = std::move(channel);
    });
    modChMem::showChannel(row);
    documentOrigin::edited(say(texts::stepChannel, row));
}

std::optional<std::int32_t> ModifyTxRxFre(std::string_view text) {
    std::optional<std::int32_t> value;
    guarded("frmChMem->ModifyTxRxFre:",
            [&] { value = frequency::snapToRaster(textToInt32(text)); });
    return value;
}

void cboGridChCtdcs_LostFocus(std::int16_t row, std::int16_t col, std::string_view text) {
    if (locked()) {
        return;
    }
    remark({});
    guarded("frmChMem->cboGridChCtdcs_LostFocus:", [&] {
        if (channelEdit::kindOf(col) != Kind::tone) {
            throw RuntimeError(errNum::invalidCall, say(texts::noToneColumn, col));
        }
        storeCell(row, col, text);
    });
    modChMem::showChannel(row);
    documentOrigin::edited(stepOf(row, col));
}

void vsfgGridCh_DblClick(std::int16_t row, std::int16_t col) {
    if (locked() || row == 0) {
        return;
    }
    guarded("frmChMem->vsfgGridCh_DblClick:", [&] {
        const Channel& channel = channelAt(row);
        if (channel.present() && col != column::reserved && isListColumn(col) &&
            channel.field(col) != -1) {
            stepValue(row, col);
            documentOrigin::edited(stepOf(row, col));
        }
    });
}

std::vector<MenuItem> channelMenu(std::int16_t channel) {
    std::vector<MenuItem> items;
    guarded("frmChMem->vsfgGridCh_MouseDown:", [&] {
        const bool present = channelAt(channel).present();
        const bool unlocked = !locked();
        modChMem::state().currentChannel = channel;
        const auto numbered = [&](SoftText text) {
            return fmt::format("{} {}", modSoftFace::text(text), channel);
        };
        items = {{numbered(SoftText::openChannel), unlocked && !present},
                 {numbered(SoftText::deleteChannel), unlocked && present},
                 {modSoftFace::text(SoftText::deleteAllChannels), unlocked},
                 {modSoftFace::text(SoftText::saveAsDefault), unlocked && present}};
    });
    return items;
}

void openChannel(std::int16_t channel) {
    if (locked()) {
        return;
    }
    guarded("frmChMem->openChannel:", [&] {
        Channel& row = channelAt(channel);
        if (!row.present()) {
            row.modified() = 1;
            channelEdit::open(row);
        }
    });
    modChMem::showChannel(channel);
    documentOrigin::edited(say(texts::stepOpenChannel, channel));
}

void saveAsDefault(std::int16_t channel) {
    guarded("frmChMem->saveAsDefault:", [&] {
        if (!channelAt(channel).present()) {
            return;
        }
        modChMem::state().newChannel = channelAt(channel);
        modChMem::encodeChannel(channel);
        const int start = channelRecord::address(channel);
        for (int i = 0; i < channelRecord::size; ++i) {
            modIicDat::IicDatDef()(start + i) = modIicDat::IicDat()(start + i);
        }
        documentOrigin::edited(say(texts::stepSaveAsDefault, channel));
    });
}

}  // namespace k520::modChEdit
