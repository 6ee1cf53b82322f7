// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "image/modIicDat.h"
#include "link/session/modSession.h"
#include "link/simulator/simRadio.h"

/// One session under one fault, on the simulated clock: values in, a verdict out.
namespace k520::test {

using Bytes = std::vector<std::uint8_t>;

/// What the radio holds beforehand.
enum class Memory : std::uint8_t {
    telling,  ///< every address has bytes of its own
    mimic,    ///< every block holds acknowledgements and its own reply's header
};

struct LinkCase {
    Direction direction = Direction::read;
    SimFaults faults{};
    /// Read and write range; whole blocks, which the channels do not touch.
    modIicDat::AddressRange range{0x400, 0x43F};
    Memory memory = Memory::telling;
    /// With a second read, or read back after a write.
    bool guarded = false;
    int baud = SimRadio::usualBaud;
    /// The port drops what has been written and not been sent when it is told to, as one without a
    /// buffer of its own does.
    bool dropsOutput = false;
    /// The stop box is ticked as soon as it can be.
    bool stops = false;
};

/// How an image or a memory is left, seen over all its addresses; kept is right where nothing had
/// to change.
enum class Content : std::uint8_t { kept, right, wrong };

struct LinkVerdict {
    /// The session, or all of them, claim to have succeeded.
    bool good = false;
    modSession::Result result;
    /// The image against what the radio holds now (read); what a write sends is always right.
    Content image = Content::wrong;
    /// The radio's memory against what was sent (write) or against what it held (read).
    Content radio = Content::wrong;
    /// From the first call to the last return.
    Clock::Microseconds time{0};
    /// From the cable's coming out to the first line of the error list, and to the box.
    Clock::Microseconds toldAfter{0};
    Clock::Microseconds endedAfter{0};
    std::size_t entries = 0;  ///< in the error list
    std::size_t boxes = 0;    ///< message boxes shown
    std::size_t mostWaiting = 0;
    std::size_t dataLines = 0;
    SimRadio::Counters counters;

    /// Something wrong is called good: an image that was read, a memory that was written.
    bool deceives = false;
};

/// Runs the case with a new radio and a new image, in the core's state as it is otherwise. The core
/// has to be ready (see LinkBench).
LinkVerdict judge(const LinkCase& job);

/// The core made ready for sessions, and a clock and dialogs of its own, as long as it lives.
class LinkBench {
  public:
    LinkBench();
    ~LinkBench();
    LinkBench(const LinkBench&) = delete;
    LinkBench& operator=(const LinkBench&) = delete;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace k520::test
