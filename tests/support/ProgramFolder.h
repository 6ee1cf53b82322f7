// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <tuple>
#include <vector>

#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/session/radioInfo.h"
#include "link/simulator/virtualRadio.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"
#include "support/Raised.h"
#include "support/ScriptedDialogs.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::test {

/// The core as a new process has it, in English and with an empty program folder of its own.
class ProgramFolder : public testing::Test {
  protected:
    ProgramFolder() {
        forget();
        mdimoduMain::state().programFolder = folder.path();
        modSoftFace::FillSoftFace(mdimoduMain::state().Language);
    }
    ~ProgramFolder() override { forget(); }

    static void forget() {
        mdimoduMain::state() = {};
        modShowErr::state() = {};
        modIicDat::state() = {};
        modChMem::state() = {};
        modChEdit::state() = {};
        modCtdcs::state() = {};
        modModel::state() = {};
        modSysSet::state() = {};
        optionPanel::state() = {};
        modMemDat::state() = {};
        modCommun::state() = {};
        modSession::state() = {};
        radioInfo::state() = {};
        comPorts::state() = {};
        virtualRadio::state() = {};
        modFileCmd::state() = {};
        documentOrigin::state() = {};
    }
    /// Writes the settings file.
    void settings(const std::string& text) const {
        folder.write(mdimoduMain::settingsFileName, text);
    }
    /// The last failure logged: label and number; empty when there is none.
    static std::string failure() {
        const auto& all = modShowErr::state().entries;
        return all.empty() ? "" : all.back().label + " " + std::to_string(all.back().number);
    }

    TempFolder folder;
};

}  // namespace k520::test
