// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modModel.h"

#include <algorithm>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "channels/channelTexts.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"

namespace k520::modModel {

namespace {

void setLimits(bandCodec::Limits limits) {
    State& s = state();
    s.bandLow = limits.low;
    s.bandHigh = limits.high;
    s.absoluteMin = 120 * frequency::perMhz;
    s.absoluteMax = 550 * frequency::perMhz;
    modChMem::repaintFrequencies();
}

void writeBand() {
    bandCodec::encode(limits(), modIicDat::IicDat());
}

void applyBand(bool mayAsk) {
    guarded("frmChMem->cboFrequency_Click", [&] {
        const int index = state().cboFrequency.selected;
        const auto bands = bandCodec::bands();
        const auto& band = checkedAt(bands, index, "cboFrequency");
        if (index != bandCodec::customBand) {
            setLimits(band.limits);
        } else if (mayAsk) {
            theDialogs().customRange();
        }
        writeBand();
    });
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

bandCodec::Limits limits() {
    return {state().bandLow, state().bandHigh};
}

bool inBand(std::int32_t frequency) {
    return limits().contain(frequency);
}

void ChInfoModel() {
    guarded("frmChMem->ChInfoModel", [] {
        State& s = state();
        s.cboModel = {{modSoftFace::text(SoftText::model)}, 0};
        cboModel_Click();
        s.cboFrequency.items.clear();
        for (const auto& band : bandCodec::bands()) {
            s.cboFrequency.items.emplace_back(band.name);
        }
        s.cboFrequency.items[bandCodec::customBand] = modSoftFace::text(SoftText::customBand);
        selectBand(bandCodec::startBand);
    });
}

void cboModel_Click() {
    guarded("frmChMem->cboModel_Click", [] {
        int& selected = state().cboModel.selected;
        selected = std::max(selected, 0);
        modIicDat::IicDat()(bandCodec::modelAddress) = toByte(selected);
    });
}

void selectModel(int index) {
    state().cboModel.selected = index;
    cboModel_Click();
    documentOrigin::edited(say(texts::stepModel));
}

void cboFrequency_Click() {
    applyBand(true);
}

void applyShownBand() {
    applyBand(false);
}

void selectBand(int index) {
    state().cboFrequency.selected = index;
    cboFrequency_Click();
}

void chooseBand(int index) {
    State& s = state();
    const documentOrigin::Step step(say(texts::stepBand));
    const bandCodec::Selected before{s.cboFrequency.selected, limits()};
    selectBand(index);
    if (index == bandCodec::customBand && limits() == before.limits) {
        s.cboFrequency.selected = before.band;
        return;
    }
    documentOrigin::edited(say(texts::stepBand));
}

void selectBandFromImage() {
    const auto [selected, faults] = bandCodec::decode(modIicDat::IicDat());
    logFaults(faults);
    if (selected) {
        setLimits(selected->limits);
        // Not as a user's click: that would ask and write.
        state().cboFrequency.selected = selected->band;
    }
}

bool acceptCustomRange(std::string_view minText, std::string_view maxText) {
    bool accepted = false;
    guarded("frmCustomFre->cmdOk_Click", [&] {
        State& s = state();
        const auto custom = bandCodec::customLimits(minText, maxText);
        accepted = custom.has_value();
        s.customMin = accepted ? minText : "120";
        s.customMax = accepted ? maxText : "520";
        s.cboFrequency.selected = bandCodec::customBand;
        setLimits(custom.value_or(bandCodec::bands()[bandCodec::wholeBand].limits));
        writeBand();
    });
    return accepted;
}

}  // namespace k520::modModel
