// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The simulated radio under any requests at any times. Two radios get the same bytes at the same
// times, one in whole writes and one byte by byte, and must agree in everything.

#include <array>

#include "link/protocol/scriptText.h"
#include "link/simulator/simRadio.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t mostSteps = 200;

ByteFault faultFrom(Source& source) {
    return {.kind = static_cast<ByteFaultKind>(source.below(4)),
            .byte = source.byte() + 1U,
            .value = source.byte(),
            .by = Clock::Microseconds(source.word())};
}

SimFaults faultsFrom(Source& source) {
    SimFaults faults;
    const int kinds = source.byte();
    for (int left = kinds & 3; left > 0; --left) {
        faults.replyBytes.push_back(faultFrom(source));
    }
    if ((kinds & 0x10) != 0) {
        faults.silentFrom = source.byte() + 1U;
    }
    faults.failAttempts = (kinds & 0x20) != 0 ? source.byte() % 4U : 0;
    if ((kinds & 0x40) != 0) {
        faults.goneAfter = source.byte() + 1U;
    }
    return faults;
}

Bytes blockFrame(Source& source, std::uint8_t command) {
    const std::uint8_t high = source.byte();
    Bytes frame{command, high, source.byte(), static_cast<std::uint8_t>(source.byte() % 20)};
    if (command == 0x57) {
        const auto data = source.bytes(frame[3]);
        frame.insert(frame.end(), data.begin(), data.end());
    }
    return frame;
}

Bytes frameFrom(Source& source) {
    switch (source.byte() % 8) {
        case 0:
        case 1:
            return {0x50, 0x52, 0x4F, 0x47, 0x52, 0x41, 0x4D};
        case 2:
        case 3:
            return {0x06};
        case 4:
            return blockFrame(source, 0x52);
        case 5:
            return blockFrame(source, 0x57);
        case 6:
            return {0x45, 0x5A, 0xA5, 0x32, 0x23, 0x45, 0xF2};
        default: {
            const auto raw = source.bytes(source.byte() % 24U);
            return {raw.begin(), raw.end()};
        }
    }
}

/// A radio and what it has sent.
struct Listener {
    SimRadio radio;
    Bytes heard;
    std::uint32_t completed = 0;

    Subscription counting = radio.onWriteCompleted.subscribe([this] { ++completed; });

    Listener(const SimFaults& faults, int baud) : radio({}, faults, baud) {}
    void listen(Clock::Microseconds now) {
        const auto bytes = radio.takeDue(now);
        heard.insert(heard.end(), bytes.begin(), bytes.end());
        const auto next = radio.nextDue();
        require(!next || *next > now || radio.gone(now), "what is due has been taken");
    }
};

void requireCounts(const Listener& listener) {
    const auto& radio = listener.radio;
    const auto& counted = radio.counters();
    require(counted.attempts <= counted.exchanges, "a greeting is an exchange");
    require(counted.reads + counted.writes <= counted.attempts, "a session has a greeting");
    require(listener.completed == counted.writes, "each write session is told once");
    require(radio.complaints().size() ==
                std::min<std::size_t>(counted.complaints, SimRadio::complaintLimit),
            "complaints are kept up to a limit");
    require(radio.memory().size() == SimRadio::memorySize, "the memory keeps its size");
}

void requireOneForm(std::uint16_t form) {
    const auto address =
        decodeAddress(static_cast<std::uint8_t>(form >> 8), static_cast<std::uint8_t>(form & 0xFF));
    require(!address || scriptText::addressText(*address) == hexText(form, 4),
            "an address has one form");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    requireOneForm(source.word());
    const SimFaults faults = faultsFrom(source);
    const int baud = source.flag() ? SimRadio::usualBaud : source.word();
    Listener whole(faults, baud);
    Listener single(faults, baud);
    Clock::Microseconds now{0};
    for (std::size_t step = 0; step < mostSteps && !source.empty(); ++step) {
        const Bytes frame = frameFrom(source);
        whole.radio.receive(frame, now);
        for (const std::uint8_t byte : frame) {
            single.radio.receive({&byte, 1}, now);
        }
        const int pause = source.byte();
        now += Clock::Microseconds(pause < 0xF0 ? pause * 256 : 0);
        whole.listen(now);
        single.listen(now);
    }
    constexpr std::chrono::hours later{24 * 365};
    whole.listen(now + later);
    single.listen(now + later);
    require(whole.heard == single.heard, "the pieces of a write do not count");
    require(whole.radio.counters() == single.radio.counters(), "nor for the counts");
    require(whole.radio.complaints() == single.radio.complaints(), "nor for the complaints");
    require(std::ranges::equal(whole.radio.memory(), single.radio.memory()), "nor for the memory");
    requireCounts(whole);
    const auto lost = static_cast<std::size_t>(std::ranges::count_if(
        faults.replyBytes, [](const auto& each) { return each.kind == ByteFaultKind::lose; }));
    require(faults.goneAfter || whole.heard.size() + lost >= whole.radio.counters().replyBytes,
            "every byte that was sent arrives");
    return 0;
}
