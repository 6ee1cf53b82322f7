// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>

#include "base/Signal.h"

/// Where the configuration that is being edited came from, and word of every change of it. Whoever
/// replaces the configuration or edits it says so here; whoever shows it follows.
namespace k520::documentOrigin {

enum class Origin : std::uint8_t {
    defaults,  ///< the default image
    file,      ///< a data file, opened or saved
    radio,     ///< a radio was read, and nothing saved since
};

/// A moment in the life of the configuration: two are equal when nothing changed between them.
struct Moment {
    std::uint32_t document = 0;  ///< grows with every New, Open and Read
    std::uint32_t edit = 0;      ///< grows with every edit

    friend bool operator==(const Moment&, const Moment&) = default;
};

struct State {
    Origin origin = Origin::defaults;
    Moment now;
    /// One of begin(), edited() and saved() was said.
    Signal<> onChange;
};

[[nodiscard]] State& state();

/// Another configuration has taken the place of the one before.
void begin(Origin origin);
/// A person, or a command for one, has changed the configuration.
void edited();
/// The configuration is in a file as it is now.
void saved();

}  // namespace k520::documentOrigin
