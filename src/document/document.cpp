// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/document.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "document/decoded.h"
#include "image/modIicDat.h"
#include "settings/optionPanel.h"

namespace k520::document {

namespace {

BandValue bandNow() {
    const auto& s = modModel::state();
    return {s.bandLow,           s.bandHigh,  s.absoluteMin, s.absoluteMax, s.cboFrequency.selected,
            s.cboModel.selected, s.customMin, s.customMax};
}

void setBand(const BandValue& value) {
    auto& s = modModel::state();
    s.bandLow = value.low;
    s.bandHigh = value.high;
    s.absoluteMin = value.absoluteMin;
    s.absoluteMax = value.absoluteMax;
    s.cboFrequency.selected = value.band;
    s.cboModel.selected = value.model;
    s.customMin = value.customMin;
    s.customMax = value.customMax;
}

Shown shownNow() {
    const auto& grid = modChMem::state().vsfgGridCh;
    Shown shown;
    shown.columns = grid.columns();
    shown.cells.reserve(static_cast<std::size_t>(std::max(0, (grid.rows() - 1) * grid.columns())));
    for (int row = 1; row < grid.rows(); ++row) {
        for (int column = 0; column < grid.columns(); ++column) {
            const auto& cell = grid.cell(row, column);
            shown.cells.push_back({cell.text, cell.background});
        }
    }
    const auto& controls = optionPanel::state().controls;
    std::ranges::transform(controls, shown.options.begin(), [](const auto& control) {
        return Shown::OptionChoice{control.selected, control.checked};
    });
    return shown;
}

void showCell(CellGrid& grid, int row, int column, const Shown::GridCell& then) {
    const auto& now = grid.cell(row, column);
    if (now.text != then.text) {
        grid.setText(row, column, then.text);
    }
    if (now.background != then.background) {
        grid.setBackground(row, column, then.background);
    }
}

void showGrid(const Shown& shown) {
    auto& grid = modChMem::state().vsfgGridCh;
    int place = shown.columns;
    for (const auto& cell : shown.cells) {
        showCell(grid, place / shown.columns, place % shown.columns, cell);
        ++place;
    }
}

/// Whether any control changed.
bool setPanel(const Shown& shown) {
    bool changed = false;
    for (std::size_t i = 0; i < shown.options.size(); ++i) {
        auto& control = optionPanel::state().controls[i];
        const auto& then = shown.options[i];
        changed = changed || Shown::OptionChoice{control.selected, control.checked} != then;
        std::tie(control.selected, control.checked) = std::tie(then.selected, then.checked);
    }
    return changed;
}

}  // namespace

bool operator==(const Document& a, const Document& b) {
    const auto values = [](const Document& d) {
        return std::tie(d.image, d.defaultImage, d.channels, d.newChannel, d.options,
                        d.optionDefaults, d.band);
    };
    return values(a) == values(b);
}

Document capture() {
    const auto& table = modChMem::state();
    return {modIicDat::IicDat(), modIicDat::IicDatDef(), channelsInForce(), table.newChannel,
            modSysSet::OptNow(), modSysSet::OptDef(),    bandNow(),         shownNow()};
}

void restore(const Document& document) {
    const bool otherImage = modIicDat::IicDat() != document.image;
    modIicDat::IicDat() = document.image;
    modIicDat::IicDatDef() = document.defaultImage;
    int n = 0;
    for (const auto& channel : document.channels) {
        modChMem::state().ChInfo(++n) = channel;
    }
    modChMem::state().newChannel = document.newChannel;
    modSysSet::state().OptNow = document.options;
    modSysSet::state().OptDef = document.optionDefaults;
    const bool otherBand = bandNow() != document.band;
    setBand(document.band);
    showGrid(document.shown);
    if (setPanel(document.shown)) {
        optionPanel::state().onChange.tell();
    }
    if (otherBand || otherImage) {
        modChMem::state().onFormRefresh.tell();
    }
}

}  // namespace k520::document
