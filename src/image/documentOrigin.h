// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

#include "base/Signal.h"

/// Where the configuration that is being edited came from, and word of every change of it. Whoever
/// replaces the configuration or edits it says so here; whoever shows it or remembers it follows.
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
    /// What was done last, in the words of a menu ("delete channel 3"); empty where nobody named
    /// it.
    std::string what;
    /// The steps that are open, and whether anything was said since the first of them was opened.
    int openSteps = 0;
    bool changedInStep = false;
    /// One of begin(), edited() and saved() was said.
    Signal<> onChange;
};

[[nodiscard]] State& state();

/// Another configuration has taken the place of the one before.
void begin(Origin origin, std::string what = {});
/// A person, or a command for one, has changed the configuration.
void edited(std::string what = {});
/// The configuration is in a file as it is now.
void saved();

/// While one lives, everything that is said here counts as one change: it is told once, after the
/// outermost one has ended, and under that one's name where it has one.
class Step {
  public:
    explicit Step(std::string what = {});
    ~Step();
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

  private:
    std::string what_;
};

}  // namespace k520::documentOrigin
