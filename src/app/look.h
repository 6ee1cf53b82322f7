// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

/// Fonts and colours, as the settings file has them.
namespace k520::look {

struct State {
    std::string EngFont;
    std::string ChsFont;
    std::string fontInUse;
    /// Colour texts as they stand in the settings file (see parseColour).
    std::string OverColor;
    std::string DefColor;
};

[[nodiscard]] State& state();

}  // namespace k520::look
