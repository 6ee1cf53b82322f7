// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Controls.h"
#include "channels/channelTable.h"
#include "image/MemoryImage.h"
#include "settings/modSysSet.h"
#include "settings/optionTable.h"

/// The whole configuration as one value: what undo, compare, preview and exchange are built on.
namespace k520::document {

/// Model and band: the limits in 10 Hz, what both lists select, and the texts of the custom range.
struct BandValue {
    std::int32_t low = 0;
    std::int32_t high = 0;
    std::int32_t absoluteMin = 0;
    std::int32_t absoluteMax = 0;
    int band = -1;
    int model = -1;
    std::string customMin;
    std::string customMax;

    friend bool operator==(const BandValue&, const BandValue&) = default;
};

/// How the values stood in the grid and on the panel: what can be shown of the same values depends
/// on what came before them (a channel once opened, a row once deleted).
struct Shown {
    struct GridCell {
        std::string text;
        std::optional<Colour> background;

        friend bool operator==(const GridCell&, const GridCell&) = default;
    };
    struct OptionChoice {
        int selected = -1;
        bool checked = false;

        friend bool operator==(const OptionChoice&, const OptionChoice&) = default;
    };

    int columns = 0;
    std::vector<GridCell> cells;  ///< the rows from 1 on, one after another
    std::array<OptionChoice, optionTable::optionCount> options{};

    friend bool operator==(const Shown&, const Shown&) = default;
};

struct Document {
    MemoryImage image;
    MemoryImage defaultImage;
    std::vector<modChMem::Channel> channels;  ///< channel n at n - 1
    std::optional<modChMem::Channel> newChannel;
    modSysSet::OptionSet options{};
    modSysSet::OptionSet optionDefaults{};
    BandValue band;
    Shown shown;  ///< not compared

    friend bool operator==(const Document& a, const Document& b);
};

/// The configuration as it is now.
[[nodiscard]] Document capture();

/// Puts a configuration back that was captured under the same settings, and shows it as it was
/// shown then; windows hear of what changed and of nothing else. Nothing is logged, and neither
/// the origin nor the moment of the configuration changes (see documentOrigin.h).
void restore(const Document& document);

}  // namespace k520::document
