// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "app/modShowErr.h"
#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "base/ModuleState.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "document/document.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualRadio.h"
#include "memview/modMemDat.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"
#include "settings/modSysSet.h"
#include "support/SimulatedClock.h"

/// What the fuzz targets share.
namespace k520::fuzz {

/// Ends the program where something that has to hold does not: that makes the input a finding.
inline void require(bool holds, std::string_view what) {
    if (!holds) {
        std::fprintf(stderr, "violated: %.*s\n", static_cast<int>(what.size()), what.data());
        std::abort();
    }
}

/// Takes an input apart from its front. After its end it gives zeros and empty texts.
class Source {
  public:
    Source(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    [[nodiscard]] bool empty() const { return rest_.empty(); }
    std::uint8_t byte() {
        const auto taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : taken.front();
    }
    std::uint16_t word() {
        const int high = byte();
        return static_cast<std::uint16_t>(high * 256 + byte());
    }
    bool flag() { return (byte() & 1) != 0; }
    /// 0 to limit - 1, from one byte.
    int below(int limit) { return byte() % limit; }
    std::span<const std::uint8_t> bytes(std::size_t count) {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }
    std::span<const std::uint8_t> rest() { return bytes(rest_.size()); }
    /// A text after its length.
    std::string text(int limit) {
        return textOf(bytes(static_cast<std::size_t>(below(limit + 1))));
    }
    std::string restText() { return textOf(rest()); }

  private:
    static std::string textOf(std::span<const std::uint8_t> bytes) {
        return {bytes.begin(), bytes.end()};
    }

    std::span<const std::uint8_t> rest_;
};

/// The channels that the shipped settings have.
using Channels = std::array<modChMem::Channel, modChMem::codecChannels>;

inline Channels theChannels() {
    Channels channels;
    for (int n = 1; n <= modChMem::codecChannels; ++n) {
        channels[static_cast<std::size_t>(n) - 1] = modChMem::ChInfo()(n);
    }
    return channels;
}

/// The core with the shipped settings, on a clock of its own; as it is after the start-up.
class Core {
  public:
    Core() {
        programFolder::state().own = K520_SHARE_DIR;
        settingsStore::state().writable = false;
        modStartUp::readSettings();
        modStartUp::prepareCore();
        modFileCmd::NewFileSol();
        modMemDat::SetGridMemDat();
        require(modShowErr::state().entries.empty(), "the shipped settings are right");
        fresh_ = document::capture();
        image_ = modIicDat::state();
    }

    /// The document and the address ranges of the start-up, and an empty error list.
    void reset() const {
        modIicDat::state().readRange = image_.readRange;
        modIicDat::state().writeRange = image_.writeRange;
        document::restore(fresh_);
        modShowErr::state() = {};
    }
    test::SimulatedClock& clock() { return clock_; }

  private:
    /// Nobody changes the shipped settings meanwhile.
    settingsStore::Snapshot settings_;
    test::SimulatedClock clock_;
    document::Document fresh_;
    modIicDat::State image_;
};

/// The core as it is after the start-up.
inline Core& freshCore() {
    static Core core;
    core.reset();
    return core;
}

/// Every failure in the error list has one of these labels.
inline void requireLabels(std::span<const std::string_view> labels) {
    for (const auto& entry : modShowErr::state().entries) {
        require(std::ranges::find(labels, entry.label) != labels.end(),
                entry.label + ": " + entry.source);
    }
}

}  // namespace k520::fuzz
