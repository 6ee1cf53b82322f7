// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/simulator/simRadio.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Checked.h"
#include "link/port/portTexts.h"

namespace k520 {

namespace {

constexpr std::uint8_t acknowledge = 0x06;
constexpr std::uint8_t readCommand = 0x52;
constexpr std::uint8_t writeCommand = 0x57;
constexpr std::array<std::uint8_t, 7> greeting{0x50, 0x52, 0x4F, 0x47, 0x52, 0x41, 0x4D};
constexpr std::array<std::uint8_t, 7> endOfRead{0x45, 0x5A, 0xA5, 0x32, 0x23, 0x45, 0xF2};
constexpr std::array<std::uint8_t, 1> acknowledgement{acknowledge};
constexpr std::array<std::uint8_t, 1> readStart{readCommand};
constexpr std::array<std::uint8_t, 1> writeStart{writeCommand};

// Command, two address bytes, length.
constexpr std::size_t headerLength = 4;
constexpr std::size_t longestBlock = 16;
constexpr std::uint64_t bitsPerByte = 10;
constexpr int babbleKept = 4096;

/// A frame's fixed beginning, its length without data, and whether data bytes follow.
struct Shape {
    std::span<const std::uint8_t> beginning;
    std::size_t length;
    bool carriesData;
};

constexpr Shape greetingFrame{greeting, greeting.size(), false};
constexpr Shape acknowledgeFrame{acknowledgement, 1, false};
constexpr Shape readFrame{readStart, headerLength, false};
constexpr Shape writeFrame{writeStart, headerLength, true};
constexpr Shape endOfReadFrame{endOfRead, endOfRead.size(), false};

bool agrees(const Shape& shape, std::span<const std::uint8_t> begun) {
    const std::size_t count = std::min(begun.size(), shape.beginning.size());
    return std::ranges::equal(begun.first(count), shape.beginning.first(count));
}

bool isComplete(const Shape& shape, std::span<const std::uint8_t> begun) {
    if (!shape.carriesData || begun.size() < shape.length) {
        return begun.size() == shape.length;
    }
    // No data is waited for after a length that is refused anyway.
    const std::size_t data = begun[headerLength - 1];
    return data > longestBlock || begun.size() == shape.length + data;
}

std::string hexBytes(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += ' ' + hexText(byte, 2);
    }
    return text;
}

}  // namespace

struct SimRadio::Rule {
    State state;
    Shape shape;
    void (SimRadio::*run)(const Frame&, LineTime);
};

std::span<const SimRadio::Rule> SimRadio::rules() noexcept {
    static constexpr std::array table{
        Rule{State::asleep, greetingFrame, &SimRadio::greet},
        Rule{State::greeted, greetingFrame, &SimRadio::greet},
        Rule{State::greeted, acknowledgeFrame, &SimRadio::startProgramming},
        Rule{State::programming, greetingFrame, &SimRadio::greet},
        Rule{State::programming, readFrame, &SimRadio::readBlock},
        Rule{State::programming, writeFrame, &SimRadio::writeBlock},
        Rule{State::programming, endOfReadFrame, &SimRadio::endReading},
        Rule{State::programming, acknowledgeFrame, &SimRadio::endWriting},
    };
    return table;
}

const SimRadio::Rule* SimRadio::ruleFor(State state, std::uint8_t command) noexcept {
    const auto found = std::ranges::find_if(rules(), [&](const Rule& rule) {
        return rule.state == state && rule.shape.beginning.front() == command;
    });
    return found == rules().end() ? nullptr : &*found;
}

std::optional<int> decodeAddress(std::uint8_t high, std::uint8_t low) noexcept {
    const int thousands = high >> 4;
    const int quarters = high & 0x0F;
    return quarters > 3 ? std::nullopt : std::optional(thousands * 1024 + quarters * 256 + low);
}

SimRadio::SimRadio(std::vector<std::uint8_t> memory, SimFaults faults, int baud)
    : faults_(std::move(faults)),
      byteTime_(LineTime(std::chrono::seconds(bitsPerByte)) / std::max(baud, 1)) {
    setMemory(std::move(memory));
}

