// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The interpreter against a port that answers whatever the input says, in pieces and at times that
// the input says: under scripts of any tokens, and in whole sessions over small ranges.

#include <array>
#include <memory>
#include <vector>

#include "app/modShowErr.h"
#include "base/RuntimeError.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/protocol/scriptText.h"
#include "link/session/modSession.h"
#include "link/simulator/simRadio.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;
using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;

struct Exchange {
    Bytes sent;
    Bytes taken;
};

class InputPort : public SerialPort {
  public:
    InputPort(Source& source, std::vector<Exchange>& log) : source_(source), log_(log) {}

    void open() override {
        fail(source_.byte() == 0xFF);
        open_ = true;
    }
    [[nodiscard]] bool isOpen() const override { return open_; }
    void close() override {
        open_ = false;
        fail(broken_);
    }
    void emptyInput() override {
        arrive();
        arrived_.clear();
    }
    void emptyOutput() override { arrive(); }
    void write(std::span<const std::uint8_t> bytes) override {
        arrive();
        require(!bytes.empty() && bytes.size() <= 101, "a frame of 1 to 101 bytes");
        log_.push_back({{bytes.begin(), bytes.end()}, {}});
        planAnswer();
    }
    [[nodiscard]] std::size_t waiting() override {
        arrive();
        return arrived_.size();
    }
    [[nodiscard]] Bytes readAll() override {
        arrive();
        if (!log_.empty()) {
            log_.back().taken = arrived_;
        }
        return std::exchange(arrived_, {});
    }

  private:
    struct Piece {
        Clock::Microseconds due;
        Bytes bytes;
    };

    static void fail(bool broken) {
        if (broken) {
            throw RuntimeError(errNum::deviceIo, "the port has gone away");
        }
    }

    void arrive() {
        require(open_, "a port is open when it is used");
        fail(broken_);
        while (!coming_.empty() && coming_.front().due <= theClock().now()) {
            const auto& bytes = coming_.front().bytes;
            arrived_.insert(arrived_.end(), bytes.begin(), bytes.end());
            coming_.erase(coming_.begin());
        }
    }

    Bytes rightAnswer() {
        const auto& link = modCommun::state();
        Bytes answer;
        for (int i = 0; i < link.expectedCount; ++i) {
            const auto& token = link.expectedReply.at(static_cast<std::size_t>(i));
            answer.push_back(token == "VA" ? source_.byte() : scriptText::byteOfToken(token));
        }
        return answer;
    }

    void planAnswer() {
        const int kind = source_.byte();
        broken_ = kind == 0xFF;
        Bytes answer = rightAnswer();
        if ((kind & 0x03) == 1 && !answer.empty()) {
            answer[source_.byte() % answer.size()] = source_.byte();
        } else if ((kind & 0x03) == 2) {
            const auto bytes = source_.bytes(source_.byte());
            answer.assign(bytes.begin(), bytes.end());
        }
        auto due = theClock().now();
        for (std::size_t at = 0; at < answer.size();) {
            const bool whole = (kind & 0x04) == 0;
            const auto count =
                whole ? answer.size()
                      : std::min(answer.size() - at, source_.byte() % 8 + std::size_t{1});
            due += (kind & 0x08) == 0 ? milliseconds(0) : milliseconds(source_.byte());
            const auto begin = answer.begin() + static_cast<std::ptrdiff_t>(at);
            coming_.push_back({due, Bytes(begin, begin + static_cast<std::ptrdiff_t>(count))});
            at += count;
        }
    }

    Source& source_;
    std::vector<Exchange>& log_;
    std::vector<Piece> coming_;
    Bytes arrived_;
    bool open_ = false;
    bool broken_ = false;
};

