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
#include "app/programFolder.h"
#include "base/ModuleState.h"
#include "support/Raised.h"
#include "support/ScriptedDialogs.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::test {

/// All modules as a new process has them, in English and with an empty program folder of its own.
class ProgramFolder : public testing::Test {
  protected:
    ProgramFolder() {
        resetModules();
        programFolder::state().own = folder.path();
        modSoftFace::FillSoftFace(mdimoduMain::state().Language);
    }
    ~ProgramFolder() override { resetModules(); }

    /// Writes the settings file.
    void settings(const std::string& text) const {
        folder.write(programFolder::settingsFileName, text);
    }
    /// The last failure logged: label and number; empty when there is none.
    static std::string failure() {
        const auto& all = modShowErr::state().entries;
        return all.empty() ? "" : all.back().label + " " + std::to_string(all.back().number);
    }

    TempFolder folder;
};

}  // namespace k520::test