void SimRadio::setMemory(std::vector<std::uint8_t> memory) {
    memory_ = std::move(memory);
    memory_.resize(memorySize, 0xFF);
}

void SimRadio::receive(std::span<const std::uint8_t> bytes, Microseconds now) {
    for (const std::uint8_t byte : bytes) {
        inFree_ = std::max<LineTime>(inFree_, now);
        arrive(throughFaults(faults_.requestBytes, ++counters_.requestBytes, byte));
    }
}

/// Takes a byte from the computer's line, as it comes out of it.
void SimRadio::arrive(const LineByte& byte) {
    const auto pass = [this](std::uint8_t value, bool lost) {
        inFree_ += byteTime_;
        if (!lost && (!goneAt_ || inFree_ < *goneAt_)) {
            hear(value, inFree_);
        }
    };
    inFree_ += byte.late;
    pass(byte.value, byte.lost);
    if (byte.extra) {
        pass(*byte.extra, false);
    }
}

std::vector<std::uint8_t> SimRadio::takeDue(Microseconds now) {
    dropStale(now);
    const LineTime end = goneAt_ ? std::min<LineTime>(now, *goneAt_) : now;
    babble(end);
    std::vector<std::uint8_t> bytes;
    while (!out_.empty() && out_.front().due <= end) {
        bytes.push_back(out_.front().value);
        out_.pop_front();
    }
    return bytes;
}

std::optional<SimRadio::Microseconds> SimRadio::nextDue() const {
    LineTime next = goneAt_.value_or(LineTime::max());
    if (!out_.empty()) {
        next = std::min(next, out_.front().due);
    } else if (babbling()) {
        next = std::min(next, outFree_ + byteTime_);
    }
    return next == LineTime::max() ? std::nullopt
                                   : std::optional(std::chrono::ceil<Microseconds>(next));
}

std::optional<SimRadio::Microseconds> SimRadio::goneAt() const {
    return goneAt_ ? std::optional(std::chrono::ceil<Microseconds>(*goneAt_)) : std::nullopt;
}

SimRadio::Microseconds SimRadio::lineBusyUntil() const {
    return std::chrono::ceil<Microseconds>(inFree_);
}

bool SimRadio::takeCable() noexcept {
    return !std::exchange(cableTaken_, true);
}

void SimRadio::hear(std::uint8_t byte, LineTime at) {
    dropStale(at);
    lastHeard_ = at;
    frame_.push_back(byte);
    const Rule* const rule = ruleFor(state_, frame_.front());
    if (rule == nullptr) {
        refuse();
    } else if (!agrees(rule->shape, frame_)) {
        refuse();
        // The byte that does not fit may begin the next frame.
        if (ruleFor(state_, byte) != nullptr) {
            hear(byte, at);
        }
    } else if (isComplete(rule->shape, frame_)) {
        complete(*rule, at);
    }
}

/// Drops a frame that the radio does not know here. A handshake broken off leaves it asleep.
void SimRadio::refuse() {
    // By State.
    static constexpr std::array<Text, 3> unknown{texts::unknownAsleep, texts::unknownGreeted,
                                                 texts::unknownProgramming};
    complain(unknown.at(static_cast<std::size_t>(state_)), frame_);
    frame_.clear();
    if (state_ == State::greeted) {
        state_ = State::asleep;
    }
}

void SimRadio::complete(const Rule& rule, LineTime at) {
    const Frame frame = std::exchange(frame_, {});
    babble(at);
    outFree_ = std::max(outFree_, at);
    ++counters_.exchanges;
    if (frame.front() == greeting.front()) {
        ++counters_.attempts;
    }
    if (!faults_.silentFrom || counters_.exchanges < *faults_.silentFrom) {
        (this->*rule.run)(frame, at);
    }
    if (counters_.exchanges == faults_.goneAfter) {
        goneAt_ = std::max(at, outFree_) + unplugDelay;
    }
}

