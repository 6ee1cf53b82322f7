// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>

#include "base/Clock.h"
#include "base/posix/Descriptor.h"
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

    /// The device that clients open.
    [[nodiscard]] const std::string& devicePath() const noexcept { return devicePath_; }

    /// Passes bytes both ways once, sleeping until there are some, for at most `limit`. Returns
    /// early when a signal arrives or `stopDescriptor` (not used when negative) becomes readable;
    /// it is not read. False once the radio has gone away: the pair is then closed and the client
    /// has been hung up on.
    bool step(Microseconds limit, int stopDescriptor = -1);

  private:
    void sleepUntilSomethingComes(Microseconds limit, int stopDescriptor);
    void hearClient();
    void noticeClosings();
    void tidyUpAfterClients();
    void answerClient();
    void hangUp();

    std::shared_ptr<SimRadio> radio_;
    SystemClock clock_;
    Descriptor master_;
    /// Kept open, so that the pair lives on between clients.
    Descriptor slave_;
    Descriptor closings_;
    /// How often to look yet whether the last client has gone, and when next.
    int looksLeft_ = 0;
    Microseconds nextLook_{0};
    std::string devicePath_;
    struct stat device_ {};
};

}  // namespace k520
