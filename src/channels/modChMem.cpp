// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modChMem.h"

#include "app/Guard.h"
#include "base/ModuleState.h"
#include "channels/channelTexts.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "settings/modSysSet.h"

namespace k520::modChMem {

namespace {

void restoreRecord(int channel) {
    const int start = channelRecord::address(channel);
    for (int i = 0; i < channelRecord::size; ++i) {
        modIicDat::IicDat()(start + i) = modIicDat::IicDatDef()(start + i);
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

const ColumnDefinition& columnOf(int number) {
    return checkedAt(state().ChColDef, number - 1, "ChColDef");
}

void DelOneChannel(std::int16_t channel) {
    guarded("modChMem->DelOneChannel", [&] {
        Channel& row = state().ChInfo(channel);
        row.modified() = 1;
        row.rxFre() = row.txFre() = frequency::none;
        row.opened = row.outOfBand = false;
        restoreRecord(channel);
        row.decodeTone.clear();
        row.encodeTone.clear();
        row.texts.clear();
        // Nothing else has changed in the grid.
        showChannel(channel);
        for (int col = 1; col <= state().ColNum; ++col) {
            state().vsfgGridCh.setBackground(channel, col, defColour());
        }
    });
}

void InitChTable() {
    guarded("modChMem->InitChTable", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            static_cast<void>(state().ChInfo(n));
            DelOneChannel(static_cast<std::int16_t>(n));
        }
    });
}

void mnuDelOne_Click() {
    guarded("mdifrmMain->mnuDelOne_Click", [] {
        const std::int16_t channel = state().currentChannel;
        Channel& row = state().ChInfo(channel);
        DelOneChannel(channel);
        row.modified() = 1;
    });
    documentOrigin::edited(say(texts::stepDeleteChannel, state().currentChannel));
}

void mnuDelAll_Click() {
    guarded("mdifrmMain->mnuDelAll_Click", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            Channel& row = state().ChInfo(n);
            DelOneChannel(static_cast<std::int16_t>(n));
            row.modified() = 1;
        }
    });
    documentOrigin::edited(say(texts::stepDeleteAll));
}

void SoftDisplay() {
    guarded("modChMem->SoftDisplay", [] {
        modIicDat::SolveModelPara();
        ChInfoSaveSol(1);
        ShowChTblGrid();
        modSysSet::OptSelSaveSol(1);
        refreshForm();
    });
}

void refreshForm() {
    guarded("modChMem->refreshForm", [] {
        modModel::selectBandFromImage();
        state().onDecoded.tell();
        state().onFormRefresh.tell();
    });
}

void SetConvIicDat() {
    guarded("mdifrmMain->SetConvIicDat", [] {
        ChInfoSaveSol(0);
        modSysSet::OptSelSaveSol(0);
    });
}

void GetValidCharTbl() {
    guarded("modChMem->GetValidCharTbl", [] {
        static constexpr std::string_view characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-/ +_";
        auto& table = state().ValidCharTbl;
        for (std::size_t i = 0; i < table.size(); ++i) {
            table[i] = characters[i];
        }
    });
}

void initChannelForm() {
    modModel::ChInfoModel();
    modCtdcs::GenCtdcsList();
    ReadChInfo();
    SetChGrid();
    InitChTable();
}

}  // namespace k520::modChMem