/// Mostly tokens that mean something.
std::string scriptFrom(Source& source) {
    static constexpr std::array<std::string_view, 8> words{"TX", "RX", "VA", "EN",
                                                           "RF", "WF", "06", "TX"};
    std::string script;
    for (int left = source.byte(); left > 0 && !source.empty(); --left) {
        const std::size_t kind = source.byte();
        if (kind < 0x80) {
            script += words[kind % words.size()];
        } else if (kind < 0xF0) {
            script += hexText(source.byte(), 2);
        } else {
            script += source.text(3);
        }
    }
    return script;
}

/// What the token array says that a run without failure has sent and taken.
void requireExchangesOf(const modCommun::State& link, BoundedArray<std::uint8_t, 1, 100> data,
                        const std::vector<Exchange>& log) {
    auto next = log.begin();
    int index = 1;
    int place = 1;
    while (link.tokenArray(place) == "TX" || link.tokenArray(place) == "RF" ||
           link.tokenArray(place) == "WF") {
        if (link.tokenArray(place) != "TX") {
            place += 4;
            continue;
        }
        Bytes frame;
        for (++place; link.tokenArray(place) != "RX" && link.tokenArray(place) != "EN"; ++place) {
            const auto& token = link.tokenArray(place);
            frame.push_back(token == "VA" ? data(index++) : scriptText::byteOfToken(token));
        }
        require(frame.empty() || (next != log.end() && next->sent == frame), "the frame is sent");
        if (link.tokenArray(place) == "RX") {
            if (frame.empty()) {
                return;  // no frame, so the port has no exchange that the reply belongs to
            }
            std::size_t count = 0;
            for (++place;; ++place) {
                const auto& token = link.tokenArray(place);
                if (token == "TX" || token == "EN" || token == "RF" || token == "WF") {
                    break;
                }
                index = count == 0 ? 1 : index;
                require(next != log.end() && count < next->taken.size(), "the reply is taken");
                const auto byte = next->taken[count++];
                require(token == "VA" || scriptText::byteOfToken(token) == byte, "it is right");
                if (token == "VA") {
                    data(index++) = byte;
                }
            }
        }
        next += frame.empty() ? 0 : 1;
    }
    require(next == log.end(), "nothing else is sent");
    require(data == link.dataBuffer, "the data buffer holds what the marks took");
}

void runScript(Source& source, test::SimulatedClock& clock) {
    auto& link = modCommun::state();
    link.attemptCounter = static_cast<std::int16_t>(source.below(20));
    for (int i = source.byte() % 16; i > 0; --i) {
        link.dataBuffer(i) = source.byte();
    }
    std::vector<Exchange> log;
    modCommun::ConvComCode(scriptFrom(source));
    link.portMaker = [&](std::int16_t) { return std::make_unique<InputPort>(source, log); };
    modCommun::OpenCom();
    if (link.portFailureFlag != modCommun::flagFalse) {
        return;
    }
    modShowErr::state() = {};
    const auto before = link.dataBuffer;
    const auto start = clock.now();
    modCommun::ProtocolCom();
    constexpr int mostPhases = 100;
    require(clock.now() - start <= milliseconds(mostPhases * (5 + 191)), "a script ends in time");
    require(link.dataIndex >= 1 && link.dataIndex <= 101, "the data index");
    require(link.transmitCount <= 101 && link.expectedCount <= 101, "the counts");
    const bool failed = link.failureFlag != modCommun::flagFalse;
    require(failed || modShowErr::state().entries.empty(), "an error fails the script");
    if (!failed) {
        requireExchangesOf(link, before, log);
    }
    modCommun::CloseCom();
    static constexpr std::array<std::string_view, 3> labels{
        "modCommun->ProtocolCom", "modCommun->RxComDat", "modCommun->CloseCom"};
    fuzz::requireLabels(labels);
}