void SimRadio::dropStale(LineTime at) {
    if (!frame_.empty() && at - lastHeard_ > pauseLimit) {
        complain(texts::frameCutOff, frame_);
        frame_.clear();
    }
}

void SimRadio::answer(std::span<const std::uint8_t> bytes, LineTime at) {
    for (const std::uint8_t byte : bytes) {
        const LineByte sent = throughFaults(faults_.replyBytes, ++counters_.replyBytes, byte);
        outFree_ = std::max(outFree_, at) + sent.late + byteTime_;
        if (!sent.lost) {
            out_.push_back({sent.value, outFree_});
        }
        if (sent.extra) {
            outFree_ += byteTime_;
            out_.push_back({*sent.extra, outFree_});
        }
    }
}

bool SimRadio::babbling() const noexcept {
    const std::uint32_t awaited = counters_.exchanges + 1;
    return faults_.babble && awaited >= faults_.babble->from && awaited < faults_.babble->until;
}

/// Fills the radio's line with noise up to `end`. What nobody has listened to for long is lost.
void SimRadio::babble(LineTime end) {
    if (!babbling()) {
        return;
    }
    outFree_ = std::max(outFree_, end - babbleKept * byteTime_);
    while (outFree_ + byteTime_ <= end) {
        outFree_ += byteTime_;
        noise_ = noise_ * 1'664'525 + 1'013'904'223;
        const auto byte = static_cast<std::uint8_t>(noise_ >> 24);
        out_.push_back({faults_.babble->value.value_or(byte), outFree_});
    }
}

void SimRadio::complain(const Text& what, std::span<const std::uint8_t> bytes) {
    if (++counters_.complaints <= complaintLimit) {
        complaints_.push_back(about(say(what), trimBlanks(hexBytes(bytes))));
    }
}

/// The addresses that a block frame is about, or nothing (and a complaint) where they are none.
std::optional<SimRadio::Block> SimRadio::blockOf(const Frame& frame) {
    const auto address = decodeAddress(frame[1], frame[2]);
    const std::size_t length = frame[3];
    if (!address) {
        complain(texts::badAddressForm, frame);
    } else if (length == 0 || length > longestBlock) {
        complain(texts::badLength, frame);
    } else if (static_cast<std::size_t>(*address) + length > memory_.size()) {
        complain(texts::outsideMemory, frame);
    } else {
        return Block{static_cast<std::size_t>(*address), length};
    }
    return std::nullopt;
}

void SimRadio::greet(const Frame& /*frame*/, LineTime at) {
    blocksRead_ = blocksWritten_ = 0;
    state_ = State::asleep;
    if (counters_.attempts > faults_.failAttempts) {
        state_ = State::greeted;
        answer(acknowledgement, at);
    }
}

void SimRadio::startProgramming(const Frame& /*frame*/, LineTime at) {
    state_ = State::programming;
    answer(acknowledgement, at);
}

void SimRadio::readBlock(const Frame& frame, LineTime at) {
    if (const auto block = blockOf(frame)) {
        Frame reply = frame;
        reply.front() = writeCommand;
        const auto data = memory().subspan(block->address, block->length);
        reply.insert(reply.end(), data.begin(), data.end());
        answer(reply, at);
        ++blocksRead_;
    }
}

void SimRadio::writeBlock(const Frame& frame, LineTime at) {
    if (const auto block = blockOf(frame)) {
        if (++blocksToStore_ != faults_.forgottenBlock) {
            std::ranges::copy(std::span(frame).subspan(headerLength),
                              memory().subspan(block->address).begin());
        }
        answer(acknowledgement, at);
        ++blocksWritten_;
    }
}

void SimRadio::endReading(const Frame& /*frame*/, LineTime /*at*/) {
    state_ = State::asleep;
    counters_.reads += blocksRead_ > 0 ? 1 : 0;
}

void SimRadio::endWriting(const Frame& /*frame*/, LineTime at) {
    state_ = State::asleep;
    answer(acknowledgement, at);
    if (blocksWritten_ > 0) {
        ++counters_.writes;
        onWriteCompleted.tell();
    }
}

}  // namespace k520
