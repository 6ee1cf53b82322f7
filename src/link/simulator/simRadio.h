// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Signal.h"
#include "base/Text.h"
#include "link/simulator/simFaults.h"

namespace k520 {

/// The memory address that the high and low address bytes of a block frame mean, or nothing where
/// the high byte is not an address form. The radio's form is not the plain address: the high byte
/// holds bits 13..10 in its upper and bits 9..8 in its lower half (0..3), so 0x0400 is 10 00.
[[nodiscard]] std::optional<int> decodeAddress(std::uint8_t high, std::uint8_t low) noexcept;

/// A radio at the other end of the line: its memory and its side of the protocol, in time. Every
/// byte takes ten bit times on the line in each direction; the radio acts on a frame at the
/// instant in which its last byte has arrived.
///
///   in state      it expects                 and answers
///   asleep        50 52 4F 47 52 41 4D       06, then it is greeted
///   greeted       06                         06, then it is programming
///   programming   52 H Lo L                  57 H Lo L and L bytes from the address
///   programming   57 H Lo L and L bytes      06, when they are stored
///   programming   45 5A A5 32 23 45 F2       nothing; it falls asleep
///   programming   06                         06, then it falls asleep
///
/// A greeting starts over in every state: the computer repeats the whole script after a failure.
/// L is 1..16. Anything else is refused by silence and recorded as a complaint.
class SimRadio {
  public:
    using Microseconds = Clock::Microseconds;

    static constexpr std::size_t memorySize = 8192;
    static constexpr int usualBaud = 9600;
    /// A frame whose bytes stop for longer is dropped. That is 48 byte times: longer than any gap
    /// that a converter puts into one write, shorter than the computer's reply time-out from its
    /// fifth attempt on. So one lost byte never spoils all the attempts that follow.
    static constexpr Microseconds pauseLimit{50'000};
    /// How long after the last answer the cable comes out: the computer has taken it by then.
    static constexpr Microseconds unplugDelay{10'000};
    /// The complaints beyond so many are only counted, so that endless noise fills no memory.
    static constexpr std::size_t complaintLimit = 1000;

    struct Counters {
        std::uint32_t exchanges = 0;   ///< complete frames received
        std::uint32_t attempts = 0;    ///< greetings among them
        std::uint32_t reads = 0;       ///< read sessions that came to their end
        std::uint32_t writes = 0;      ///< the same for write sessions
        std::uint32_t replyBytes = 0;  ///< bytes that the radio sent, lost ones included
        std::uint32_t complaints = 0;
        std::uint32_t requestBytes = 0;  ///< bytes that the computer sent, lost ones included

        friend bool operator==(const Counters&, const Counters&) = default;
    };

    /// `memory` is cut or filled with FF to the size of a radio's memory.
    explicit SimRadio(std::vector<std::uint8_t> memory = {}, SimFaults faults = {},
                      int baud = usualBaud);

    /// The computer has written these bytes at `now`; they go onto the line after earlier ones.
    void receive(std::span<const std::uint8_t> bytes, Microseconds now);
    /// The reply bytes that have arrived at the computer by `now` and were not taken before.
    [[nodiscard]] std::vector<std::uint8_t> takeDue(Microseconds now);
    /// When the next reply byte arrives or the cable comes out; nothing while neither is to come.
    [[nodiscard]] std::optional<Microseconds> nextDue() const;
    /// When the computer's last byte will have left its line. A port with a bounded buffer takes
    /// no more bytes long before.
    [[nodiscard]] Microseconds lineBusyUntil() const;
    /// When the cable came or comes out; nothing while that is not certain.
    [[nodiscard]] std::optional<Microseconds> goneAt() const;
    /// Whether the cable is out.
    [[nodiscard]] bool gone(Microseconds now) const { return goneAt_ && *goneAt_ <= now; }

    [[nodiscard]] std::span<std::uint8_t> memory() noexcept { return memory_; }
    [[nodiscard]] std::span<const std::uint8_t> memory() const noexcept { return memory_; }
    /// Replaces the memory, cut or filled like the first one.
    void setMemory(std::vector<std::uint8_t> memory);

    /// Every violation of the protocol so far, with its bytes.
    [[nodiscard]] const std::vector<std::string>& complaints() const noexcept {
        return complaints_;
    }
    [[nodiscard]] const Counters& counters() const noexcept { return counters_; }

    /// A write session with at least one block has come to its end.
    Signal<> onWriteCompleted;

    /// One port at a time holds the radio's cable. False where another one has it.
    [[nodiscard]] bool takeCable() noexcept;
    void releaseCable() noexcept { cableTaken_ = false; }

  private:
    // Finer than the clock, so that a byte time of 1041.67 us does not drift.
    using LineTime = std::chrono::nanoseconds;
    using Frame = std::vector<std::uint8_t>;

    enum class State { asleep, greeted, programming };
    struct Rule;
    struct Block {
        std::size_t address;
        std::size_t length;
    };
    struct Outgoing {
        std::uint8_t value;
        LineTime due;
    };

    static std::span<const Rule> rules() noexcept;
    static const Rule* ruleFor(State state, std::uint8_t command) noexcept;

    void arrive(const LineByte& byte);
    void hear(std::uint8_t byte, LineTime at);
    void refuse();
    void complete(const Rule& rule, LineTime at);
    void dropStale(LineTime at);
    void answer(std::span<const std::uint8_t> bytes, LineTime at);
    [[nodiscard]] bool babbling() const noexcept;
    void babble(LineTime end);
    void complain(const Text& what, std::span<const std::uint8_t> bytes);
    std::optional<Block> blockOf(const Frame& frame);

    void greet(const Frame& frame, LineTime at);
    void startProgramming(const Frame& frame, LineTime at);
    void readBlock(const Frame& frame, LineTime at);
    void writeBlock(const Frame& frame, LineTime at);
    void endReading(const Frame& frame, LineTime at);
    void endWriting(const Frame& frame, LineTime at);

    std::vector<std::uint8_t> memory_;
    SimFaults faults_;
    LineTime byteTime_;
    State state_ = State::asleep;
    Frame frame_;  ///< what has arrived of the frame that is under way
    LineTime lastHeard_{0};
    LineTime inFree_{0};   ///< until when the computer's line is busy
    LineTime outFree_{0};  ///< the same for the radio's
    std::deque<Outgoing> out_;
    std::optional<LineTime> goneAt_;
    std::uint32_t blocksRead_ = 0;  ///< since the greeting
    std::uint32_t blocksWritten_ = 0;
    std::uint32_t blocksToStore_ = 0;  ///< over the radio's life
    std::uint32_t noise_ = 0x2545F491;
    Counters counters_;
    std::vector<std::string> complaints_;
    bool cableTaken_ = false;
};

}  // namespace k520