/// A view that ticks the stop box, or is abandoned, when the input says so.
class InputView : public NullView {
  public:
    explicit InputView(Source& source)
        : stopAfter_(source.word()), abandonAfter_(source.word() * 16) {}
    bool stopTicked() override { return enabled_ && stopAfter_ != 0 && ++asked_ > stopAfter_; }
    bool abandoned() override { return abandonAfter_ != 0 && ++met_ > abandonAfter_; }
    void resetStopBox() override { enabled_ = false; }
    void enableStopBox() override { enabled_ = true; }
    void setBusy(bool busy) override { busy_ = busy; }
    void enableStart(Direction, bool enabled) override { mayStart = enabled; }
    [[nodiscard]] bool busy() const { return busy_; }
    bool mayStart = true;

  private:
    int stopAfter_;
    int abandonAfter_;
    int asked_ = 0;
    int met_ = 0;
    bool enabled_ = false;
    bool busy_ = false;
};

constexpr std::array<std::uint8_t, 7> greeting{0x50, 0x52, 0x4F, 0x47, 0x52, 0x41, 0x4D};

/// The blocks of the last attempt are what the image holds.
void requireBlocks(const std::vector<Exchange>& log, bool reading, int blocks) {
    for (auto each = log.rbegin(); each != log.rend(); ++each) {
        const Bytes& sent = each->sent;
        if (std::ranges::equal(sent, greeting)) {
            break;
        }
        if (sent.size() < 4) {
            continue;
        }
        const auto address = decodeAddress(sent[1], sent[2]);
        if (!address || sent[0] != (reading ? 0x52 : 0x57)) {
            continue;
        }
        --blocks;
        const Bytes& frame = reading ? each->taken : sent;
        for (int i = 0; i < sent[3]; ++i) {
            require(frame.at(static_cast<std::size_t>(i) + 4) == modIicDat::IicDat()(*address + i),
                    "the image holds the blocks of the session");
        }
    }
    require(blocks == 0, "every block once");
}

void runSession(Source& source, test::SimulatedClock& clock) {
    const bool reading = source.flag();
    auto& image = modIicDat::state();
    // Mostly inside the image and whole blocks; anything now and then.
    const bool wild = source.byte() > 0xF0;
    const auto start =
        static_cast<std::int16_t>(wild ? source.word() : source.word() % 0x1F00 & ~15);
    const auto length =
        static_cast<std::int16_t>(wild ? source.below(80) : 16 * source.below(4) + 15);
    image.readRange = image.writeRange = {
        start, static_cast<std::int16_t>(std::min<int>(start + length, 0x7FFF))};
    InputView view(source);
    std::vector<Exchange> log;
    auto& link = modCommun::state();
    link.portMaker = [&](std::int16_t) { return std::make_unique<InputPort>(source, log); };
    const MemoryImage before = image.IicDat;
    const auto begin = clock.now();
    const auto result =
        reading ? modSession::cmdRead_Click(view) : modSession::cmdWrite_Click(view);
    require(clock.now() - begin <= milliseconds(20 * (result.stepCount + 2) * 200 + 1000),
            "a session ends in time");
    require(modSession::state().busyMark == modCommun::flagFalse && !view.busy(), "not busy");
    require(!link.comCommun && !modSession::running(), "the port is closed");
    require(result.failedAttempts <= modSession::mostAttempts, "twenty attempts at most");
    require(result.outcome == modSession::Outcome::portFailed || view.mayStart, "may start again");
    if (result.outcome == modSession::Outcome::succeeded && !wild) {
        requireBlocks(log, reading, result.stepCount - 2);
    }
    if (reading && !wild) {
        const auto now = std::span(image.IicDat.bytes());
        const auto old = std::span(before.bytes());
        const auto first = static_cast<std::size_t>(start);
        const auto behind = first + static_cast<std::size_t>(length) + 1;
        require(std::ranges::equal(now.first(first), old.first(first)),
                "what lies in front of the range stays");
        require(std::ranges::equal(now.subspan(behind), old.subspan(behind)),
                "what lies after the range stays");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    auto& core = fuzz::freshCore();
    modCommun::state() = {};
    if (source.flag()) {
        runSession(source, core.clock());
    } else {
        runScript(source, core.clock());
    }
    return 0;
}
