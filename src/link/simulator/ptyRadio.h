// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <memory>
#include <string>

#include "base/Clock.h"
#include "link/simulator/simRadio.h"

namespace k520 {

/// A simulated radio on a pseudo-terminal: to every program its device is a serial port with a
/// radio at its other end. The line runs in real time, whatever clock is in force.
///
/// A client that is killed leaves the terminal's exclusive mark in place, and nobody could open the
/// device again; the mark is therefore taken away when a client goes.
class PtyRadio {
  public:
    using Microseconds = Clock::Microseconds;

    /// Opens the pair. Raises what the system says when it has no pseudo-terminal to give.
    explicit PtyRadio(std::shared_ptr<SimRadio> radio);
    ~PtyRadio();
    PtyRadio(const PtyRadio&) = delete;
    PtyRadio& operator=(const PtyRadio&) = delete;

    /// The device that clients open.
    [[nodiscard]] const std::string& devicePath() const noexcept;

    /// Passes bytes both ways once, sleeping until there are some, for at most `limit`. Returns
    /// early when a signal arrives or an interrupt has been noted (base/Interrupt.h). False once
    /// the radio has gone away: the pair is then closed and the client has been hung up on.
    bool step(Microseconds limit);

  private:
    class Pair;

    std::unique_ptr<Pair> pair_;
};

}  // namespace k520
