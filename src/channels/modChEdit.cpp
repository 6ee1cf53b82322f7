// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modChEdit.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/Checked.h"
#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "app/modSoftFace.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "channels/toneCode.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"

namespace k520::modChEdit {

namespace {

namespace column = modChMem::column;
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

/// A column whose cells hold one of a list of texts.
bool isListColumn(int col) {
    return col >= modChMem::firstParameter && columnOf(col).isList();
}

// Before an edit.

EditMode editModeOf(int col) {
    switch (col) {
        case column::rx:
        case column::tx:
            return EditMode::keyboard;
        case column::decode:
        case column::encode:
            return EditMode::none;
        default:
            return EditMode::list;
    }
}

bool refusesEdit(int row, int col) {
    grid().setEditing(row, col, editModeOf(col));
    const Channel& channel = channelAt(row);
    if (!channel.present()) {
        return col != column::rx;
    }
    if (col == column::encode && !channel.transmits()) {
        return true;
    }
    if (isListColumn(col)) {
        const auto texts = columnOf(col).texts();
        grid().setEditing(row, col, EditMode::list, {texts.begin(), texts.end()});
    }
    return false;
}

// After an edit.

std::int32_t limitToBand(std::int32_t value) {
    const auto& band = modModel::state();
    if (value < band.absoluteMin) {
        return band.bandLow;
    }
    return value > band.absoluteMax ? band.bandHigh : value;
}

void setDefaults(Channel& channel) {
    for (int k = modChMem::firstParameter; k <= modChMem::state().ColNum; ++k) {
        if (channel.field(k) == -1) {
            channel.field(k) = columnOf(k).defaultValue();
        }
    }
}

/// A receive frequency alone makes a whole channel.
void completeChannel(int row) {
    Channel& channel = channelAt(row);
    if (grid().text(row, column::tx).empty()) {
        channel.txFre() = channel.rxFre();
        setDefaults(channel);
    }
}

/// Without an encode tone of its own a channel takes its decode tone. What counts is what the grid
/// shows: a tone from a time without transmit frequency was never seen, and goes.
void completeEncodeTone(int row) {
    Channel& channel = channelAt(row);
    if (channel.encodeTone.empty()) {
        grid().setText(row, column::encode, grid().text(row, column::decode));
    }
    channel.encodeTone = grid().text(row, column::encode);
}

void storeFrequency(int row, int col, double mhz) {
    const auto snapped = ModifyTxRxFre(std::to_string(frequency::fromMhz(mhz)));
    if (snapped) {
        Channel& channel = channelAt(row);
        const std::int32_t value = limitToBand(*snapped);
        channel.field(col) = value;
        channel.outOfBand = !modModel::inBand(value);
        channel.opened = false;
        col == column::tx ? completeEncodeTone(row) : completeChannel(row);
    }
}

void emptyChannel(Channel& channel) {
    channel.decodeTone.clear();
    channel.encodeTone.clear();
    channel.opened = channel.outOfBand = false;
    for (int k = 1; k <= modChMem::state().ColNum; ++k) {
        channel.field(k) = -1;
    }
}

void storeCell(int row, int col) {
    Channel& channel = channelAt(row);
    const std::string text = grid().text(row, col);
    channel.modified() = 1;
    if (col != column::rx && col != column::tx) {
        const auto value = isListColumn(col) ? columnOf(col).valueOf(text) : std::nullopt;
        if (!value) {
            throw RuntimeError(errNum::invalidCall,
                               fmt::format("\"{}\" is no entry of column {}", text, col));
        }
        channel.field(col) = *value;
    } else if (const auto mhz = parseNumber(text)) {
        storeFrequency(row, col, *mhz);
    } else if (col == column::tx) {
        channel.txFre() = frequency::none;
        channel.encodeTone.clear();
    } else {
        emptyChannel(channel);
    }
}

std::string& toneOf(Channel& channel, int col) {
    if (col != column::decode && col != column::encode) {
        throw RuntimeError(errNum::invalidCall, fmt::format("column {} holds no tone", col));
    }
    return col == column::decode ? channel.decodeTone : channel.encodeTone;
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

// The pop-up menu's commands.

void switchOn(Channel& channel) {
    if (channel.present()) {
        return;
    }
    emptyChannel(channel);
    channel.modified() = 1;
    channel.rxFre() = channel.txFre() = modModel::state().bandLow;
    channel.decodeTone = channel.encodeTone = modCtdcs::state().CtdcsOffText;
    channel.opened = true;
    setDefaults(channel);
}

}  // namespace

bool locked() {
    return mdimoduMain::state().lockState == mdimoduMain::locked;
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
    guarded("frmChMem->vsfgGridCh_AfterEdit:", [&] { storeCell(row, col); });
    modChMem::showChannel(row);
    documentOrigin::edited();
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
    guarded("frmChMem->cboGridChCtdcs_LostFocus:", [&] {
        Channel& channel = channelAt(row);
        std::string& tone = toneOf(channel, col);
        tone = toneCode::normaliseTone(text).value_or(modCtdcs::state().CtdcsOffText);
        channel.modified() = 1;
        grid().setText(row, col, tone);
        documentOrigin::edited();
    });
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
            documentOrigin::edited();
        }
    });
}

std::vector<MenuItem> channelMenu(std::int16_t channel) {
    std::vector<MenuItem> items;
    guarded("frmChMem->vsfgGridCh_MouseDown:", [&] {
        const bool present = channelAt(channel).present();
        const bool unlocked = !locked();
        modChMem::state().currentChannel = channel;
        const auto numbered = [&](int index) {
            return fmt::format("{} {}", modSoftFace::text(index), channel);
        };
        items = {{numbered(114), unlocked && !present},
                 {numbered(110), unlocked && present},
                 {modSoftFace::text(112), unlocked},
                 {modSoftFace::text(113), unlocked && present}};
    });
    return items;
}

void openChannel(std::int16_t channel) {
    if (locked()) {
        return;
    }
    guarded("frmChMem->openChannel:", [&] { switchOn(channelAt(channel)); });
    modChMem::showChannel(channel);
    documentOrigin::edited();
}

void saveAsDefault(std::int16_t channel) {
    guarded("frmChMem->saveAsDefault:", [&] {
        if (!channelAt(channel).present()) {
            return;
        }
        modChMem::encodeChannel(channel);
        const int start = channelRecord::address(channel);
        for (int i = 0; i < channelRecord::size; ++i) {
            modIicDat::IicDatDef()(start + i) = modIicDat::IicDat()(start + i);
        }
    });
}

}  // namespace k520::modChEdit
