// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "app/programFolder.h"
#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "program/modStartUp.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

namespace k520::faults {

/// The desktop program without its windows, in this process, in a program folder of its own.
class DesktopCore : public testing::Test {
  protected:
    DesktopCore() { std::filesystem::create_directory(folder / "home"); }
    ~DesktopCore() override { resetModules(); }

    [[nodiscard]] std::string home() const { return (folder / "home").string(); }
    [[nodiscard]] std::string settings() const { return folder.read("home/Uninstall.exe"); }
    /// The shipped settings without a first start.
    static std::string shippedSettings() {
        std::ifstream file(K520_SHARE_DIR "/Uninstall.exe");
        std::string text{std::istreambuf_iterator<char>(file), {}};
        return text.replace(text.find("FirRun=1"), 8, "FirRun=0");
    }

    /// A start of a new process with these settings; the machine's own ports are useless to it.
    modStartUp::StartResult start(const std::string& settings) {
        resetModules();
        // Old enough for its stamp to be believed.
        std::filesystem::last_write_time(folder.write("home/Uninstall.exe", settings),
                                         firstStamp_ + std::chrono::seconds(stamp_++));
        programFolder::state().own = home();
        programFolder::state().shipped = K520_SHARE_DIR;
        modCommun::state().portMaker = [](std::int16_t) { return comPorts::portForDevice(""); };
        return modStartUp::Form_Load();
    }
    /// What the user has before him: the grid's texts and the image that they show.
    static std::string screen() {
        const auto& grid = modChMem::state().vsfgGridCh;
        std::string all;
        for (int row = 0; row < grid.rows(); ++row) {
            for (int col = 0; col < grid.columns(); ++col) {
                all += grid.text(row, col) + '\n';
            }
        }
        const auto bytes = modIicDat::IicDat().bytes();
        return all.append(bytes.begin(), bytes.end());
    }

    const test::TempFolder folder;
    test::ScriptedDialogs dialogs;

  private:
    const std::filesystem::file_time_type firstStamp_ =
        std::filesystem::file_time_type::clock::now() - std::chrono::hours(1'000);
    int stamp_ = 0;
};

}  // namespace k520::faults
